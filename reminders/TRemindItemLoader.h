#pragma once

#include "host/base/TDelegate.h"
#include "host/common/TParserBaseSimpleXML.h"
#include "reminders/TLstRemindItem.h"

namespace kk {

/// Reads reminders from XML and appends them to a list. One thread at a time.
class TRemindItemLoader : public TParserBaseSimpleXML {
 public:
  /// Reads from the stream's position on; the flag goes to the document. An empty stream has no
  /// reminders. Raises EConvertError for text that is no XML. iOnStep: raised before each reminder.
  static void LoadFromStream(TStream& iStream, TLstRemindItem& ioLst, bool iDecodeUTF8,
                             TNotifyEvent iOnStep = {});

  void LoadFromXML(const TSimpleXMLDocument& iDocument, TLstRemindItem& ioLst) const;
  /// Each child of the root, whatever both are called, is a reminder; one that can't be read is
  /// left out.
  void LoadFromXML(TSimpleXMLNode iNode, TLstRemindItem& ioLst) const;
  /// Raises EConvertError for a missing or bad id. A reminder without details is left out.
  void LoadItemFromXML(TSimpleXMLNode iNode, TLstRemindItem& ioLst) const;

  void LoadDetailsSound(TSimpleXMLNode iNode, TRemindItem& ioItem) const;
  void LoadDetailsEMail(TSimpleXMLNode iNode, TRemindItem& ioItem) const;
  void LoadDetailsSMS(TSimpleXMLNode iNode, TRemindItem& ioItem) const;
  void LoadDetailsWindow(TSimpleXMLNode iNode, TRemindItem& ioItem) const;
  void LoadDetailsOutlook(TSimpleXMLNode iNode, TRemindItem& ioItem) const;

 private:
  void LoadDetails(TSimpleXMLNode iDetails, TRemindItem& ioItem) const;

  TNotifyEvent FOnStep;
};

}  // namespace kk
