#include "persistence/TWatchlistFileSaverMobileExport.h"

#include "host/common/TFileHelper.h"
#include "persistence/MobileGuid.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

void TWatchlistFileSaverMobileExport::Save(TStringView iFileName,
                                           const TLstWatchlistCategory& iLstCategory,
                                           const TLstWatchlistIntegration& iLstIntegration) {
  TWatchlistFileSaverMobileExport saver;
  saver.SetWriteDeclaration(true);
  saver.BeginNode(cNodeMobileWatchlist);
  saver.WriteInteger(cNodeMobileVersion, cMobileVersion, 0);
  saver.SaveCategories(iLstCategory);
  saver.SaveSearchResults(iLstCategory, iLstIntegration);
  saver.EndNode(cNodeMobileWatchlist);
  TMemoryStream stream;
  saver.SaveToStream(stream);
  WriteFileAtomically(iFileName, stream.Bytes());
}

void TWatchlistFileSaverMobileExport::SaveCategories(const TLstWatchlistCategory& iLst) {
  BeginNode(cNodeMobileCategories);
  for (const TWatchlistCategory* category : iLst) SaveCategory(*category);
  EndNode(cNodeMobileCategories);
}

// The children follow behind the category's end, which is what makes the list flat.
void TWatchlistFileSaverMobileExport::SaveCategory(const TWatchlistCategory& iCategory) {
  BeginNode(cNodeMobileCategory);
  WriteString(cNodeMobileGuid, GuidToStringEx(iCategory.Id()), {});
  WriteString(cNodeMobileName, iCategory.Name(), {});
  EndNode(cNodeMobileCategory);
  for (const TWatchlistCategory* child : iCategory.LstCategory()) SaveCategory(*child);
}

void TWatchlistFileSaverMobileExport::SaveSearchResults(
    const TLstWatchlistCategory& iLstCategory, const TLstWatchlistIntegration& iLstIntegration) {
  BeginNode(cNodeMobileSearchResults);
  for (const TWatchlistIntegration* record : iLstIntegration) {
    SaveSearchresultsForIntegration(iLstCategory, *record);
  }
  EndNode(cNodeMobileSearchResults);
}

void TWatchlistFileSaverMobileExport::SaveSearchresultsForIntegration(
    const TLstWatchlistCategory& iLstCategory, const TWatchlistIntegration& iIntegration) {
  if (!iIntegration.Integration()->SupportsMobileExport()) return;
  TLstWatchlistItem items(false);
  iLstCategory.GetItemsByPluginId(iIntegration.Integration()->GetId(), items, true);
  TItemsByCategory byCategory;
  for (const TWatchlistItem* item : items) {
    if (!item->SearchResult()) continue;  // the source has lost it and can tell nothing of it
    TIntf<IInterfaceList>& results = byCategory[item->ParentCategoryId()];
    if (!results) results = NewInterfaceList();
    results->Add(item->SearchResult());
  }
  for (const TWatchlistCategory* category : iLstCategory) {
    SaveSearchresultsForCategory(*category, byCategory, iIntegration);
  }
}

void TWatchlistFileSaverMobileExport::SaveSearchresultsForCategory(
    const TWatchlistCategory& iCategory, const TItemsByCategory& iItems,
    const TWatchlistIntegration& iIntegration) {
  const auto items = iItems.find(iCategory.Id());
  if (items != iItems.end()) {
    TStringList params;
    TStringList lines;
    params.SetValue(cNodeMobileCategoryGuid, GuidToStringEx(iCategory.Id()));
    iIntegration.Integration()->ExportSearchResults(*items->second, params, lines);
    for (const TString& line : lines.Lines()) WriteLine(line);
  }
  for (const TWatchlistCategory* child : iCategory.LstCategory()) {
    SaveSearchresultsForCategory(*child, iItems, iIntegration);
  }
}

// What stands in the brackets plays no part.
void TWatchlistFileSaverMobileExport::WriteLine(TStringView iLine) {
  if (StartsWith(iLine, u"[/")) return EndNode(cNodeMobileSearchResult);
  if (StartsWith(iLine, u"[")) return BeginNode(cNodeMobileSearchResult);
  const size_t equals = iLine.find(u'=');
  if (equals == TStringView::npos || equals == 0) return;
  WriteString(iLine.substr(0, equals), iLine.substr(equals + 1), {});
}

}  // namespace kk
