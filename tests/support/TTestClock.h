#pragma once

#include "host/base/TClock.h"

namespace kk {

/// A clock that stands still until the test turns it: 2026-11-20, 18:30 at first.
class TTestClock : public IClock {
 public:
  TTestClock() : FBefore(SetClock(this)) {}
  ~TTestClock() override { SetClock(FBefore); }

  TDateTime Now() const override { return FNow; }
  TDateTime ExactNow() const override { return FNow.PlusMs(FExactOffset); }

  void Set(TDateTime iNow) { FNow = iNow; }
  void Advance(int64_t iMs) { FNow = FNow.PlusMs(iMs); }
  /// How far the host's corrected clock is ahead of the machine's.
  void SetExactOffset(int64_t iMs) { FExactOffset = iMs; }

 private:
  TDateTime FNow = EncodeDateTime({2026, 11, 20, 18, 30, 0, 0});
  int64_t FExactOffset = 0;
  IClock* FBefore;
};

}  // namespace kk
