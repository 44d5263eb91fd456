#include "plugin/InsertSearchResult.h"

#include "persistence/TWatchlistHandler.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "updating/adding/TfrmWatchlistAddSearchResults.h"
#include "views/TfrmKKWatchlist.h"

namespace kk {

namespace {

TWatchlistCategory* FindInList(const TLstWatchlistCategory& iList, const TGuid& iId) {
  const int index = iList.IndexOfId(iId);
  return index < 0 ? nullptr : &iList.GetItems(index);
}

TWatchlistCategory& AddCategory(TStringView iName) {
  auto category = std::make_unique<TWatchlistCategory>();
  category->SetId(NewGuid());
  category->SetName(iName);
  return Handler()->LstCategory().Add(std::move(category));
}

}  // namespace

TResultsToInsert::TResultsToInsert(TWatchlistIntegration& iTarget) : FTarget(iTarget) {
  Handler()->LstCategory().GetItemsByPluginId(iTarget.Integration()->GetId(), FItems, true);
}

void TResultsToInsert::Sort(const TIntf<ISearchResult>& iResult) {
  TWatchlistItem* known = nullptr;
  for (TWatchlistItem* item : FItems) {
    if (!item->SearchResult() || !item->SearchResult()->IsSame(iResult)) continue;
    known = item;
    break;
  }
  // The queue is asked as well, and its answer has no effect, as required; once for the result,
  // because the answer is the same for every item that did not match.
  if (FItems.GetCount() > 0 && known != &FItems.GetItems(0)) {
    (void)FTarget.Updater().HasSearchResult(iResult);
  }
  if (known != nullptr) FKnownItems.push_back(known->SearchResultId());
  (known != nullptr ? FKnown : FNew)->Add(iResult);
}

void TResultsToInsert::MoveKnownItems(TWatchlistCategory& iTarget, int iGroup) const {
  if (FKnown->GetCount() == 0) return;
  for (const TGuid& id : FKnownItems) {
    TWatchlistItem* item = Handler()->LstCategory().FindItemById(id);
    if (item == nullptr || SameGuid(item->ParentCategoryId(), iTarget.Id())) continue;
    TLstWatchlistItem& group = iTarget.LstPlugin().GetItems(iGroup).LstItem();
    group.Add(item->List()->Extract(*item));
    item->SetParentCategoryId(iTarget.Id());
    FTarget.SetChangedSearchResults(true);
    FTarget.SetChangedItems(true);
  }
}

TWatchlistCategory* AskForTargetCategory(const TIntf<IWatchlistIntegration>& iIntegration,
                                         const IInterfaceList& /*iNew*/, IInterfaceList& ioKnown) {
  TLstWatchlistCategory flat(false);
  Handler()->LstCategory().GetCategories(flat, true);
  TIniFileSectionWatchlist settings;
  TGuid id = settings.GetDefaultCategory(iIntegration->GetId());
  if (!settings.GetShowAddDialog()) {
    ioKnown.Clear();
    TWatchlistCategory* preset = FindInList(flat, id);
    return preset != nullptr ? preset : FindInList(flat, cEmptyGuid);
  }
  TString name;
  bool doNotShowAgain = false;
  bool preset = false;
  const TAddResult answer =
      TfrmWatchlistAddSearchResults::Display(flat, id, name, doNotShowAgain, preset);
  if (answer == TAddResult::arCancel) return nullptr;
  if (answer == TAddResult::arOnlyNew) ioKnown.Clear();
  // Looked up again: other events have come in while the question stood.
  TWatchlistCategory* category =
      name.empty() ? Handler()->LstCategory().FindCategoryById(id) : &AddCategory(name);
  if (category == nullptr) return nullptr;
  if (doNotShowAgain || preset) settings.SetShowAddDialog(!doNotShowAgain);
  if (preset) settings.SetDefaultCategory(iIntegration->GetId(), category->Id());
  return category;
}

bool InsertSearchResult(const TIntf<ISearchResult>& iResult, TWatchlistIntegration& iIntegration,
                        TfrmKKWatchlist* iForm) {
  if (!iResult || iForm == nullptr) return false;
  TResultsToInsert results(iIntegration);
  results.Sort(iResult);
  const TIntf<IWatchlistIntegration>& source = iIntegration.Integration();
  TWatchlistCategory* target = AskForTargetCategory(source, *results.New(), *results.Known());
  if (target == nullptr) return false;
  TLstWatchlistPlugin& groups = target->LstPlugin();
  int group = groups.IndexOfId(source->GetId());
  if (group < 0) {
    groups.Add(std::make_unique<TWatchlistPlugin>(source));
    group = groups.GetCount() - 1;
  }
  results.MoveKnownItems(*target, group);
  if (results.New()->GetCount() > 0) {
    iForm->AddWithUpdate(results.New(), iIntegration, *target);
  } else {
    Handler()->LstCategory().DeleteEmptyPlugins();
  }
  iForm->BuildCategoriesTree(true);
  return true;
}

}  // namespace kk
