#pragma once

#include "host/base/Guard.h"

namespace kk {

/// Runs the work and then, in any case, the clean-up. What the work raises passes on, and then a
/// failure of the clean-up is swallowed under the place's name; behind good work that passes on.
template <class Work, class Cleanup>
void WithCleanup(TStringView iPlace, Work&& iWork, Cleanup&& iCleanup) {
  struct TFailed {
    TStringView Place;
    Cleanup& Run;
    bool Armed = true;
    ~TFailed() {
      if (Armed) Guarded(Place, Run);
    }
  } failed{iPlace, iCleanup};
  iWork();
  failed.Armed = false;
  iCleanup();
}

}  // namespace kk
