#include "model/TLstWatchlistIntegration.h"

namespace kk {

TWatchlistIntegration& TLstWatchlistIntegration::Add(
    const TIntf<IWatchlistIntegration>& iIntegration) {
  return Append(std::make_unique<TWatchlistIntegration>(iIntegration));
}

TIntf<IWatchlistIntegration> TLstWatchlistIntegration::GetIntegrations(int iIndex) const {
  return At(iIndex).Integration();
}

int TLstWatchlistIntegration::IndexOfId(const TGuid& iId) const {
  for (int i = 0; i < GetCount(); ++i) {
    if (SameGuid(At(i).Integration()->GetId(), iId)) return i;
  }
  return -1;
}

int TLstWatchlistIntegration::IndexOfAffiliateId(const TGuid& iId) const {
  for (int i = 0; i < GetCount(); ++i) {
    if (SameGuid(At(i).Integration()->GetAffiliateId(), iId)) return i;
  }
  return -1;
}

bool TLstWatchlistIntegration::HasActiveIntegrations() const {
  return std::any_of(begin(), end(), [](const TWatchlistIntegration* iRecord) {
    return iRecord->Updater().IsActive();
  });
}

}  // namespace kk
