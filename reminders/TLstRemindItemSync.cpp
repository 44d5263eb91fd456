#include "reminders/TLstRemindItemSync.h"

namespace kk {

TLstRemindItemSync::TLstRemindItemSync(bool iOwnsObjects) : TLstRemindItem(iOwnsObjects) {
  // Makes the list's hash now: readers would otherwise make it side by side.
  (void)FHashedList.IndexOf(u"");
}

TLstRemindItemSync& TLstRemindItemSync::BeginRead() {
  FSync.BeginRead();
  return *this;
}

TLstRemindItemSync& TLstRemindItemSync::BeginWrite() {
  FSync.BeginWrite();
  FChanged = true;
  return *this;
}

bool TLstRemindItemSync::GetChanged() const {
  const TReading reading(*this);
  return FChanged;
}

void TLstRemindItemSync::SetChanged(bool iValue) {
  const TWriting writing(*this);
  FChanged = iValue;
}

int TLstRemindItemSync::GetCount() const {
  const TReading reading(*this);
  return TLstRemindItem::GetCount();
}

void TLstRemindItemSync::Clear() {
  const TWriting writing(*this);
  TLstRemindItem::Clear();
}

void TLstRemindItemSync::Add(std::unique_ptr<TRemindItem> iItem) {
  const TWriting writing(*this);
  TLstRemindItem::Add(std::move(iItem));
}

void TLstRemindItemSync::Add(TRemindItem& iItem) {
  const TWriting writing(*this);
  TLstRemindItem::Add(iItem);
}

void TLstRemindItemSync::Delete(int iIndex) {
  const TWriting writing(*this);
  TLstRemindItem::Delete(iIndex);
}

void TLstRemindItemSync::Delete(TRemindItem& iItem) {
  const TWriting writing(*this);
  TLstRemindItem::Delete(iItem);
}

void TLstRemindItemSync::DeleteBySearchResultId(const TGuid& iSearchResultId) {
  const TWriting writing(*this);
  TLstRemindItem::DeleteBySearchResultId(iSearchResultId);
}

std::unique_ptr<TRemindItem> TLstRemindItemSync::Extract(TRemindItem& iItem) {
  const TWriting writing(*this);
  return TLstRemindItem::Extract(iItem);
}

std::unique_ptr<TRemindItem> TLstRemindItemSync::ExtractBySearchResultId(
    const TGuid& iSearchResultId) {
  const TWriting writing(*this);
  return TLstRemindItem::ExtractBySearchResultId(iSearchResultId);
}

std::unique_ptr<TRemindItem> TLstRemindItemSync::CloneItemBySearchResultId(
    const TGuid& iSearchResultId) const {
  const TReading reading(*this);
  return TLstRemindItem::CloneItemBySearchResultId(iSearchResultId);
}

void TLstRemindItemSync::Append(TLstRemindItem& ioLst, bool iClearBeforeAppending) {
  const TWriting writing(*this);
  TLstRemindItem::Append(ioLst, iClearBeforeAppending);
  if (iClearBeforeAppending) SetChanged(false);
}

bool TLstRemindItemSync::HasSearchResultId(const TGuid& iSearchResultId) const {
  // Looks like a mistake and is required: nothing fills the hashed list, so the answer is always
  // no. The import relies on it, see the header.
  const TReading reading(*this);
  return FHashedList.IndexOf(GUIDToString(iSearchResultId)) >= 0;
}

TRemindTypes TLstRemindItemSync::RemindTypesBySearchResultId(const TGuid& iSearchResultId) const {
  const TReading reading(*this);
  return TLstRemindItem::RemindTypesBySearchResultId(iSearchResultId);
}

bool TLstRemindItemSync::HasElapsedItems() const {
  const TReading reading(*this);
  return TLstRemindItem::HasElapsedItems();
}

bool TLstRemindItemSync::ExtractFirstElapsedItem(std::unique_ptr<TRemindItem>& oItem) {
  const TWriting writing(*this);
  return TLstRemindItem::ExtractFirstElapsedItem(oItem);
}

bool TLstRemindItemSync::ExtractElapsedItems(TLstRemindItem& ioLst) {
  const TWriting writing(*this);
  return TLstRemindItem::ExtractElapsedItems(ioLst);
}

}  // namespace kk
