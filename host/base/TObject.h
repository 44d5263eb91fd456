#pragma once

namespace kk {

/// The root of all classes that can be the sender of an event or are destroyed through a base.
class TObject {
 public:
  TObject() = default;
  TObject(const TObject&) = delete;
  TObject& operator=(const TObject&) = delete;
  virtual ~TObject() = default;
};

}  // namespace kk
