#include "persistence/exchange/TWatchlistCategoryMerge.h"

#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

namespace {

void CheckDepth(const TLstWatchlistCategory& iTarget) {
  int depth = 1;
  for (const TWatchlistCategory* above = iTarget.Parent(); above != nullptr; ++depth) {
    const TLstWatchlistCategory* list = above->List();
    above = list != nullptr ? list->Parent() : nullptr;
  }
  if (depth <= TWatchlistCategory::cMaxDepth) return;
  throw Exception(Format(_resRefusedTooDeep, {TWatchlistCategory::cMaxDepth}));
}

}  // namespace

void TWatchlistCategoryMerge::Execute(TLstWatchlistCategory& ioTarget,
                                      const TLstWatchlistCategory& iSource, int iDepth) {
  if (iDepth == 0) FillFlatList(ioTarget);
  for (const TWatchlistCategory* imported : iSource) {
    DoProgress();
    const TWatchlistCategory& live = Find(*imported, ioTarget);
    AddTranslatedId(live.Id(), imported->Id());
    Execute(live.LstCategory(), imported->LstCategory(), iDepth + 1);
  }
}

TWatchlistCategory& TWatchlistCategoryMerge::Find(const TWatchlistCategory& iImported,
                                                  TLstWatchlistCategory& ioTarget) {
  const int index = FNames.IndexOf(iImported.Name());
  if (index >= 0) return FFlatList.GetItems(index);
  CheckDepth(ioTarget);
  auto category = std::make_unique<TWatchlistCategory>();
  category->SetId(iImported.Id());
  category->SetName(iImported.Name());
  category->SetDescription(iImported.Description());
  category->SetExpanded(iImported.Expanded());
  return ioTarget.Add(std::move(category));
}

void TWatchlistCategoryMerge::FillFlatList(const TLstWatchlistCategory& iTarget) {
  FFlatList.Clear();
  FNames.Clear();
  iTarget.GetCategories(FFlatList, true);
  for (const TWatchlistCategory* category : FFlatList) FNames.Add(category->Name());
}

void TWatchlistCategoryMerge::AddTranslatedId(const TGuid& iLiveId, const TGuid& iImportId) {
  FSLIdTranslation.SetValue(GUIDToString(iImportId), GUIDToString(iLiveId));
}

TGuid TWatchlistCategoryMerge::GetNewId(const TGuid& iOriginalId) const {
  const int index = FSLIdTranslation.IndexOfName(GUIDToString(iOriginalId));
  return StringToGUID(index < 0 ? TString() : FSLIdTranslation.GetValueFromIndex(index));
}

void TWatchlistCategoryMerge::DoProgress() {
  if (FOnProgress) FOnProgress(this);
}

}  // namespace kk
