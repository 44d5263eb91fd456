#pragma once

#include "host/base/THashedStringList.h"

namespace kk {

/// Adds the look-up of a value.
class THashedStringListExt : public THashedStringList {
 public:
  /// The first line name=value with this value, without regard to case; -1 if there is none.
  int IndexOfValue(TStringView iValue) const { return Find(kValue, iValue); }
};

}  // namespace kk
