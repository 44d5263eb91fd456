#include "views/TWatchlistTabCommands.h"

#include "host/base/Guard.h"
#include "views/WatchlistModel.h"
#include "views/WatchlistQuestions.h"
#include "views/dialogs/TfrmKKWatchlistEditItemDescription.h"

namespace kk {

namespace {

const TWatchlistItem* ItemOf(const TIntf<ISearchResult>& iResult) {
  return iResult ? RootCategories().FindItemById(iResult->GetId()) : nullptr;
}

// Null also where the list can't say.
const TWatchlistItem* FocusedItem(const TTab* iTab) {
  const TWatchlistItem* item = nullptr;
  Guarded(u"FocusedItem", [&] { item = ItemOf(FocusedResultOf(iTab)); });
  return item;
}

TIntf<IInterfaceList> SelectionOf(const TTab& iTab) {
  const TIntf<IInterfaceList> selection = NewInterfaceList();
  const TIntf<ISearchResults> results = iTab.GetSearchResults();
  for (int i = 0; results && i < results->GetSelectedCount(); ++i) {
    selection->Add(results->GetSelectedItems(i));
  }
  return selection;
}

}  // namespace

void TWatchlistTabCommands::Bind(TTabControlKK::TEvents& ioEvents) {
  using TSelf = TWatchlistTabCommands;
  ioEvents.OnTabUpdate = TTabEventWithInterfaces::Of<&TSelf::DoTabUpdate>(this);
  ioEvents.OnTabDelete = TTabEventWithInterfaces::Of<&TSelf::DoTabDelete>(this);
  ioEvents.OnTabEditDescription = TTabEventWithInterfaces::Of<&TSelf::DoTabEditDescription>(this);
  ioEvents.OnTabMove = TTabEventCategoryWithInterfaces::Of<&TSelf::DoTabMove>(this);
  ioEvents.OnTabReminderAdd = TTabEventWithInterfaces::Of<&TSelf::DoTabReminderAdd>(this);
  ioEvents.OnTabReminderDelete = TTabEventWithInterfaces::Of<&TSelf::DoTabReminderDelete>(this);
}

void TWatchlistTabCommands::DoTabUpdate(TObject*, TTab& iTab,
                                        const TIntf<IInterfaceList>& iResults) {
  FCommands.Updates.DoTabUpdate(iTab.Integration(), iResults);
}

void TWatchlistTabCommands::DoTabDelete(TObject*, TTab& iTab,
                                        const TIntf<IInterfaceList>& iResults) {
  FCommands.Items.DoTabDelete(iTab.Integration(), iResults);
}

void TWatchlistTabCommands::DoTabEditDescription(TObject*, TTab& iTab,
                                                 const TIntf<IInterfaceList>& iResults) {
  EditDescription(&iTab, iResults);
}

void TWatchlistTabCommands::EditDescription(const TTab* iTab,
                                            const TIntf<IInterfaceList>& iResults) {
  const int count = iResults->GetCount();
  if (count == 0 || (count > 1 && !AskEditDescriptions(count))) return;
  const TWatchlistItem* item = FocusedItem(iTab);
  if (item == nullptr) item = ItemOf(GetAs<ISearchResult>(*iResults, 0));
  if (item == nullptr) return;
  TStringList lines;
  lines.Assign(item->Description());
  // Items and their results are looked up again behind the dialog, by their ids.
  if (TfrmKKWatchlistEditItemDescription::Display(FCommands.Seams.Form, lines)) {
    FCommands.Items.SetDescriptions(IdsOf(*iResults), lines);
  }
  FPanes.RefreshCurrentSearchResult();
}

void TWatchlistTabCommands::DoTabMove(TObject*, TTab& iTab, TWatchlistCategory* iTarget,
                                      const TIntf<IInterfaceList>& iResults) {
  if (iTarget != nullptr) FCommands.Items.DoMoveItems(iTab.Integration(), *iTarget, iResults);
  FPanes.ShowMoved();
}

void TWatchlistTabCommands::DoTabReminderAdd(TObject*, TTab& iTab,
                                             const TIntf<IInterfaceList>& ioResults) {
  FCommands.Reminders.DoTabReminderAdd(iTab.Integration(), ioResults);
}

void TWatchlistTabCommands::DoTabReminderDelete(TObject* Sender, TTab& iTab,
                                                const TIntf<IInterfaceList>& iResults) {
  FCommands.Reminders.DoTabReminderDelete(Sender != nullptr, iTab.Integration(), iResults);
}

template <class Command>
void TWatchlistTabCommands::ForSelection(TStringView iPlace, Command&& iCommand) {
  TTab* const tab = FPanes.CurrentTab();
  if (tab == nullptr) return;
  Guarded(iPlace, [&] { iCommand(*tab, SelectionOf(*tab)); });
  FPanes.RefreshCurrentSearchResult();
}

void TWatchlistTabCommands::DoClickExplorerbarRemindAdd(TObject*) {
  ForSelection(u"DoClickExplorerbarRemindAdd",
               [this](TTab& ioTab, const TIntf<IInterfaceList>& ioResults) {
                 DoTabReminderAdd(nullptr, ioTab, ioResults);
               });
}

void TWatchlistTabCommands::DoClickExplorerbarRemindEdit(TObject*) {
  ForSelection(u"DoClickExplorerbarRemindEdit",
               [this](TTab& ioTab, const TIntf<IInterfaceList>& ioResults) {
                 DoTabReminderAdd(nullptr, ioTab, ioResults);
               });
}

void TWatchlistTabCommands::DoClickExplorerbarRemindDelete(TObject* Sender) {
  ForSelection(u"DoClickExplorerbarRemindDelete",
               [&](TTab& ioTab, const TIntf<IInterfaceList>& iResults) {
                 DoTabReminderDelete(Sender, ioTab, iResults);
               });
}

void TWatchlistTabCommands::DoAdditionalColumnEditClick(TObject*) {
  DoClickExplorerbarRemindEdit(nullptr);
}

void TWatchlistTabCommands::DoClickExplorerbarDetailsUpdate(TObject*) {
  Guarded(u"DoClickExplorerbarDetailsUpdate", [this] { UpdateCurrentResult(); });
}

void TWatchlistTabCommands::UpdateCurrentResult() {
  const TExplorerBarWatchlist* const bar = FPanes.ExplorerBar();
  const TIntf<ISearchResult> result = bar != nullptr ? bar->GetCurrentSearchResult() : nullptr;
  const TWatchlistItem* const item = ItemOf(result);
  if (item == nullptr || !TWatchlistUpdateCommands::CanUpdate(*item)) return;
  TWatchlistIntegration* const integration = FindIntegration(GroupOf(*item).GetId());
  if (integration != nullptr) integration->Updater().Add(result, {});
}

void TWatchlistTabCommands::DoClickExplorerbarDetailsEditDescription(TObject*) {
  const TExplorerBarWatchlist* const bar = FPanes.ExplorerBar();
  const TIntf<ISearchResult> result = bar != nullptr ? bar->GetCurrentSearchResult() : nullptr;
  if (result) EditDescription(FPanes.CurrentTab(), ListOf(result));
}

}  // namespace kk
