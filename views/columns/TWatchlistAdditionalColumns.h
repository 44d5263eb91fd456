#pragma once

#include "host/contract/TAdditionalColumns.h"

namespace kk {

/// What every list of the section shows beside the source's own columns: reminder and date. One
/// object serves all of them. Main thread.
class TWatchlistAdditionalColumns : public TAdditionalColumns {
 public:
  TWatchlistAdditionalColumns();
};

}  // namespace kk
