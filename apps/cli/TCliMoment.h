#pragma once

#include "host/base/TDateTime.h"

namespace kk {

/// Times as a user types them on the command line.
struct TCliMoment {
  /// "90s", "10m", "2h", "1d" and what is put together of them, the great before the small and each
  /// once: "1h30m". Up to ten years. False for any other text.
  static bool TryParseSpan(TStringView iText, int64_t& oSeconds);

  /// "18:30" and "18:30:15", which mean the next such time after iNow; with a day before it,
  /// "24.12.2026 18:30", "2026-12-24T18:30" or "2026-12-24 18:30:15". Whole seconds, local time.
  /// False for any other text.
  static bool TryParse(TStringView iText, TDateTime iNow, TDateTime& oMoment);
};

}  // namespace kk
