#pragma once

namespace kk {

/// Puts a service into its place in the process for the object's own life; then the one before is
/// back. It works with every function that installs a borrowed service and answers the one before.
template <class T>
class TInstalled {
 public:
  TInstalled(T* (*iSet)(T*), T* iService) : FSet(iSet), FBefore(iSet(iService)) {}
  ~TInstalled() { FSet(FBefore); }
  TInstalled(const TInstalled&) = delete;
  TInstalled& operator=(const TInstalled&) = delete;

 private:
  T* (*FSet)(T*);
  T* FBefore;
};

}  // namespace kk
