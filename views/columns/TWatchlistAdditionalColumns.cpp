#include "views/columns/TWatchlistAdditionalColumns.h"

#include "views/columns/TAdditionalColumnDateOffer.h"
#include "views/columns/TAdditionalColumnReminder.h"

namespace kk {

TWatchlistAdditionalColumns::TWatchlistAdditionalColumns() {
  GetColumns()->Add(MakeIntf<TAdditionalColumnReminder>());
  GetColumns()->Add(MakeIntf<TAdditionalColumnDateOffer>());
}

}  // namespace kk
