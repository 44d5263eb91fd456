#pragma once

namespace kk {

/// An update bracket as an object: open while it lives. T has BeginUpdate and EndUpdate.
template <class T>
class TUpdating {
 public:
  explicit TUpdating(T& ioObject) : FObject(ioObject) { FObject.BeginUpdate(); }
  ~TUpdating() { FObject.EndUpdate(); }
  TUpdating(const TUpdating&) = delete;
  TUpdating& operator=(const TUpdating&) = delete;

 private:
  T& FObject;
};

}  // namespace kk
