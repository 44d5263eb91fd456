#include "views/columns/THashedStringListExt.h"

namespace kk {

int THashedStringListExt::IndexOfValue(TStringView iValue, int iFrom) const {
  for (int i = iFrom; i < GetCount(); ++i) {
    const TStringView line = Get(i);
    const size_t at = line.find(u'=');
    if (at != TStringView::npos && SameText(line.substr(at + 1), iValue)) return i;
  }
  return -1;
}

}  // namespace kk
