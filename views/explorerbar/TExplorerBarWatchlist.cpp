#include "views/explorerbar/TExplorerBarWatchlist.h"

#include "host/controls/TUpdating.h"

namespace kk {

namespace {

// The event of a group's or a panel's link; there is none while the bar is not filled.
template <class TOwner>
TNotifyEvent Get(const TOwner* iOwner, TNotifyEvent (TOwner::*iGet)() const) {
  return iOwner == nullptr ? TNotifyEvent() : (iOwner->*iGet)();
}

template <class TOwner>
void Set(TOwner* ioOwner, void (TOwner::*iSet)(TNotifyEvent), TNotifyEvent iEvent) {
  if (ioOwner != nullptr) (ioOwner->*iSet)(iEvent);
}

using TCategory = TExplorerBarGroupCategoryDetails;
using TReminder = TExplorerBarGroupReminderDetails;
using TDetails = TExplorerBarPanelItemDetails;
using TMore = TExplorerBarPanelItemMore;

}  // namespace

void TExplorerBarWatchlist::Init() {
  if (FGroupCategory) return;
  const TUpdating updating(GetControl());
  FGroupCategory = std::make_unique<TExplorerBarGroupCategoryDetails>(&GetControl());
  FPanelDetails = MakeIntf<TExplorerBarPanelItemDetails>();
  Add(FPanelDetails);
  FPanelDetails->Init();
  FGroupReminder = std::make_unique<TExplorerBarGroupReminderDetails>(&GetControl());
  FPanelMore = MakeIntf<TExplorerBarPanelItemMore>();
  Add(FPanelMore);
  FPanelMore->Init();
  FPanelMoreConst = MakeIntf<TExplorerbarPanelMoreConst>();
  Add(FPanelMoreConst);
}

void TExplorerBarWatchlist::Clear() {
  const TUpdating updating(GetControl());
  TCommonExplorerBar::Clear();
  if (!FGroupCategory) return;
  FPanelDetails->Clear();
  FPanelMore->Clear();
  FPanelMoreConst->Clear();
  FPanelDetails = nullptr;
  FPanelMore = nullptr;
  FPanelMoreConst = nullptr;
  FGroupCategory = nullptr;
  FGroupReminder = nullptr;
}

TWatchlistCategory* TExplorerBarWatchlist::GetCurrentCategory() const {
  return FGroupCategory ? FGroupCategory->Selection() : nullptr;
}

TIntf<ISearchResult> TExplorerBarWatchlist::GetCurrentSearchResult() const {
  return FGroupReminder ? FGroupReminder->Selection() : nullptr;
}

TNotifyEvent TExplorerBarWatchlist::GetOnClickCategoryEdit() const {
  return Get(FGroupCategory.get(), &TCategory::GetOnClickEdit);
}
void TExplorerBarWatchlist::SetOnClickCategoryEdit(TNotifyEvent iEvent) {
  Set(FGroupCategory.get(), &TCategory::SetOnClickEdit, iEvent);
}
TNotifyEvent TExplorerBarWatchlist::GetOnClickCategoryUpdate() const {
  return Get(FGroupCategory.get(), &TCategory::GetOnClickUpdate);
}
void TExplorerBarWatchlist::SetOnClickCategoryUpdate(TNotifyEvent iEvent) {
  Set(FGroupCategory.get(), &TCategory::SetOnClickUpdate, iEvent);
}
TNotifyEvent TExplorerBarWatchlist::GetOnClickRemindAdd() const {
  return Get(FGroupReminder.get(), &TReminder::GetOnClickAdd);
}
void TExplorerBarWatchlist::SetOnClickRemindAdd(TNotifyEvent iEvent) {
  Set(FGroupReminder.get(), &TReminder::SetOnClickAdd, iEvent);
}
TNotifyEvent TExplorerBarWatchlist::GetOnClickRemindEdit() const {
  return Get(FGroupReminder.get(), &TReminder::GetOnClickEdit);
}
void TExplorerBarWatchlist::SetOnClickRemindEdit(TNotifyEvent iEvent) {
  Set(FGroupReminder.get(), &TReminder::SetOnClickEdit, iEvent);
}
TNotifyEvent TExplorerBarWatchlist::GetOnClickRemindDelete() const {
  return Get(FGroupReminder.get(), &TReminder::GetOnClickDelete);
}
void TExplorerBarWatchlist::SetOnClickRemindDelete(TNotifyEvent iEvent) {
  Set(FGroupReminder.get(), &TReminder::SetOnClickDelete, iEvent);
}
TNotifyEvent TExplorerBarWatchlist::GetOnClickDetailsUpdate() const {
  return Get(FPanelDetails.Get(), &TDetails::GetOnClickUpdate);
}
void TExplorerBarWatchlist::SetOnClickDetailsUpdate(TNotifyEvent iEvent) {
  Set(FPanelDetails.Get(), &TDetails::SetOnClickUpdate, iEvent);
}
TNotifyEvent TExplorerBarWatchlist::GetOnClickDetailsEditDescription() const {
  return Get(FPanelDetails.Get(), &TDetails::GetOnClickEditDescription);
}
void TExplorerBarWatchlist::SetOnClickDetailsEditDescription(TNotifyEvent iEvent) {
  Set(FPanelDetails.Get(), &TDetails::SetOnClickEditDescription, iEvent);
}
TNotifyEvent TExplorerBarWatchlist::GetOnClickMoreExport() const {
  return Get(FPanelMore.Get(), &TMore::GetOnClickExport);
}
void TExplorerBarWatchlist::SetOnClickMoreExport(TNotifyEvent iEvent) {
  Set(FPanelMore.Get(), &TMore::SetOnClickExport, iEvent);
}
TNotifyEvent TExplorerBarWatchlist::GetOnClickMoreImport() const {
  return Get(FPanelMore.Get(), &TMore::GetOnClickImport);
}
void TExplorerBarWatchlist::SetOnClickMoreImport(TNotifyEvent iEvent) {
  Set(FPanelMore.Get(), &TMore::SetOnClickImport, iEvent);
}
TNotifyEvent TExplorerBarWatchlist::GetOnClickMorePrint() const {
  return Get(FPanelMore.Get(), &TMore::GetOnClickPrint);
}
void TExplorerBarWatchlist::SetOnClickMorePrint(TNotifyEvent iEvent) {
  Set(FPanelMore.Get(), &TMore::SetOnClickPrint, iEvent);
}

void TExplorerBarWatchlist::SetSelectedCategory(TWatchlistCategory* iCategory, bool iCanUpdate) {
  if (FGroupCategory) FGroupCategory->SetSelection(iCategory, iCanUpdate);
}

void TExplorerBarWatchlist::SetCurrentSearchResult(const TIntf<ISearchResult>& iResult) {
  if (!FGroupReminder) return;
  FGroupReminder->SetSelection(iResult);
  FPanelDetails->SetSelection(iResult);
}

void TExplorerBarWatchlist::RefreshCurrentSearchResult() {
  if (!FGroupReminder) return;
  FGroupReminder->RefreshDisplay();
  FPanelDetails->RefreshDisplay();
}

void TExplorerBarWatchlist::RefreshCurrentSearchResultIfEquals(
    const TIntf<ISearchResult>& iResult) {
  if (!FGroupReminder) return;
  FGroupReminder->RefreshDisplayIfEquals(iResult);
  FPanelDetails->RefreshDisplayIfEquals(iResult);
}

}  // namespace kk
