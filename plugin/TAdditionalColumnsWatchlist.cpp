#include "plugin/TAdditionalColumnsWatchlist.h"

namespace kk {

void TAdditionalColumnsWatchlist::Detach() { FOnAdd = FOnCheck = {}; }

void TAdditionalColumnsWatchlist::Add(const TIntf<ISearchResult>& iResult) {
  if (FOnAdd) FOnAdd(this, iResult);
}

void TAdditionalColumnsWatchlist::Check(const TIntf<ISearchResult>& iResult) {
  if (FOnCheck) FOnCheck(this, iResult);
}

}  // namespace kk
