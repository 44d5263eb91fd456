#pragma once

#include "reminders/TRemindItem.h"

namespace kk {

/// Reminders in order. The list doesn't enforce one reminder for each search result; look-ups by id
/// find the first. One thread at a time; TLstRemindItemSync is the list for several.
class TLstRemindItem : public TObject {
 public:
  explicit TLstRemindItem(bool iOwnsObjects) : FOL(iOwnsObjects) {}

  virtual int GetCount() const { return FOL.GetCount(); }
  /// Empties the list; an owning list frees the reminders.
  virtual void Clear() { FOL.Clear(); }
  /// Appends to an owning list; one that borrows raises EInvalidCast.
  virtual void Add(std::unique_ptr<TRemindItem> iItem);
  /// Appends to a list that borrows; an owning one raises EInvalidCast.
  virtual void Add(TRemindItem& iItem);
  /// An index out of range raises EListError.
  virtual void Delete(int iIndex);
  /// Takes it out, an owning list frees it; no effect if it isn't in the list.
  virtual void Delete(TRemindItem& iItem);
  /// No effect if there is none.
  virtual void DeleteBySearchResultId(const TGuid& iSearchResultId);
  /// Takes it out and hands it over; empty if it isn't in the list. Here and below, a list that
  /// borrows has nothing to hand over and raises EInvalidCast.
  virtual std::unique_ptr<TRemindItem> Extract(TRemindItem& iItem);
  virtual std::unique_ptr<TRemindItem> ExtractBySearchResultId(const TGuid& iSearchResultId);
  /// A copy for the caller; empty if there is none.
  virtual std::unique_ptr<TRemindItem> CloneItemBySearchResultId(
      const TGuid& iSearchResultId) const;
  /// Moves every reminder of the other list here, from its front, until that is empty. The other
  /// list's lock is not taken: it must be the caller's alone. Raises EInvalidCast, and moves
  /// nothing, if one of the two owns and the other borrows, and for the list itself.
  virtual void Append(TLstRemindItem& ioLst, bool iClearBeforeAppending);
  virtual bool HasSearchResultId(const TGuid& iSearchResultId) const;
  /// The kinds of the reminder of that id; the empty set if there is none.
  virtual TRemindTypes RemindTypesBySearchResultId(const TGuid& iSearchResultId) const;
  /// Whether any reminder is due: at its very time it is.
  virtual bool HasElapsedItems() const;
  /// Takes the first reminder in the list that is due, even if a later one was due earlier. False
  /// if there is none; oItem stays as it is then.
  virtual bool ExtractFirstElapsedItem(std::unique_ptr<TRemindItem>& oItem);
  /// Takes all that are due, from the last to the first, so that ioLst gets them in reverse order.
  /// Answers whether there was one.
  virtual bool ExtractElapsedItems(TLstRemindItem& ioLst);

  /// An index out of range raises EListError.
  TRemindItem& GetItems(int iIndex) const { return FOL.At(iIndex); }
  /// Of an empty list raises EListError.
  TRemindItem& First() const { return FOL.At(0); }
  int Count() const { return GetCount(); }
  /// The first with this id; -1 if there is none.
  int IndexOfSearchResultId(const TGuid& iSearchResultId) const;

 private:
  class TOL : public TLstBase<TRemindItem> {
   public:
    using TLstBase::Append;
    using TLstBase::At;
    using TLstBase::TLstBase;
  };
  TRemindItem* Find(const TGuid& iSearchResultId) const;

  TOL FOL;
};

}  // namespace kk
