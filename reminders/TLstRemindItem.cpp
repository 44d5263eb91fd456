#include "reminders/TLstRemindItem.h"

#include "host/base/TClock.h"

namespace kk {

namespace {

bool IsElapsed(const TRemindItem& iItem, TDateTime iNow) { return iNow >= iItem.RemindTime(); }

}  // namespace

void TLstRemindItem::Add(std::unique_ptr<TRemindItem> iItem) { FOL.Append(std::move(iItem)); }

void TLstRemindItem::Add(TRemindItem& iItem) { FOL.Append(iItem); }

void TLstRemindItem::Delete(int iIndex) { Delete(FOL.At(iIndex)); }

void TLstRemindItem::Delete(TRemindItem& iItem) {
  const int index = FOL.IndexOf(&iItem);
  if (index >= 0) FOL.Delete(index);
}

void TLstRemindItem::DeleteBySearchResultId(const TGuid& iSearchResultId) {
  if (TRemindItem* item = Find(iSearchResultId)) Delete(*item);
}

std::unique_ptr<TRemindItem> TLstRemindItem::Extract(TRemindItem& iItem) {
  return FOL.Extract(iItem);
}

std::unique_ptr<TRemindItem> TLstRemindItem::ExtractBySearchResultId(const TGuid& iSearchResultId) {
  TRemindItem* item = Find(iSearchResultId);
  return item == nullptr ? nullptr : Extract(*item);
}

std::unique_ptr<TRemindItem> TLstRemindItem::CloneItemBySearchResultId(
    const TGuid& iSearchResultId) const {
  const TRemindItem* item = Find(iSearchResultId);
  return item == nullptr ? nullptr : item->Clone();
}

void TLstRemindItem::Append(TLstRemindItem& ioLst, bool iClearBeforeAppending) {
  if (&ioLst == this || ioLst.FOL.OwnsObjects() != FOL.OwnsObjects()) {
    throw EInvalidCast(u"TLstRemindItem.Append");
  }
  if (iClearBeforeAppending) Clear();
  while (ioLst.FOL.GetCount() > 0) {
    if (FOL.OwnsObjects()) {
      FOL.Append(ioLst.FOL.Extract(0));
    } else {
      FOL.Append(ioLst.FOL.At(0));
      ioLst.FOL.Delete(0);
    }
  }
}

bool TLstRemindItem::HasSearchResultId(const TGuid& iSearchResultId) const {
  return Find(iSearchResultId) != nullptr;
}

TRemindTypes TLstRemindItem::RemindTypesBySearchResultId(const TGuid& iSearchResultId) const {
  const TRemindItem* item = Find(iSearchResultId);
  return item == nullptr ? TRemindTypes() : item->RemindTypes();
}

bool TLstRemindItem::HasElapsedItems() const {
  const TDateTime now = Now();
  return std::any_of(FOL.begin(), FOL.end(),
                     [now](const TRemindItem* iItem) { return IsElapsed(*iItem, now); });
}

bool TLstRemindItem::ExtractFirstElapsedItem(std::unique_ptr<TRemindItem>& oItem) {
  const TDateTime now = Now();
  const auto hit = std::find_if(FOL.begin(), FOL.end(),
                                [now](const TRemindItem* iItem) { return IsElapsed(*iItem, now); });
  if (hit == FOL.end()) return false;
  oItem = Extract(**hit);
  return true;
}

bool TLstRemindItem::ExtractElapsedItems(TLstRemindItem& ioLst) {
  const TDateTime now = Now();
  bool found = false;
  for (int i = FOL.GetCount() - 1; i >= 0; --i) {
    if (!IsElapsed(FOL.At(i), now)) continue;
    ioLst.Add(Extract(FOL.At(i)));
    found = true;
  }
  return found;
}

int TLstRemindItem::IndexOfSearchResultId(const TGuid& iSearchResultId) const {
  for (int i = 0; i < FOL.GetCount(); ++i) {
    if (SameGuid(FOL.At(i).Id(), iSearchResultId)) return i;
  }
  return -1;
}

TRemindItem* TLstRemindItem::Find(const TGuid& iSearchResultId) const {
  const int index = IndexOfSearchResultId(iSearchResultId);
  return index < 0 ? nullptr : &FOL.At(index);
}

}  // namespace kk
