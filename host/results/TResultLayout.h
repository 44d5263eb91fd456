#pragma once

#include "host/results/TResultTable.h"

namespace kk {

/// How a user has laid out a table, as one line of text for the settings file: sort column and
/// direction, and each column's width and whether it shows, in the order of their places, such as
/// "+{1CE7...}|{1CE7...}:300:1|{A55A...}:100:0". Main thread.
class TResultLayout {
 public:
  static TString TextOf(const TResultTable& iTable);
  /// Columns that the text does not know keep their look and, as far as they can, their places;
  /// parts that can't be understood, or name a column that is not there, are passed over. One
  /// column at least shows.
  static void Apply(TStringView iText, TResultTable& ioTable);
};

}  // namespace kk
