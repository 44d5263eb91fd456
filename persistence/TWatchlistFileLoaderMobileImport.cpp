#include "persistence/TWatchlistFileLoaderMobileImport.h"

#include <unordered_map>

#include "persistence/CatchAllCategory.h"
#include "persistence/MobileGuid.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

namespace {

TIntf<IWatchlistIntegration> FindSource(const TLstWatchlistIntegration& iLst, TStringView iGuid) {
  for (const TWatchlistIntegration* record : iLst) {
    if (record->Integration()->HandlesPluginGuid(iGuid)) return record->Integration();
  }
  return {};
}

TString ToLower(TString ioText) {
  for (char16_t& letter : ioText) letter = AsciiLower(letter);
  return ioText;
}

// Of several elements of one name the last counts, at the place of the first; an empty one leaves
// no line.
void GetFields(TSimpleXMLNode iNode, TStringList& oLines) {
  std::vector<std::pair<TString, TString>> fields;
  std::unordered_map<TString, size_t> places;
  for (TSimpleXMLNode node = iNode.GetChildNodes().GetFirst(); node; node = node.GetNextSibling()) {
    const TString name = ToLower(node.GetName());
    const auto [place, isNew] = places.try_emplace(name, fields.size());
    if (isNew) fields.emplace_back(name, TString());
    fields[place->second].second = node.GetText();
  }
  oLines.Clear();
  for (const auto& [name, value] : fields) {
    if (!value.empty()) oLines.Add(name + u"=" + value);
  }
}

// The offer's date, in UTC, stands for the last refresh: that is required. Text that is no date,
// which a source may have left out, counts as never.
TDateTime OfferDate(TStringView iText) {
  try {
    return DateTimeStrEval(cMobileDateFormat, Trim(iText));
  } catch (const EConvertError&) {
    return {};
  }
}

}  // namespace

void TWatchlistFileLoaderMobileImport::LoadFromStream(
    TStream& iStream, const TLstWatchlistIntegration& iLstIntegration,
    TLstWatchlistCategory& ioLstCategory) {
  ioLstCategory.ClearWithoutFree();
  iStream.SetPosition(0);
  TSimpleXMLDocument document;
  document.LoadFromStream(iStream, true);
  const TSimpleXMLNode root = document.GetDocumentElement();
  if (!root) throw EConvertError(u"Der Text ist kein lesbares XML: Er ist leer");
  if (GetValueAsInteger(root, cNodeMobileVersion) != cMobileVersion) return;
  const TSimpleXMLNode categories = root.GetChildNode(cNodeMobileCategories);
  if (categories) ParseCategories(categories, ioLstCategory);
  if (ioLstCategory.FindCategoryById(cEmptyGuid) == nullptr) AddEmptyCategory(ioLstCategory);
  const TSimpleXMLNode results = root.GetChildNode(cNodeMobileSearchResults);
  if (results) ParseSearchResults(results, iLstIntegration, ioLstCategory);
}

void TWatchlistFileLoaderMobileImport::ParseCategories(TSimpleXMLNode iNode,
                                                       TLstWatchlistCategory& ioLst) {
  for (TSimpleXMLNode node = iNode.GetChildNodes().GetFirst(); node; node = node.GetNextSibling()) {
    auto category = std::make_unique<TWatchlistCategory>();
    category->SetId(StringToGUIDEx(GetValueAsString(node, cNodeMobileGuid)));
    category->SetName(GetValueAsString(node, cNodeMobileName));
    ioLst.Add(std::move(category));
  }
}

void TWatchlistFileLoaderMobileImport::AddEmptyCategory(TLstWatchlistCategory& ioLst) {
  AddCatchAllCategory(ioLst);
}

void TWatchlistFileLoaderMobileImport::ParseSearchResults(
    TSimpleXMLNode iNode, const TLstWatchlistIntegration& iLstIntegration,
    TLstWatchlistCategory& ioLst) {
  TStringList fields;
  for (TSimpleXMLNode node = iNode.GetChildNodes().GetFirst(); node; node = node.GetNextSibling()) {
    if (node.GetName() != cNodeMobileSearchResult) continue;
    const auto source = FindSource(iLstIntegration, GetValueAsString(node, cNodeMobilePluginGuid));
    if (!source) continue;
    GetFields(node, fields);
    const TIntf<IInterfaceList> results = source->CreateSearchResults(fields);
    const bool none = !results || results->GetCount() == 0;
    const auto result = none ? nullptr : GetAs<ISearchResult>(*results, 0);
    if (result) SaveToIntegration(ParseWatchlistItem(node, result), source, ioLst);
  }
}

std::unique_ptr<TWatchlistItem> TWatchlistFileLoaderMobileImport::ParseWatchlistItem(
    TSimpleXMLNode iNode, const TIntf<ISearchResult>& iResult) {
  auto item = std::make_unique<TWatchlistItem>();
  item->SetParentCategoryId(StringToGUIDEx(GetValueAsString(iNode, cNodeMobileCategoryGuid)));
  item->SetSearchResultId(iResult->GetId());
  item->SetLastUpdateDate(OfferDate(GetValueAsString(iNode, cNodeMobileOfferDate)));
  item->SetSearchResult(iResult);
  return item;
}

void TWatchlistFileLoaderMobileImport::SaveToIntegration(
    std::unique_ptr<TWatchlistItem> iItem, const TIntf<IWatchlistIntegration>& iIntegration,
    TLstWatchlistCategory& ioLst) {
  TWatchlistCategory* category = ioLst.FindCategoryById(iItem->ParentCategoryId());
  if (category == nullptr) category = ioLst.FindCategoryById(cEmptyGuid);
  if (category == nullptr) return;
  category->LstPlugin().FindOrAdd(iIntegration).LstItem().Add(std::move(iItem));
}

}  // namespace kk
