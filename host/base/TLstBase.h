#pragma once

#include <algorithm>
#include <memory>

#include "host/base/Exception.h"
#include "host/base/TObject.h"
#include "host/base/TPointerRow.h"

namespace kk {

/// The base of all typed lists, and the one place with a flag for ownership. An owning list frees
/// its objects; a list that doesn't own borrows them and must not outlive them. Typed lists add
/// Add, GetItems and look-ups. Main thread.
///
/// A descendant that overrides Attached or Detached calls Clear in its own destructor, because the
/// base's runs too late for that.
template <class T>
class TLstBase : public TObject {
 public:
  explicit TLstBase(bool iOwnsObjects) : FOwnsObjects(iOwnsObjects) {}
  ~TLstBase() override { TLstBase::Clear(); }

  /// Empties the list and frees nothing.
  virtual void ClearWithoutFree() {
    while (!FObjects.empty()) TakeOut(FObjects.size() - 1);
  }
  /// Empties the list; an owning list frees the objects, the first one first.
  virtual void Clear() {
    while (!FObjects.empty()) Free(TakeOut(0));
  }
  /// Takes an entry out and hands it over. For owning lists; one that borrows has nothing to hand
  /// over and raises EInvalidCast.
  virtual std::unique_ptr<T> Extract(int iIndex) {
    const size_t index = Checked(iIndex);
    if (!FOwnsObjects) throw EInvalidCast(u"TLstBase.Extract");
    return std::unique_ptr<T>(TakeOut(index));
  }
  /// As above, by object; empty if it isn't in the list.
  virtual std::unique_ptr<T> Extract(T& iObject) {
    const int index = IndexOf(&iObject);
    return index < 0 ? nullptr : Extract(index);
  }
  /// Takes an entry out; an owning list frees it.
  virtual void Delete(int iIndex) { Free(TakeOut(Checked(iIndex))); }
  virtual void Move(int iFrom, int iTo) {
    const size_t from = Checked(iFrom);
    const size_t to = Checked(iTo);
    FObjects.Insert(to, FObjects.TakeOut(from));
    Reordered();
  }
  virtual void Reverse() {
    FObjects.Reverse();
    Reordered();
  }

  int GetCount() const { return static_cast<int>(FObjects.size()); }
  bool OwnsObjects() const { return FOwnsObjects; }
  /// -1 for an object that isn't in the list, none included.
  int IndexOf(const T* iObject) const {
    if (iObject == nullptr) return -1;
    const auto hit = std::find(FObjects.begin(), FObjects.end(), iObject);
    return hit == FObjects.end() ? -1 : static_cast<int>(hit - FObjects.begin());
  }

  auto begin() const { return FObjects.begin(); }
  auto end() const { return FObjects.end(); }

 protected:
  /// An index out of range raises EListError.
  T& At(int iIndex) const { return *FObjects[Checked(iIndex)]; }
  /// Appends to an owning list.
  T& Append(std::unique_ptr<T> iObject) { return Put(GetCount(), iObject.release(), true); }
  /// Appends to a list that borrows.
  T& Append(T& iObject) { return Put(GetCount(), &iObject, false); }
  T& InsertAt(int iIndex, std::unique_ptr<T> iObject) {
    return Put(std::clamp(iIndex, 0, GetCount()), iObject.release(), true);
  }

  /// Told when an object has come in, has gone out, or the order has changed.
  virtual void Attached(T& /*iObject*/) {}
  virtual void Detached(T& /*iObject*/) {}
  virtual void Reordered() {}

 private:
  size_t Checked(int iIndex) const { return CheckedIndex(iIndex, FObjects.size()); }
  T& Put(int iIndex, T* iObject, bool iOwned) {
    std::unique_ptr<T> guard(iOwned ? iObject : nullptr);
    if (iOwned != FOwnsObjects) throw EInvalidCast(u"TLstBase.Add");
    FObjects.Insert(static_cast<size_t>(iIndex), iObject);
    guard.release();
    Attached(*iObject);
    if (iIndex + 1 < GetCount()) Reordered();
    return *iObject;
  }
  // From either end without moving the rest: emptying a list in its order stays linear.
  T* TakeOut(size_t iIndex) {
    T* object = FObjects.TakeOut(iIndex);
    Detached(*object);
    return object;
  }
  void Free(T* iObject) {
    if (FOwnsObjects) delete iObject;
  }

  TPointerRow<T> FObjects;
  bool FOwnsObjects;
};

}  // namespace kk
