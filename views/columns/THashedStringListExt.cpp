#include "views/columns/THashedStringListExt.h"

namespace kk {

int THashedStringListExt::IndexOfValue(TStringView iValue) const {
  for (int i = 0; i < GetCount(); ++i) {
    const bool hasValue = Get(i).find(u'=') != TString::npos;
    if (hasValue && SameText(GetValueFromIndex(i), iValue)) return i;
  }
  return -1;
}

}  // namespace kk
