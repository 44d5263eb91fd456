#pragma once

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "host/base/TGuid.h"

namespace kk {

/// Chains the objects with the same id; a field of each object that a TTreeIndex holds.
template <class T>
struct TTreeIndexLink {
  T* Previous = nullptr;
  T* Next = nullptr;
};

/// All objects of a class that hang in owning lists, by their ids, which need not be unique. What
/// goes in and out costs the same whatever the number of objects, with the same id or without. T
/// has a field `TTreeIndexLink<T> FIndexLink`. Borrows the objects. Main thread.
template <class T>
class TTreeIndex {
 public:
  void Enter(T& ioObject, const TGuid& iId) {
    TChain& chain = FById[iId];
    ioObject.FIndexLink = {nullptr, chain.First};
    if (chain.First != nullptr) chain.First->FIndexLink.Previous = &ioObject;
    chain.First = &ioObject;
    ++chain.Count;
    ++FCount;
  }

  /// iId: the id under which the object went in.
  void Leave(T& ioObject, const TGuid& iId) {
    const auto chain = FById.find(iId);
    const TTreeIndexLink<T> link = ioObject.FIndexLink;
    (link.Previous != nullptr ? link.Previous->FIndexLink.Next : chain->second.First) = link.Next;
    if (link.Next != nullptr) link.Next->FIndexLink.Previous = link.Previous;
    ioObject.FIndexLink = {};
    if (--chain->second.Count == 0) FById.erase(chain);
    --FCount;
  }

  bool IsEmpty() const { return FCount == 0; }

  /// The first object with this id that the filter lets pass, in the order of the keys that
  /// iScanKey gives; null if there is none. No value at all if so many objects share the id that a
  /// scan of the tree is likely to meet one of them sooner.
  template <class TFilter, class TScanKey>
  std::optional<T*> FindFirst(const TGuid& iId, TFilter iFilter, TScanKey iScanKey) const {
    const auto chain = FById.find(iId);
    if (chain == FById.end()) return nullptr;
    const size_t same = chain->second.Count;
    if (same > std::max(cFew, FCount / same)) return std::nullopt;
    T* first = nullptr;
    for (T* object = chain->second.First; object != nullptr; object = object->FIndexLink.Next) {
      if (!iFilter(*object)) continue;
      if (first == nullptr || iScanKey(*object) < iScanKey(*first)) first = object;
    }
    return first;
  }

 private:
  struct TChain {
    T* First = nullptr;
    size_t Count = 0;
  };
  static constexpr size_t cFew = 8;

  std::unordered_map<TGuid, TChain> FById;
  size_t FCount = 0;
};

}  // namespace kk
