#include "model/TWatchlistItem.h"

#include "host/base/Guard.h"
#include "model/IWatchlistModelRoot.h"
#include "model/TreeSearch.h"

namespace kk {

TWatchlistItem::~TWatchlistItem() {
  if (!HasWatchlistModelRoot()) return;
  Guarded(u"TWatchlistItem", [this] { WatchlistModelRoot().NotifyItemDelete(*this); });
}

void TWatchlistItem::SetSearchResult(const TIntf<ISearchResult>& iResult) {
  if (!iResult) throw Exception(u"TWatchlistItem.SetSearchResult");
  SetSearchResultId(iResult->GetId());
  if (iResult == FSearchResult) return;
  FSearchResult = iResult;
  // Nothing is told of the result that was replaced.
  WatchlistModelRoot().NotifyItemAdd(*this);
}

void TWatchlistItem::SetSearchResultId(const TGuid& iId) {
  if (List() != nullptr) LeaveItem(*this, FSearchResultId);
  FSearchResultId = iId;
  if (List() != nullptr) EnterItem(*this, FSearchResultId);
}

TString TWatchlistItem::GetName() const {
  return FSearchResult ? FSearchResult->GetName() : TString();
}

bool TWatchlistItem::CanUpdate() const {
  if (!FSearchResult) return false;
  if (!FSearchResult->HasEndTime()) return true;
  return FSearchResult->GetEndTime() >= FLastUpdateDate;
}

}  // namespace kk
