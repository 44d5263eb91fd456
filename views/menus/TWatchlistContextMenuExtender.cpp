#include "views/menus/TWatchlistContextMenuExtender.h"

#include <algorithm>

#include "host/base/Guard.h"
#include "host/base/TClock.h"
#include "host/contract/ISearchResultUpdate.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "views/menus/TSubMenuBuilderCategory.h"

namespace kk {

namespace {

using TResults = std::vector<TIntf<ISearchResult>>;

TResults AllOf(const TIntf<ISearchResults>& iResults) {
  TResults all;
  for (int i = 0; iResults && i < iResults->GetCount(); ++i) {
    if (auto result = iResults->GetItems(i)) all.push_back(std::move(result));
  }
  return all;
}

TResults SelectedOf(const TIntf<ISearchResults>& iResults) {
  TResults selected;
  for (int i = 0; iResults && i < iResults->GetSelectedCount(); ++i) {
    if (auto result = iResults->GetSelectedItems(i)) selected.push_back(std::move(result));
  }
  return selected;
}

TIntf<IInterfaceList> ListOf(const TResults& iResults) {
  const TIntf<IInterfaceList> list = NewInterfaceList();
  for (const auto& result : iResults) list->Add(result);
  return list;
}

bool EndsAfter(const TIntf<ISearchResult>& iResult, TDateTime iTime) {
  return iResult->HasEndTime() && iResult->GetEndTime() > iTime;
}

bool IsFinished(const TIntf<ISearchResult>& iResult, TDateTime iNow) {
  return iResult->HasEndTime() && iNow > iResult->GetEndTime();
}

// Counts to the end: a failure anywhere has to be seen.
int CountUpdatable(const TResults& iResults) {
  if (Handler() == nullptr) return 0;
  return static_cast<int>(std::count_if(iResults.begin(), iResults.end(), [](const auto& iResult) {
    const TWatchlistItem* item = Handler()->LstCategory().FindItemById(iResult->GetId());
    return item != nullptr && item->CanUpdate();
  }));
}

}  // namespace

TWatchlistContextMenuExtender::TWatchlistContextMenuExtender(
    TIntf<IWatchlistVisualization> iVisualization, const TEvents& iEvents)
    : FIntegration(std::move(iVisualization)), FEvents(iEvents) {
  InitMenuItems();
}

TMenuItem& TWatchlistContextMenuExtender::Add(TStringView iCaption, TNotifyEvent iOnClick,
                                              TStringView iShortCut) {
  FMenuItems.push_back(std::make_unique<TMenuItem>(iCaption));
  FMenuItems.back()->SetOnClick(iOnClick);
  FMenuItems.back()->SetShortCut(iShortCut);
  return *FMenuItems.back();
}

void TWatchlistContextMenuExtender::InitMenuItems() {
  using TSelf = TWatchlistContextMenuExtender;
  FMenuItemReminderAdd =
      &Add(_resContextMenuItemReminderAdd, TNotifyEvent::Of<&TSelf::DoClickReminderAdd>(this));
  FMenuItemReminderDelete = &Add(_resContextMenuItemReminderDelete,
                                 TNotifyEvent::Of<&TSelf::DoClickReminderDelete>(this));
  Add(TMenuItem::cSeparator);
  FMenuItemRefreshSelected = &Add(_resContextMenuItemRefreshSelected,
                                  TNotifyEvent::Of<&TSelf::DoClickRefreshSelected>(this));
  FMenuItemRefreshAll =
      &Add(_resContextMenuItemRefreshAll, TNotifyEvent::Of<&TSelf::DoClickRefreshAll>(this));
  Add(TMenuItem::cSeparator);
  FMenuItemMoveSelected = &Add(_resContextMenuItemMoveSelected);
  Add(TMenuItem::cSeparator);
  FMenuItemDeleteSelected = &Add(_resContextMenuItemDeleteSelected,
                                 TNotifyEvent::Of<&TSelf::DoClickDeleteSelected>(this), u"Del");
  FMenuItemDeleteFinished =
      &Add(_resContextMenuItemDeleteFinished, TNotifyEvent::Of<&TSelf::DoClickDeleteFinished>(this),
           u"Shift+Ctrl+Del");
  FMenuItemDeleteAll = &Add(_resContextMenuItemDeleteAll,
                            TNotifyEvent::Of<&TSelf::DoClickDeleteAll>(this), u"Shift+Del");
  Add(TMenuItem::cSeparator);
  FMenuItemDescription = &Add(_resContextMenuItemDescription,
                              TNotifyEvent::Of<&TSelf::DoClickDescription>(this), u"Ctrl+F");

  // The separator below them stays, next to the one above them.
  const bool canUpdate = static_cast<bool>(Supports<ISearchResultUpdate>(FIntegration));
  FMenuItemRefreshSelected->SetVisible(canUpdate);
  FMenuItemRefreshAll->SetVisible(canUpdate);
}

TMenuItem& TWatchlistContextMenuExtender::GetItems(int iIndex) {
  return *FMenuItems[CheckedIndex(iIndex, FMenuItems.size())];
}

void TWatchlistContextMenuExtender::BeforeContextMenuPopup(
    const TIntf<ISearchResult>& /*iSearchResult*/, const TGuid& /*iColumnId*/) {
  const auto results = Supports<ISearchResults>(FIntegration);
  const int selected = results ? results->GetSelectedCount() : 0;
  const TResults selection = SelectedOf(results);
  const TDateTime now = ExactTime().GetNow();
  const bool canRemind = std::any_of(selection.begin(), selection.end(),
                                     [now](const auto& iOne) { return EndsAfter(iOne, now); });
  FMenuItemReminderAdd->SetEnabled(canRemind);
  FMenuItemReminderDelete->SetEnabled(canRemind);
  PrepareRefreshItems(results);
  FMenuItemMoveSelected->SetEnabled(selected > 0);
  FMenuItemMoveSelected->Clear();
  if (Handler() != nullptr) {
    TSubMenuBuilderCategory::BuildCategoryMenu(
        Handler()->LstCategory(), *FMenuItemMoveSelected,
        TNotifyEvent::Of<&TWatchlistContextMenuExtender::DoClickMoveSelected>(this), true);
  }
  FMenuItemDeleteSelected->SetEnabled(selected > 0);
  FMenuItemDeleteAll->SetEnabled(results && results->GetCount() > 0);
  const bool hasWithEndDate = HasWithEndDate();
  FMenuItemDeleteFinished->SetVisible(hasWithEndDate);
  FMenuItemDeleteFinished->SetEnabled(hasWithEndDate && HasAtLeastOneFinished());
  FMenuItemDescription->SetEnabled(selected > 0);
}

void TWatchlistContextMenuExtender::PrepareRefreshItems(const TIntf<ISearchResults>& iResults) {
  bool someSelected = false;
  bool someAtAll = false;
  if (Supports<ISearchResultUpdate>(FIntegration)) {
    Guarded(u"TWatchlistContextMenuExtender.BeforeContextMenuPopup", [&] {
      someSelected = CountUpdatable(SelectedOf(iResults)) > 0;
      someAtAll = someSelected || CountUpdatable(AllOf(iResults)) > 0;
    });
  }
  FMenuItemRefreshSelected->SetEnabled(someSelected);
  FMenuItemRefreshAll->SetEnabled(someAtAll);
}

TIntf<IInterfaceList> TWatchlistContextMenuExtender::GetAll() const {
  return ListOf(AllOf(Supports<ISearchResults>(FIntegration)));
}

TIntf<IInterfaceList> TWatchlistContextMenuExtender::GetSelected() const {
  return ListOf(SelectedOf(Supports<ISearchResults>(FIntegration)));
}

TIntf<IInterfaceList> TWatchlistContextMenuExtender::GetFinished() const {
  TResults results = AllOf(Supports<ISearchResults>(FIntegration));
  const TDateTime now = ExactTime().GetNow();
  std::erase_if(results, [now](const auto& iResult) { return !IsFinished(iResult, now); });
  return ListOf(results);
}

bool TWatchlistContextMenuExtender::HasWithEndDate() const {
  const TResults results = AllOf(Supports<ISearchResults>(FIntegration));
  return std::any_of(results.begin(), results.end(),
                     [](const auto& iResult) { return iResult->HasEndTime(); });
}

bool TWatchlistContextMenuExtender::HasAtLeastOneFinished() const {
  const TResults results = AllOf(Supports<ISearchResults>(FIntegration));
  const TDateTime now = ExactTime().GetNow();
  return std::any_of(results.begin(), results.end(),
                     [now](const auto& iResult) { return IsFinished(iResult, now); });
}

void TWatchlistContextMenuExtender::Detach() {
  FEvents = {};
  FIntegration = nullptr;
  FMenuItemMoveSelected->Clear();
}

void TWatchlistContextMenuExtender::DoClickRefreshSelected(TObject*) {
  if (FEvents.OnUpdate) FEvents.OnUpdate(this, GetSelected());
}

void TWatchlistContextMenuExtender::DoClickRefreshAll(TObject*) {
  if (FEvents.OnUpdate) FEvents.OnUpdate(this, GetAll());
}

void TWatchlistContextMenuExtender::DoClickMoveSelected(TObject* Sender) {
  const auto& entry = dynamic_cast<const TMenuItem&>(*Sender);
  if (entry.GetCount() > 0) return;
  if (Handler() == nullptr) return;
  if (!TSubMenuBuilderCategory::HasTarget(Handler()->LstCategory(), entry)) return;
  if (FEvents.OnMove) {
    FEvents.OnMove(this, static_cast<TWatchlistCategory*>(entry.Tag()), GetSelected());
  }
}

void TWatchlistContextMenuExtender::DoClickDeleteSelected(TObject*) {
  if (FEvents.OnDelete) FEvents.OnDelete(this, GetSelected());
}

void TWatchlistContextMenuExtender::DoClickDeleteFinished(TObject*) {
  if (FEvents.OnDelete) FEvents.OnDelete(this, GetFinished());
}

void TWatchlistContextMenuExtender::DoClickDeleteAll(TObject*) {
  if (FEvents.OnDelete) FEvents.OnDelete(this, GetAll());
}

void TWatchlistContextMenuExtender::DoClickDescription(TObject*) {
  if (FEvents.OnEditDescription) FEvents.OnEditDescription(this, GetSelected());
}

void TWatchlistContextMenuExtender::DoClickReminderAdd(TObject*) {
  if (FEvents.OnReminderAdd) FEvents.OnReminderAdd(this, GetSelected());
}

void TWatchlistContextMenuExtender::DoClickReminderDelete(TObject*) {
  if (FEvents.OnReminderDelete) FEvents.OnReminderDelete(this, GetSelected());
}

}  // namespace kk
