#include "views/menus/TSubMenuBuilderCategory.h"

#include <algorithm>

#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

namespace {

using TEntries = std::vector<std::unique_ptr<TMenuItem>>;

// A character of two units is not cut in half.
TString FirstCharacters(const TString& iText, size_t iCount) {
  TString text = iText.substr(0, iCount);
  const auto isHighHalf = [](char16_t iUnit) { return iUnit >= 0xD800 && iUnit < 0xDC00; };
  if (iText.size() > iCount && isHighHalf(text.back())) text.pop_back();
  return text;
}

TString HintOf(const TWatchlistCategory& iCategory) {
  constexpr size_t cHintLength = 30;
  constexpr TStringView cMore = u"...";
  const TStringList& lines = iCategory.Description();
  if (lines.GetCount() == 0) return {};
  const TString& first = lines.Get(0);
  if (first.size() <= cHintLength && lines.GetCount() == 1) return first;
  return FirstCharacters(first, cHintLength - cMore.size()).append(cMore);
}

std::unique_ptr<TMenuItem> NewEntry(TStringView iCaption, TStringView iHint, TObject* iTag,
                                    TNotifyEvent iOnClick) {
  auto entry = std::make_unique<TMenuItem>(iCaption);
  entry->SetHint(iHint);
  entry->SetTag(iTag);
  entry->SetOnClick(iOnClick);
  return entry;
}

TEntries EntriesOf(const TLstWatchlistCategory& iLstCategory, TNotifyEvent iOnClick,
                   TWatchlistCategory* iCategoryToIgnore) {
  TEntries entries;
  for (TWatchlistCategory* category : iLstCategory) {
    if (category == iCategoryToIgnore) continue;
    if (iCategoryToIgnore != nullptr && category->Id() == cEmptyGuid) continue;
    entries.push_back(NewEntry(category->Name(), HintOf(*category), category, iOnClick));
    TSubMenuBuilderCategory::BuildCategoryMenuForCategory(category->LstCategory(), *entries.back(),
                                                          iOnClick, iCategoryToIgnore, false);
  }
  return entries;
}

}  // namespace

void TSubMenuBuilderCategory::BuildCategoryMenuForCategory(
    const TLstWatchlistCategory& iLstCategory, TMenuItem& ioRootMenuItem, TNotifyEvent iOnClick,
    TWatchlistCategory* iCategoryToIgnore, bool iRoot) {
  if (iRoot) ioRootMenuItem.Clear();
  if (iLstCategory.GetCount() == 0) return;
  if (iCategoryToIgnore != nullptr && iRoot) {
    ioRootMenuItem.Add(_resRootNodeName, iOnClick);
    ioRootMenuItem.Add(TMenuItem::cSeparator);
  }
  TEntries entries = EntriesOf(iLstCategory, iOnClick, iCategoryToIgnore);
  if (!entries.empty() && !iRoot) {
    const TMenuItem& parent = ioRootMenuItem;
    ioRootMenuItem.Add(NewEntry(parent.Caption(), parent.Hint(), parent.Tag(), iOnClick));
    ioRootMenuItem.Add(TMenuItem::cSeparator);
  }
  std::stable_sort(entries.begin(), entries.end(), [](const auto& iA, const auto& iB) {
    return CompareText(iA->Caption(), iB->Caption()) < 0;
  });
  for (auto& entry : entries) ioRootMenuItem.Add(std::move(entry));
}

bool TSubMenuBuilderCategory::HasTarget(const TLstWatchlistCategory& iLstCategory,
                                        const TMenuItem& iEntry) {
  if (iEntry.Tag() == nullptr) return true;
  // The object may be dead: nothing but its identity is looked at.
  TLstWatchlistCategory categories(false);
  iLstCategory.GetCategories(categories, true);
  return std::find(categories.begin(), categories.end(), iEntry.Tag()) != categories.end();
}

}  // namespace kk
