#pragma once

#include "host/base/THashedStringList.h"
#include "reminders/TLstRemindItem.h"
#include "reminders/TMultiReadExclusiveWriteSynchronizer.h"

namespace kk {

/// The live reminders, which the main thread and the reminder thread share. Every virtual operation
/// takes the lock by itself; GetItems, First and IndexOfSearchResultId belong into a bracket of the
/// caller's. A reminder that was extracted belongs to its taker and needs no lock. No lock may be
/// held across a Synchronize. Any thread.
class TLstRemindItemSync : public TLstRemindItem {
 public:
  explicit TLstRemindItemSync(bool iOwnsObjects);

  /// Brackets around several operations; both answer the list itself.
  TLstRemindItemSync& BeginRead();
  void EndRead() { FSync.EndRead(); }
  /// Counts as a change, whatever follows. It raises Exception inside a read bracket.
  TLstRemindItemSync& BeginWrite();
  void EndWrite() { FSync.EndWrite(); }

  /// The brackets as objects: open while they live.
  class TReading {
   public:
    explicit TReading(const TLstRemindItemSync& iLst) : FSync(iLst.FSync) { FSync.BeginRead(); }
    ~TReading() { FSync.EndRead(); }
    TReading(const TReading&) = delete;
    TReading& operator=(const TReading&) = delete;

   private:
    TMultiReadExclusiveWriteSynchronizer& FSync;
  };
  class TWriting {
   public:
    explicit TWriting(TLstRemindItemSync& ioLst) : FLst(ioLst.BeginWrite()) {}
    ~TWriting() { FLst.EndWrite(); }
    TWriting(const TWriting&) = delete;
    TWriting& operator=(const TWriting&) = delete;

   private:
    TLstRemindItemSync& FLst;
  };

  /// The lock, for diagnosis and tests.
  const TMultiReadExclusiveWriteSynchronizer& Sync() const { return FSync; }

  /// Whether there is something to save. Every write operation sets it, even one that changes
  /// nothing; replacing the whole list by Append clears it.
  bool GetChanged() const;
  void SetChanged(bool iValue);

  int GetCount() const override;
  void Clear() override;
  void Add(std::unique_ptr<TRemindItem> iItem) override;
  void Add(TRemindItem& iItem) override;
  void Delete(int iIndex) override;
  void Delete(TRemindItem& iItem) override;
  void DeleteBySearchResultId(const TGuid& iSearchResultId) override;
  std::unique_ptr<TRemindItem> Extract(TRemindItem& iItem) override;
  std::unique_ptr<TRemindItem> ExtractBySearchResultId(const TGuid& iSearchResultId) override;
  std::unique_ptr<TRemindItem> CloneItemBySearchResultId(
      const TGuid& iSearchResultId) const override;
  /// With the flag the list counts as loaded and thus as unchanged.
  void Append(TLstRemindItem& ioLst, bool iClearBeforeAppending) override;
  /// Always false, even for a reminder that is in the list: the hashed list that it asks is never
  /// filled. That is required; ask RemindTypesBySearchResultId instead.
  bool HasSearchResultId(const TGuid& iSearchResultId) const override;
  TRemindTypes RemindTypesBySearchResultId(const TGuid& iSearchResultId) const override;
  bool HasElapsedItems() const override;
  bool ExtractFirstElapsedItem(std::unique_ptr<TRemindItem>& oItem) override;
  bool ExtractElapsedItems(TLstRemindItem& ioLst) override;

 private:
  mutable TMultiReadExclusiveWriteSynchronizer FSync;
  THashedStringList FHashedList;
  bool FChanged = false;
};

}  // namespace kk
