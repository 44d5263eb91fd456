#pragma once

#include "host/base/Exception.h"
#include "tests/support/TFakeSource.h"

namespace kk {

/// A result without an end, which can be made to fail when it is asked for it.
class TBrokenResult : public TFakeSearchResult {
 public:
  using TFakeSearchResult::TFakeSearchResult;
  bool HasEndTime() const override {
    if (Fails) throw Exception(u"Ende kaputt");
    return false;
  }

  bool Fails = false;
};

}  // namespace kk
