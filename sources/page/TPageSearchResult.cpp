#include "sources/page/TPageSearchResult.h"

namespace kk {

bool TPageSearchResult::IsSame(const TIntf<ISearchResult>& iOther) const {
  const auto other = Supports<IPageSearchResult>(iOther);
  return other && other->Data().Address == FData.Address;
}

TIntf<ISearchResult> TPageSearchResult::Clone() const { return MakeIntf<TPageSearchResult>(FData); }

}  // namespace kk
