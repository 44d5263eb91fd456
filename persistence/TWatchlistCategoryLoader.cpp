#include "persistence/TWatchlistCategoryLoader.h"

#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

namespace {

constexpr TStringView cTooDeep = u"Die Kategorien sind tiefer als %d Ebenen verschachtelt.";

}  // namespace

void TWatchlistCategoryLoader::LoadFromStream(TMemoryStream& iMS, TLstWatchlistCategory& ioLst,
                                              bool iDecodeUTF8, TNotifyEvent iOnStep) {
  TWatchlistCategoryLoader loader;
  loader.FOnStep = iOnStep;
  TSimpleXMLDocument document;
  document.LoadFromStream(iMS, iDecodeUTF8);
  loader.LoadFromXML(document, ioLst);
}

void TWatchlistCategoryLoader::LoadFromXML(const TSimpleXMLDocument& iDocument,
                                           TLstWatchlistCategory& ioLst) {
  const TSimpleXMLNode root = iDocument.GetDocumentElement();
  if (root) LoadFromXML(root, ioLst, 1);
}

void TWatchlistCategoryLoader::LoadFromXML(TSimpleXMLNode iNode, TLstWatchlistCategory& ioLst,
                                           int iDepth) {
  // Every element counts as a category, whatever its name.
  for (TSimpleXMLNode node = iNode.GetChildNodes().GetFirst(); node; node = node.GetNextSibling()) {
    if (FOnStep) FOnStep(this);
    LoadCategoryFromXML(node, ioLst, iDepth);
  }
}

void TWatchlistCategoryLoader::LoadCategoryFromXML(TSimpleXMLNode iNode,
                                                   TLstWatchlistCategory& ioLst, int iDepth) {
  if (iDepth > TWatchlistCategory::cMaxDepth) {
    throw Exception(Format(cTooDeep, {TWatchlistCategory::cMaxDepth}));
  }
  auto category = std::make_unique<TWatchlistCategory>();
  category->SetId(StringToGUID(GetValueAsString(iNode, cNodeCategoryId)));
  category->SetName(GetValueAsString(iNode, cNodeCategoryName));
  GetValueAsStringList(iNode, cNodeCategoryDescription, category->Description(),
                       cNodeListDelimiter);
  category->SetExpanded(GetValueAsBoolean(iNode, cNodeCategoryExpanded));
  const TSimpleXMLNode children = iNode.GetChildNode(cNodeCategoryCategories);
  if (children) LoadFromXML(children, category->LstCategory(), iDepth + 1);
  ioLst.Add(std::move(category));
}

}  // namespace kk
