#pragma once

#include <compare>
#include <string>

#include "host/base/TDateTime.h"

namespace kk {

/// By what a cell sorts: a text in the order of the user's language, a number, or nothing at all,
/// which stands behind everything else in both directions.
class TResultSortKey {
 public:
  TResultSortKey() = default;
  /// An empty text is nothing.
  static TResultSortKey OfText(TStringView iText);
  /// Numbers of different units stand apart from each other.
  static TResultSortKey OfNumber(double iNumber, TStringView iUnit = {});
  /// Zero is nothing.
  static TResultSortKey OfTime(TDateTime iTime);

  bool IsEmpty() const { return FIsEmpty; }
  /// Ascending, of two that are not empty: below, equal to or above zero.
  int Compare(const TResultSortKey& iOther) const;

 private:
  bool FIsEmpty = true;
  double FNumber = 0;
  std::string FBytes;  // what the language's rules made of the text
};

}  // namespace kk
