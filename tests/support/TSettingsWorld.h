#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/TTempFolder.h"
#include "tests/support/TTestIniFile.h"

namespace kk {

using TLines = std::vector<std::string>;

/// A settings file of the test's own, and what stands in the section "Watchlist" of it.
class TSettingsWorld : public testing::Test {
 protected:
  static TLines LinesOf(const TStringList& iList) {
    TLines lines;
    for (const TString& line : iList.Lines()) lines.push_back(ToUtf8(line));
    return lines;
  }
  /// The section's lines, in file order.
  TLines Stored() const {
    TStringList lines;
    FFile.ReadSectionValues(u"Watchlist", lines);
    return LinesOf(lines);
  }
  /// As it stands in the file; "-" if it does not.
  TString Stored(TStringView iKey) const { return FFile.ReadString(u"Watchlist", iKey, u"-"); }
  void Store(TStringView iKey, TStringView iValue) {
    FFile.WriteString(u"Watchlist", iKey, iValue);
  }
  /// A settings file as it is at the beginning.
  void Forget() {
    TStringList keys;
    FFile.ReadSection(u"Watchlist", keys);
    FFile.DeleteKeys(u"Watchlist", keys);
  }

  TTempFolder FFolder{true};
  TTestIniFile FFile{FFolder.File(u"settings.ini")};
};

}  // namespace kk
