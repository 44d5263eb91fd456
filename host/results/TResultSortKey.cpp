#include "host/results/TResultSortKey.h"

namespace kk {

TResultSortKey TResultSortKey::OfText(TStringView iText) {
  TResultSortKey key;
  key.FIsEmpty = iText.empty();
  if (!key.FIsEmpty) key.FBytes = LocaleSortKey(iText);
  return key;
}

TResultSortKey TResultSortKey::OfNumber(double iNumber, TStringView iUnit) {
  TResultSortKey key = OfText(iUnit);
  key.FIsEmpty = false;
  key.FNumber = iNumber;
  return key;
}

TResultSortKey TResultSortKey::OfTime(TDateTime iTime) {
  return iTime.IsZero() ? TResultSortKey() : OfNumber(static_cast<double>(iTime.Ms()));
}

int TResultSortKey::Compare(const TResultSortKey& iOther) const {
  if (const int bytes = FBytes.compare(iOther.FBytes); bytes != 0) return bytes;
  if (FNumber < iOther.FNumber) return -1;
  return FNumber > iOther.FNumber ? 1 : 0;
}

}  // namespace kk
