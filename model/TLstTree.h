#pragma once

#include <algorithm>

#include "host/base/TLstBase.h"
#include "model/TTreePlace.h"

namespace kk {

/// A typed list of the tree, TSelf, whose objects know their places while it owns them. T has a
/// field `TTreePlace<TSelf> FPlace`. Lists that borrow leave the objects alone. Main thread.
template <class T, class TSelf>
class TLstTree : public TLstBase<T> {
 public:
  using TLstBase<T>::TLstBase;

  /// The index of an object that hangs in this owning list, without a walk along the list.
  int IndexOfPlaced(const T& iObject) const {
    const auto hit = std::lower_bound(
        this->begin(), this->end(), iObject.FPlace.Order,
        [](const T* iEntry, int64_t iOrder) { return iEntry->FPlace.Order < iOrder; });
    return static_cast<int>(hit - this->begin());
  }

 protected:
  void Attached(T& iObject) override {
    if (!this->OwnsObjects()) return;
    iObject.FPlace = {static_cast<TSelf*>(this), FNextOrder++};
  }
  void Detached(T& iObject) override {
    if (this->OwnsObjects()) iObject.FPlace = {};
  }
  void Reordered() override {
    if (!this->OwnsObjects()) return;
    for (T* object : *this) object->FPlace.Order = FNextOrder++;
  }

 private:
  int64_t FNextOrder = 0;
};

}  // namespace kk
