#include "persistence/TLstStreamForCompression.h"

namespace kk {

TLstStreamForCompression::~TLstStreamForCompression() { Clear(); }

TStreamForCompression* TLstStreamForCompression::FindByName(TStringView iName) const {
  const auto hit = FByName.lower_bound(TString(iName));
  return hit != FByName.end() && SameText(hit->first, iName) ? hit->second : nullptr;
}

void TLstStreamForCompression::Attached(TStreamForCompression& iStream) {
  FByName.emplace(iStream.GetName(), &iStream);
}

void TLstStreamForCompression::Detached(TStreamForCompression& iStream) {
  const auto [first, last] = FByName.equal_range(iStream.GetName());
  for (auto entry = first; entry != last; ++entry) {
    if (entry->second != &iStream) continue;
    FByName.erase(entry);
    return;
  }
}

}  // namespace kk
