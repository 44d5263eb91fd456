#include "persistence/TWatchlistCategorySaver.h"

#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

void TWatchlistCategorySaver::SaveToStream(TMemoryStream& ioMS, const TLstWatchlistCategory& iLst) {
  TWatchlistCategorySaver saver;
  saver.SetWriteDeclaration(false);
  saver.SaveToXML(iLst, true);
  saver.TFastWriterBaseSimpleXML::SaveToStream(ioMS);
}

void TWatchlistCategorySaver::SaveToXML(const TLstWatchlistCategory& iLst, bool iIsRoot) {
  if (iLst.GetCount() == 0) return;
  const TStringView enclosing = iIsRoot ? cNodeCategoryRoot : cNodeCategoryCategories;
  BeginNode(enclosing);
  for (const TWatchlistCategory* category : iLst) SaveToXML(*category);
  EndNode(enclosing);
}

void TWatchlistCategorySaver::SaveToXML(const TWatchlistCategory& iCategory) {
  BeginNode(cNodeCategoryCategory);
  WriteString(cNodeCategoryId, GUIDToString(iCategory.Id()), {});
  WriteString(cNodeCategoryName, iCategory.Name(), {});
  WriteStringList(cNodeCategoryDescription, iCategory.Description(), cNodeListDelimiter);
  WriteBoolean(cNodeCategoryExpanded, iCategory.Expanded(), false);
  SaveToXML(iCategory.LstCategory(), false);
  EndNode(cNodeCategoryCategory);
}

}  // namespace kk
