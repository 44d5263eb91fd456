#include "reminders/TRemindItemSaver.h"

#include "reminders/TRemindDetailsEMail.h"
#include "reminders/TRemindDetailsOutlook.h"
#include "reminders/TRemindDetailsSMS.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"

namespace kk {

void TRemindItemSaver::SaveToStream(TStream& ioStream, const TLstRemindItem& iLst) {
  TRemindItemSaver saver;
  saver.SaveToXML(iLst);
  saver.TFastWriterBaseSimpleXML::SaveToStream(ioStream);
}

void TRemindItemSaver::SaveToXML(const TLstRemindItem& iLst) {
  const int count = iLst.GetCount();
  if (count == 0) return;
  BeginNode(cNodeItemItems);
  for (int i = 0; i < count; ++i) SaveToXML(iLst.GetItems(i));
  EndNode(cNodeItemItems);
}

void TRemindItemSaver::SaveToXML(const TRemindItem& iItem) {
  BeginNode(cNodeItemItem);
  WriteString(cNodeRemindItemId, GUIDToString(iItem.Id()), {});
  WriteDateTime(cNodeRemindItemTime, iItem.RemindTime(), {});
  TStringList types;
  for (const TRemindType type : cRemindTypes) {
    if (iItem.RemindTypes().Has(type)) types.Add(IntToStr(static_cast<int>(type)));
  }
  WriteStringList(cNodeRemindItemTypes, types, cNodeListDelimiter);
  SaveToXML(iItem.LstDetails());
  EndNode(cNodeItemItem);
}

template <class Details>
bool TRemindItemSaver::SavedAs(const TRemindDetailsBase& iDetails) {
  const auto* details = dynamic_cast<const Details*>(&iDetails);
  if (details == nullptr) return false;
  SaveToXML(*details);
  return true;
}

void TRemindItemSaver::SaveToXML(const TLstRemindDetails& iLst) {
  if (iLst.GetCount() == 0) return;
  BeginNode(cNodeRemindItemDetails);
  for (const TRemindDetailsBase* details : iLst) {
    (void)(SavedAs<TRemindDetailsSound>(*details) || SavedAs<TRemindDetailsWindow>(*details) ||
           SavedAs<TRemindDetailsSMS>(*details) || SavedAs<TRemindDetailsOutlook>(*details) ||
           SavedAs<TRemindDetailsEMail>(*details));
  }
  EndNode(cNodeRemindItemDetails);
}

template <class Details>
void TRemindItemSaver::WriteTexts(const Details& iDetails) {
  WriteString(cNodeRemindItemDetailsCaption, iDetails.Caption(), {});
  WriteString(cNodeRemindItemDetailsText, iDetails.Text(), {});
  WriteString(cNodeRemindItemDetailsLink, iDetails.Link(), {});
}

void TRemindItemSaver::SaveToXML(const TRemindDetailsSound& iDetails) {
  BeginNode(cNodeRemindItemDetailsSound);
  WriteString(cNodeRemindItemDetailsSoundfile, iDetails.SoundFile(), {});
  EndNode(cNodeRemindItemDetailsSound);
}

void TRemindItemSaver::SaveToXML(const TRemindDetailsWindow& iDetails) {
  BeginNode(cNodeRemindItemDetailsWindow);
  WriteTexts(iDetails);
  EndNode(cNodeRemindItemDetailsWindow);
}

void TRemindItemSaver::SaveToXML(const TRemindDetailsSMS& iDetails) {
  BeginNode(cNodeRemindItemDetailsSMS);
  WriteString(cNodeRemindItemDetailsText, iDetails.Text(), {});
  EndNode(cNodeRemindItemDetailsSMS);
}

void TRemindItemSaver::SaveToXML(const TRemindDetailsOutlook& iDetails) {
  BeginNode(cNodeRemindItemDetailsOutlook);
  WriteTexts(iDetails);
  WriteString(cNodeRemindItemDetailsEntryID, iDetails.EntryId(), {});
  EndNode(cNodeRemindItemDetailsOutlook);
}

void TRemindItemSaver::SaveToXML(const TRemindDetailsEMail& iDetails) {
  BeginNode(cNodeRemindItemDetailsEMail);
  WriteTexts(iDetails);
  EndNode(cNodeRemindItemDetailsEMail);
}

}  // namespace kk
