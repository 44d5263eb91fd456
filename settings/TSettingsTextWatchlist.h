#pragma once

#include "host/base/TStringList.h"

namespace kk {

/// The preferences of the watch list as text, for the exchange between installations: a header, a
/// name, and a line key=value for each preference that goes along. Booleans are "-1" and "0", whole
/// numbers decimal. Paths, widths and what was used last are this installation's own and stay. Main
/// thread.
struct TSettingsTextWatchlist {
  /// The name in the header.
  static TString GetSettingsNode();
  /// What a user calls it.
  static TString GetSettingsName();
  /// Fills the list with the preferences as they stand in IniFile().
  static void GetSettings(TStringList& ioList);
  /// Stores each line that holds a key, anywhere in it and with regard to case: the key with its
  /// "=" is cut out, and the rest is the value. Other lines are passed over, and keys without a
  /// line keep their values. A value that can't be converted raises EConvertError: the lines before
  /// it are stored, and those behind it are not read.
  static void SetSettings(const TStringList& iList);
};

}  // namespace kk
