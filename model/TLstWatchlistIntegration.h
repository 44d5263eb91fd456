#pragma once

#include "host/base/TLstBase.h"
#include "model/TWatchlistIntegration.h"

namespace kk {

/// The registered sources in order. The handler's list owns its records; selections of an export or
/// import borrow them and are compared by the object. Main thread.
class TLstWatchlistIntegration : public TLstBase<TWatchlistIntegration> {
 public:
  using TLstBase::TLstBase;

  /// Makes a record and appends it, without a check for duplicates.
  TWatchlistIntegration& Add(const TIntf<IWatchlistIntegration>& iIntegration);
  TWatchlistIntegration& Add(std::unique_ptr<TWatchlistIntegration> iRecord) {
    return Append(std::move(iRecord));
  }
  TWatchlistIntegration& Add(TWatchlistIntegration& iRecord) { return Append(iRecord); }
  /// An index out of range raises EListError.
  TWatchlistIntegration& GetItems(int iIndex) const { return At(iIndex); }
  TIntf<IWatchlistIntegration> GetIntegrations(int iIndex) const;
  /// The first record whose interface gives this id; -1 for none.
  int IndexOfId(const TGuid& iId) const;
  int IndexOfAffiliateId(const TGuid& iId) const;
  /// True at the first record whose updater has a request under way.
  bool HasActiveIntegrations() const;
};

}  // namespace kk
