#pragma once

#include "host/common/TFastWriterBaseSimpleXML.h"
#include "reminders/TLstRemindItem.h"

namespace kk {

class TRemindDetailsEMail;
class TRemindDetailsOutlook;
class TRemindDetailsSMS;
class TRemindDetailsSound;
class TRemindDetailsWindow;

/// Writes reminders as XML. One thread at a time.
class TRemindItemSaver : public TFastWriterBaseSimpleXML {
 public:
  /// Writes at the stream's position. An empty list gives an empty text, without a root element.
  /// Whoever hands over the live list holds its lock.
  static void SaveToStream(TStream& ioStream, const TLstRemindItem& iLst);

  TRemindItemSaver() { SetWriteDeclaration(false); }

  void SaveToXML(const TLstRemindItem& iLst);
  void SaveToXML(const TRemindItem& iItem);
  /// Details of a class that the stream does not know are passed over.
  void SaveToXML(const TLstRemindDetails& iLst);
  void SaveToXML(const TRemindDetailsSound& iDetails);
  void SaveToXML(const TRemindDetailsWindow& iDetails);
  void SaveToXML(const TRemindDetailsSMS& iDetails);
  void SaveToXML(const TRemindDetailsOutlook& iDetails);
  void SaveToXML(const TRemindDetailsEMail& iDetails);

 private:
  template <class Details>
  bool SavedAs(const TRemindDetailsBase& iDetails);
  template <class Details>
  void WriteTexts(const Details& iDetails);
};

}  // namespace kk
