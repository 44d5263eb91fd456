#pragma once

#include "host/common/TFastWriterBaseSimpleXML.h"
#include "model/TLstWatchlistCategory.h"

namespace kk {

/// Writes the tree as the document "CategoryRoot": one "Category" for each category, its children
/// inside it under "Categories". Lines of a description are joined by "|", for which there is no
/// escape. Main thread.
class TWatchlistCategorySaver : public TFastWriterBaseSimpleXML {
 public:
  /// At the stream's position. An empty list writes nothing at all.
  static void SaveToStream(TMemoryStream& ioMS, const TLstWatchlistCategory& iLst);

 private:
  void SaveToXML(const TLstWatchlistCategory& iLst, bool iIsRoot);
  void SaveToXML(const TWatchlistCategory& iCategory);
};

}  // namespace kk
