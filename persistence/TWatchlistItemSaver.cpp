#include "persistence/TWatchlistItemSaver.h"

#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

void TWatchlistItemSaver::SaveToStream(TMemoryStream& ioMS, const TLstWatchlistItem& iLst,
                                       const TIntf<IWatchlistIntegration>& /*iIntegration*/) {
  TWatchlistItemSaver saver;
  saver.SetWriteDeclaration(false);
  saver.SaveToXML(iLst);
  saver.TFastWriterBaseSimpleXML::SaveToStream(ioMS);
}

void TWatchlistItemSaver::SaveToXML(const TLstWatchlistItem& iLst) {
  if (iLst.GetCount() == 0) return;
  BeginNode(cNodeItemItems);
  for (const TWatchlistItem* item : iLst) SaveToXML(*item);
  EndNode(cNodeItemItems);
}

void TWatchlistItemSaver::SaveToXML(const TWatchlistItem& iItem) {
  BeginNode(cNodeItemItem);
  WriteString(cNodeItemCategory, GUIDToString(iItem.ParentCategoryId()), {});
  WriteString(cNodeItemSearchResult, GUIDToString(iItem.SearchResultId()), {});
  WriteDateTime(cNodeItemLastUpdateDate, iItem.LastUpdateDate(), {});
  // Unlike a category's, a note has its element only if it holds something.
  if (!Trim(iItem.Description().GetText()).empty()) {
    WriteStringList(cNodeItemDescription, iItem.Description(), cNodeListDelimiter);
  }
  EndNode(cNodeItemItem);
}

}  // namespace kk
