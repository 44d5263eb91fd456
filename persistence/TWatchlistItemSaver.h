#pragma once

#include "host/common/TFastWriterBaseSimpleXML.h"
#include "model/TLstWatchlistItem.h"
#include "model/TWatchlistIntegration.h"

namespace kk {

/// Writes the item records of one source as the document "Items". A search result is in it by its
/// id alone: its data are the source's. A note without text has no element. Main thread.
class TWatchlistItemSaver : public TFastWriterBaseSimpleXML {
 public:
  /// At the stream's position, in list order. An empty list writes nothing at all. The integration
  /// plays no part in the text.
  static void SaveToStream(TMemoryStream& ioMS, const TLstWatchlistItem& iLst,
                           const TIntf<IWatchlistIntegration>& iIntegration);

 private:
  void SaveToXML(const TLstWatchlistItem& iLst);
  void SaveToXML(const TWatchlistItem& iItem);
};

}  // namespace kk
