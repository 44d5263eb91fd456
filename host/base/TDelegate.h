#pragma once

#include <utility>

namespace kk {

class TObject;

template <class Signature>
class TDelegate;

/// An event: an object and one of its methods. Two events are equal if both are the same. Copying
/// allocates nothing, and the object is borrowed: who goes takes its events back first.
///   TNotifyEvent::Of<&TFoo::DoClick>(this)
template <class R, class... Args>
class TDelegate<R(Args...)> {
 public:
  TDelegate() = default;

  template <auto Method, class T>
  static TDelegate Of(T* iObject) {
    TDelegate result;
    result.FObject = iObject;
    result.FCall = [](void* iSelf, Args... iArgs) -> R {
      return (static_cast<T*>(iSelf)->*Method)(std::forward<Args>(iArgs)...);
    };
    return result;
  }

  explicit operator bool() const { return FCall != nullptr; }
  R operator()(Args... iArgs) const { return FCall(FObject, std::forward<Args>(iArgs)...); }

  friend bool operator==(const TDelegate&, const TDelegate&) = default;

 private:
  void* FObject = nullptr;
  R (*FCall)(void*, Args...) = nullptr;
};

/// The plain notification: it tells who sent it; the sender may be absent.
using TNotifyEvent = TDelegate<void(TObject*)>;

}  // namespace kk
