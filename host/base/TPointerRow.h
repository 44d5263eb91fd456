#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace kk {

/// The pointers of a list in order. Both ends grow and shrink in constant time (amortised), in the
/// middle the shorter side moves, and a row without pointers takes no memory: a tree has two empty
/// lists for each of its categories. Owns nothing that it points at.
template <class T>
class TPointerRow {
 public:
  T* const* begin() const { return FSlots.data() + FFirst; }
  T* const* end() const { return FSlots.data() + FSlots.size(); }
  size_t size() const { return FSlots.size() - FFirst; }
  bool empty() const { return size() == 0; }
  T* operator[](size_t iIndex) const { return FSlots[FFirst + iIndex]; }

  /// iIndex up to size.
  void Insert(size_t iIndex, T* iPointer) {
    if (iIndex >= (size() + 1) / 2) {
      FSlots.insert(Slot(iIndex), iPointer);
      return;
    }
    if (FFirst == 0) MakeGap(size() + 1);
    --FFirst;
    std::move(Slot(1), Slot(iIndex + 1), Slot(0));
    *Slot(iIndex) = iPointer;
  }
  /// iIndex below size.
  T* TakeOut(size_t iIndex) {
    T* pointer = (*this)[iIndex];
    if (iIndex >= size() / 2) {
      FSlots.erase(Slot(iIndex));
    } else {
      std::move_backward(Slot(0), Slot(iIndex), Slot(iIndex + 1));
      ++FFirst;
    }
    if (empty() || FFirst > 2 * size()) CloseGap();
    return pointer;
  }
  void Reverse() { std::reverse(Slot(0), FSlots.end()); }

 private:
  auto Slot(size_t iIndex) { return FSlots.begin() + static_cast<ptrdiff_t>(FFirst + iIndex); }
  void MakeGap(size_t iCount) {
    FSlots.insert(FSlots.begin(), iCount, nullptr);
    FFirst = iCount;
  }
  void CloseGap() {
    FSlots.erase(FSlots.begin(), Slot(0));
    FFirst = 0;
    if (FSlots.empty()) FSlots.shrink_to_fit();
  }

  std::vector<T*> FSlots;
  size_t FFirst = 0;  // slots before it are the gap
};

}  // namespace kk
