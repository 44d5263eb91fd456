#include "persistence/TWatchlistFileSaverMobileExport.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/base/Log.h"
#include "host/common/TFileHelper.h"
#include "persistence/MobileGuid.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

namespace {

struct TRange {
  char16_t First, Last;
};

// XML 1.0, productions 4 and 4a, without the colon, which would make a prefix that nobody declares.
constexpr auto cNameStart = std::to_array<TRange>({{u'A', u'Z'},
                                                   {u'_', u'_'},
                                                   {u'a', u'z'},
                                                   {0xC0, 0xD6},
                                                   {0xD8, 0xF6},
                                                   {0xF8, 0x2FF},
                                                   {0x370, 0x37D},
                                                   {0x37F, 0x1FFF},
                                                   {0x200C, 0x200D},
                                                   {0x2070, 0x218F},
                                                   {0x2C00, 0x2FEF},
                                                   {0x3001, 0xD7FF},
                                                   {0xF900, 0xFDCF},
                                                   {0xFDF0, 0xFFFD}});
constexpr auto cNameRest = std::to_array<TRange>(
    {{u'-', u'.'}, {u'0', u'9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}});

bool IsElementName(TStringView iName) {
  const auto isIn = [](const auto& iRanges, char16_t iUnit) {
    return std::ranges::any_of(iRanges, [&](const TRange& iRange) {
      return iUnit >= iRange.First && iUnit <= iRange.Last;
    });
  };
  return !iName.empty() && isIn(cNameStart, iName[0]) &&
         std::ranges::all_of(iName, [&](char16_t iUnit) {
           return isIn(cNameStart, iUnit) || isIn(cNameRest, iUnit);
         });
}

constexpr size_t cMaxNamesTold = 5;
constexpr size_t cMaxNameTold = 40;

}  // namespace

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

// The children follow behind the category's end, which is what makes the list flat. A list of one
// line is written even where the line is empty: each category has a name.
void TWatchlistFileSaverMobileExport::SaveCategory(const TWatchlistCategory& iCategory) {
  BeginNode(cNodeMobileCategory);
  WriteString(cNodeMobileGuid, GuidToStringEx(iCategory.Id()), {});
  WriteStringList(cNodeMobileName, {iCategory.Name()}, u'\n');
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
  TellLeftOut(*iIntegration.Integration());
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
  const bool hasValue = equals != TStringView::npos;
  const TString name = Trim(iLine.substr(0, equals));
  if (hasValue ? equals + 1 == iLine.size() : name.empty()) return;  // there is nothing to write
  if (hasValue && IsElementName(name)) return WriteString(name, iLine.substr(equals + 1), {});
  ++FLeftOut.Count;
  const TString told = ShortenedText(WithoutControlCharacters(name), cMaxNameTold);
  const bool isNew = std::ranges::find(FLeftOut.Names, told) == FLeftOut.Names.end();
  if (isNew && FLeftOut.Names.size() <= cMaxNamesTold) FLeftOut.Names.push_back(told);
}

void TWatchlistFileSaverMobileExport::TellLeftOut(const IWatchlistIntegration& iSource) {
  const TLeftOut leftOut = std::exchange(FLeftOut, {});
  if (leftOut.Count == 0) return;
  TString names;
  for (size_t i = 0; i < std::min(leftOut.Names.size(), cMaxNamesTold); ++i) {
    names += (names.empty() ? u"\"" : u", \"") + leftOut.Names[i] + u"\"";
  }
  if (leftOut.Names.size() > cMaxNamesTold) names += u" …";
  LogError(_resLoggingSenderWatchlistHandler, _resLoggingMobileFieldsLeftOut,
           {iSource.GetName(), names, leftOut.Count});
}

}  // namespace kk
