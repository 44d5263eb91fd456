#pragma once

#include "host/base/TDelegate.h"
#include "host/common/TParserBaseSimpleXML.h"
#include "model/TLstWatchlistCategory.h"

namespace kk {

/// Reads what TWatchlistCategorySaver writes. Main thread.
class TWatchlistCategoryLoader : public TParserBaseSimpleXML {
 public:
  /// Appends the categories to an owning list. iDecodeUTF8: see TSimpleXMLDocument. Raises for a
  /// stream that is no XML, for a category without a valid "Id" and for categories nested deeper
  /// than TWatchlistCategory::cMaxDepth; what was read before that stays in the list. An empty
  /// stream has no categories. iOnStep: raised before each category.
  static void LoadFromStream(TMemoryStream& iMS, TLstWatchlistCategory& ioLst, bool iDecodeUTF8,
                             TNotifyEvent iOnStep = {});

 private:
  void LoadFromXML(const TSimpleXMLDocument& iDocument, TLstWatchlistCategory& ioLst);
  void LoadFromXML(TSimpleXMLNode iNode, TLstWatchlistCategory& ioLst, int iDepth);
  void LoadCategoryFromXML(TSimpleXMLNode iNode, TLstWatchlistCategory& ioLst, int iDepth);

  TNotifyEvent FOnStep;
};

}  // namespace kk
