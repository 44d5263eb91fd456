#include "plugin/TSearchLocationIntegrationWatchlist.h"

#include "host/base/Log.h"
#include "host/contract/IResultsOnShow.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/InsertSearchResult.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "views/TfrmKKWatchlist.h"

namespace kk {

namespace {

// The position of the source that keeps the results of the view's; -1 if there is none.
int FindTarget(const TLstWatchlistIntegration& iIntegrations,
               const TGuid& iSearchLocationPluginId) {
  const int index = iIntegrations.IndexOfId(iSearchLocationPluginId);
  if (index < 0) return -1;
  const TIntf<IWatchlistIntegration> source = iIntegrations.GetIntegrations(index);
  const TGuid affiliate = source->GetAffiliateId();
  return SameGuid(source->GetId(), affiliate) ? index : iIntegrations.IndexOfId(affiliate);
}

}  // namespace

TSearchLocationIntegrationWatchlist::TSearchLocationIntegrationWatchlist(
    const TGuid& iPluginId, const TGuid& iSearchLocationPluginId, TfrmKKWatchlist* iForm)
    : FPluginId(iPluginId), FSearchLocationPluginId(iSearchLocationPluginId), FForm(iForm) {
  using TSelf = TSearchLocationIntegrationWatchlist;
  const auto addSelection = TNotifyEvent::Of<&TSelf::DoAddSelection>(this);
  auto menuItem = std::make_unique<TMenuItem>(_resContextMenuItemSearchLocationIntegrationAdd);
  menuItem->SetOnClick(addSelection);
  FMenuItems.push_back(std::move(menuItem));
  FExplorerBarExtender = MakeIntf<TExplorerBarExtenderMoreOptionsWatchList>();
  FExplorerBarExtender->SetOnItemClick(addSelection);
  FExplorerBarExtender->SetOnItemAdd(TNotifyAdd::Of<&TSelf::DoItemAdd>(this));
  FAdditionalColumns = MakeIntf<TAdditionalColumnsWatchlist>(
      FSearchLocationPluginId, TNotifySearchResult::Of<&TSelf::DoColumnAdd>(this),
      TNotifyEvent::Of<&TSelf::DoColumnCheck>(this));
  const auto onChange = TNotifyEvent::Of<&TSelf::DoItemsChanged>(this);
  if (Handler() != nullptr) Handler()->AddNotificationItem(onChange, onChange);
}

TSearchLocationIntegrationWatchlist::~TSearchLocationIntegrationWatchlist() {
  // A view may keep these two longer than this object.
  FExplorerBarExtender->SetOnItemClick({});
  FExplorerBarExtender->SetOnItemAdd({});
  FAdditionalColumns->Detach();
  const auto onChange =
      TNotifyEvent::Of<&TSearchLocationIntegrationWatchlist::DoItemsChanged>(this);
  if (Handler() != nullptr) Handler()->RemoveNotificationItem(onChange, onChange);
}

bool TSearchLocationIntegrationWatchlist::QueryDelegated(const TGuid& iIid, void** oInterface) {
  if (iIid == IAdditionalColumns::cIid) return FAdditionalColumns->QueryInterface(iIid, oInterface);
  if (iIid == IID_ExplorerBarExtender) {
    return FExplorerBarExtender->QueryInterface(iIid, oInterface);
  }
  return false;
}

TMenuItem& TSearchLocationIntegrationWatchlist::GetItems(int iIndex) {
  return *FMenuItems[CheckedIndex(iIndex, FMenuItems.size())];
}

void TSearchLocationIntegrationWatchlist::BeforeContextMenuPopup(
    const TIntf<ISearchResult>& iSearchResult, const TGuid& /*iColumnId*/) {
  for (const auto& item : FMenuItems) item->SetEnabled(static_cast<bool>(iSearchResult));
}

void TSearchLocationIntegrationWatchlist::SetSearchResults(
    const TIntf<ISearchResults>& iSearchResults) {
  FSearchResults = iSearchResults;
}

void TSearchLocationIntegrationWatchlist::SelectionChanged() {
  if (!FExplorerBarExtender) return;
  bool visible = false;
  DoItemAdd(nullptr, visible);
  FExplorerBarExtender->GetItem()->SetVisible(visible);
}

void TSearchLocationIntegrationWatchlist::DoAddSelection(TObject*) {
  if (!FSearchResults || FSearchResults->GetSelectedCount() == 0) return;
  const TIntf<IInterfaceList> selection = NewInterfaceList();
  for (int i = 0; i < FSearchResults->GetSelectedCount(); ++i) {
    selection->Add(FSearchResults->GetSelectedItems(i));
  }
  AddSearchResults(selection);
}

void TSearchLocationIntegrationWatchlist::DoItemAdd(TObject*, bool& oVisible) {
  oVisible = FSearchResults && FSearchResults->GetSelectedCount() > 0;
}

void TSearchLocationIntegrationWatchlist::DoColumnAdd(TObject*,
                                                      const TIntf<ISearchResult>& iResult) {
  if (!iResult) return;
  const TIntf<IInterfaceList> list = NewInterfaceList();
  list->Add(iResult);
  AddSearchResults(list);
}

// The column "Beobachten" shows something else now.
void TSearchLocationIntegrationWatchlist::DoItemsChanged(TObject*) {
  if (const auto view = Supports<IResultsOnShow>(FSearchResults)) view->Repaint();
}

void TSearchLocationIntegrationWatchlist::AddSearchResults(const TIntf<IInterfaceList>& iList) {
  // Views may live longer than the list.
  if (Handler() == nullptr || FForm == nullptr) return;
  if (!iList || iList->GetCount() == 0) return;
  TLstWatchlistIntegration& integrations = Handler()->LstIntegration();
  int position = FindTarget(integrations, FSearchLocationPluginId);
  if (position < 0) return;
  TWatchlistIntegration& target = integrations.GetItems(position);
  const TIntf<IWatchlistIntegration>& source = target.Integration();
  LogInfo(_resLoggingSenderSearchLocationIntegration, _resLoggingInsertSearchResults,
          {iList->GetCount(), GUIDToString(FSearchLocationPluginId), GUIDToString(source->GetId()),
           source->GetName()});
  TResultsToInsert results(target);
  for (int i = 0; i < iList->GetCount(); ++i) {
    if (const auto result = GetAs<ISearchResult>(*iList, i)) results.Sort(result);
  }
  TWatchlistCategory* category = AskForTargetCategory(source, *results.New(), *results.Known());
  if (category == nullptr) return;
  // Looks like a mistake and is required: where the category has a group of the source, the
  // position stays that of the source among the sources, and known items go to whatever group
  // stands there. A position without a group raises the list's error.
  TLstWatchlistPlugin& groups = category->LstPlugin();
  if (groups.FindById(source->GetId()) == nullptr) {
    groups.Add(std::make_unique<TWatchlistPlugin>(source));
    position = groups.GetCount() - 1;
  }
  results.MoveKnownItems(*category, position);
  if (results.New()->GetCount() > 0) {
    FForm->AddWithUpdate(results.New(), target, *category);
  } else {
    Handler()->LstCategory().DeleteEmptyPlugins();
  }
  FForm->BuildCategoriesTree(true);
}

}  // namespace kk
