#pragma once

#include "host/base/TString.h"

namespace kk {

/// The program's version, as the texts that go to the outside name it.
struct TVersionHelper {
  static constexpr int cMainVersion = 7;
  static constexpr int cSubVersion = 0;

  /// Replaces "%MV" by the main version and "%SV" by the sub-version with the dot before it: the
  /// texts put both side by side, and "%MV%SV" reads "7.0". All else stays. Any thread.
  static TString ReplaceVersionParams(TStringView iText);
};

}  // namespace kk
