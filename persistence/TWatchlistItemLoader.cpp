#include "persistence/TWatchlistItemLoader.h"

#include "host/base/Guard.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

void TWatchlistItemLoader::LoadFromStream(TMemoryStream& iMS, TLstWatchlistItem& ioLst,
                                          const TIntf<IWatchlistIntegration>& /*iIntegration*/,
                                          bool iDecodeUTF8, TNotifyEvent iOnStep) {
  TWatchlistItemLoader loader;
  loader.FOnStep = iOnStep;
  TSimpleXMLDocument document;
  document.LoadFromStream(iMS, iDecodeUTF8);
  loader.LoadFromXML(document, ioLst);
}

void TWatchlistItemLoader::LoadFromXML(const TSimpleXMLDocument& iDocument,
                                       TLstWatchlistItem& ioLst) {
  const TSimpleXMLNode root = iDocument.GetDocumentElement();
  if (root) LoadFromXML(root, ioLst);
}

void TWatchlistItemLoader::LoadFromXML(TSimpleXMLNode iNode, TLstWatchlistItem& ioLst) {
  // Every element counts as a record, whatever its name; a damaged one costs one item, not all.
  for (TSimpleXMLNode node = iNode.GetChildNodes().GetFirst(); node; node = node.GetNextSibling()) {
    if (FOnStep) FOnStep(this);
    Guarded(u"TWatchlistItemLoader.LoadFromXML", [&] { LoadItemFromXML(node, ioLst); });
  }
}

void TWatchlistItemLoader::LoadItemFromXML(TSimpleXMLNode iNode, TLstWatchlistItem& ioLst) {
  // The ids first: an item that is made and given up would be told to the listeners as deleted.
  const TGuid category = StringToGUID(GetValueAsString(iNode, cNodeItemCategory));
  const TGuid searchResult = StringToGUID(GetValueAsString(iNode, cNodeItemSearchResult));
  auto item = std::make_unique<TWatchlistItem>();
  item->SetParentCategoryId(category);
  item->SetSearchResultId(searchResult);
  item->SetLastUpdateDate(GetValueAsDateTime(iNode, cNodeItemLastUpdateDate));
  GetValueAsStringList(iNode, cNodeItemDescription, item->Description(), cNodeListDelimiter);
  ioLst.Add(std::move(item));
}

}  // namespace kk
