#pragma once

#include <atomic>
#include <concepts>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "host/base/TGuid.h"

namespace kk {

/// The base of everything that crosses a plug-in's edge.
///
/// An interface derives from IInterface (or from another interface), names its id as
/// `static constexpr TGuid cIid` and its base as `using TParent`. Objects behind interfaces are
/// made by MakeIntf and die with their last reference. The count may be changed on any thread; the
/// operations of an interface run on the main thread unless it says otherwise.
class IInterface {
 public:
  static constexpr TGuid cIid = GuidLiteral("{00000000-0000-0000-C000-000000000046}");

  /// Sets the pointer to the interface with this id, counted up, and answers true; otherwise sets
  /// it to null and answers false. "No" is a normal answer.
  virtual bool QueryInterface(const TGuid& iIid, void** oInterface) = 0;
  virtual void AddRef() = 0;
  virtual void Release() = 0;

 protected:
  ~IInterface() = default;
};

/// The one smart pointer for counted interfaces. Copying counts up, destroying counts down.
/// Two of them are equal if they hold the same reference.
template <class I>
class TIntf {
 public:
  TIntf() = default;
  TIntf(std::nullptr_t) {}  // NOLINT: "no object" reads as nullptr
  explicit TIntf(I* iObject) : FObject(iObject) {
    if (FObject != nullptr) FObject->AddRef();
  }
  TIntf(const TIntf& iOther) : TIntf(iOther.FObject) {}
  TIntf(TIntf&& ioOther) noexcept : FObject(std::exchange(ioOther.FObject, nullptr)) {}
  template <class J>
  requires std::convertible_to<J*, I*> TIntf(const TIntf<J>& iOther)
      : TIntf(iOther.Get()) {}  // NOLINT: to a base interface
  ~TIntf() {
    if (FObject != nullptr) FObject->Release();
  }
  TIntf& operator=(TIntf iOther) noexcept {
    std::swap(FObject, iOther.FObject);
    return *this;
  }

  /// Takes over a reference that is already counted.
  static TIntf Adopt(I* iObject) {
    TIntf result;
    result.FObject = iObject;
    return result;
  }

  I* Get() const { return FObject; }
  I* operator->() const { return FObject; }
  I& operator*() const { return *FObject; }
  explicit operator bool() const { return FObject != nullptr; }

  friend bool operator==(const TIntf& iA, const TIntf& iB) { return iA.FObject == iB.FObject; }
  friend bool operator==(const TIntf& iA, std::nullptr_t) { return iA.FObject == nullptr; }

 private:
  I* FObject = nullptr;
};

/// The query: the interface asked for, or an empty pointer for "no" and for an empty argument.
template <class I>
TIntf<I> Supports(IInterface* iObject) {
  void* result = nullptr;
  if (iObject == nullptr || !iObject->QueryInterface(I::cIid, &result)) return {};
  return TIntf<I>::Adopt(static_cast<I*>(result));
}
template <class I, class J>
TIntf<I> Supports(const TIntf<J>& iObject) {
  return Supports<I>(static_cast<IInterface*>(iObject.Get()));
}

/// How many objects behind interfaces are alive in the process. It is zero before a package is
/// unloaded. Any thread.
int64_t LiveObjectCount();

namespace detail {

void CountLiveObject(int iDifference);

// True if the id is that of the interface or of one of its parents.
template <class I>
bool AnswersTo(const TGuid& iIid) {
  if (iIid == I::cIid) return true;
  if constexpr (!std::is_same_v<I, IInterface>) {
    return AnswersTo<typename I::TParent>(iIid);
  } else {
    return false;
  }
}

// The sub-object of the interface with this id, walking from an interface to its parents.
template <class I>
void* CastTo(I* iObject, const TGuid& iIid) {
  if (iIid == I::cIid) return iObject;
  if constexpr (!std::is_same_v<I, IInterface>) {
    return CastTo<typename I::TParent>(iObject, iIid);
  } else {
    return nullptr;
  }
}

}  // namespace detail

/// Writes the three operations of IInterface for a class that implements the given interfaces.
/// QueryDelegated is for interfaces that another object answers for this one.
template <class I, class... Is>
class TInterfaced : public I, public Is... {
 public:
  TInterfaced() { detail::CountLiveObject(1); }
  TInterfaced(const TInterfaced&) = delete;
  TInterfaced& operator=(const TInterfaced&) = delete;

  bool QueryInterface(const TGuid& iIid, void** oInterface) override {
    *oInterface = nullptr;
    if (detail::AnswersTo<I>(iIid)) {
      *oInterface = detail::CastTo<I>(static_cast<I*>(this), iIid);
    } else {
      (void)((detail::AnswersTo<Is>(iIid) &&
              (*oInterface = detail::CastTo<Is>(static_cast<Is*>(this), iIid)) != nullptr) ||
             ...);
    }
    if (*oInterface == nullptr) return QueryDelegated(iIid, oInterface);
    AddRef();
    return true;
  }
  void AddRef() override { FCount.fetch_add(1, std::memory_order_relaxed); }
  void Release() override {
    if (FCount.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    // References that come and go inside the destructor don't end the object once more.
    FCount.store(cDying, std::memory_order_relaxed);
    delete this;
  }

 protected:
  virtual ~TInterfaced() { detail::CountLiveObject(-1); }

  /// Asked when the object itself does not have the interface. A hit is handed out counted up.
  virtual bool QueryDelegated(const TGuid& /*iIid*/, void** /*oInterface*/) { return false; }

 private:
  static constexpr int64_t cDying = int64_t{1} << 32;

  // The maker's reference counts from the start: one that comes and goes inside the constructor
  // does not end the object.
  std::atomic<int64_t> FCount{1};
};

/// Makes an object behind interfaces and its first reference. Nothing else makes such objects.
template <class T, class... Args>
TIntf<T> MakeIntf(Args&&... iArgs) {
  return TIntf<T>::Adopt(new T(std::forward<Args>(iArgs)...));
}

}  // namespace kk
