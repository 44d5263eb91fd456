#pragma once

#include "host/base/TDelegate.h"
#include "host/common/TParserBaseSimpleXML.h"
#include "model/TLstWatchlistItem.h"
#include "model/TWatchlistIntegration.h"

namespace kk {

/// Reads what TWatchlistItemSaver writes. Main thread.
class TWatchlistItemLoader : public TParserBaseSimpleXML {
 public:
  /// Appends the records, which have no search result yet, to an owning list. A record that can't
  /// be read is dropped; a stream that is no XML raises. iDecodeUTF8: see TSimpleXMLDocument. The
  /// integration plays no part. iOnStep: raised before each record.
  static void LoadFromStream(TMemoryStream& iMS, TLstWatchlistItem& ioLst,
                             const TIntf<IWatchlistIntegration>& iIntegration, bool iDecodeUTF8,
                             TNotifyEvent iOnStep = {});

 private:
  void LoadFromXML(const TSimpleXMLDocument& iDocument, TLstWatchlistItem& ioLst);
  void LoadFromXML(TSimpleXMLNode iNode, TLstWatchlistItem& ioLst);
  void LoadItemFromXML(TSimpleXMLNode iNode, TLstWatchlistItem& ioLst);

  TNotifyEvent FOnStep;
};

}  // namespace kk
