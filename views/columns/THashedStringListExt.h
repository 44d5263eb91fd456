#pragma once

#include "host/base/THashedStringList.h"

namespace kk {

/// Adds the look-up of a value, which the hash does not help.
class THashedStringListExt : public THashedStringList {
 public:
  /// The first line name=value with this value, without regard to case; -1 if there is none.
  /// iFrom: the line where the search begins.
  int IndexOfValue(TStringView iValue, int iFrom = 0) const;
};

}  // namespace kk
