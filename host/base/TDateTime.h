#pragma once

#include <compare>
#include <cstdint>

#include "host/base/TString.h"

namespace kk {

/// A moment in local time: days since 1899-12-30, the time of day as the fraction. It is held as
/// whole milliseconds, so that a value written as text reads back equal. Zero means "never".
class TDateTime {
 public:
  static constexpr int64_t cMsPerSecond = 1000;
  static constexpr int64_t cMsPerMinute = 60 * cMsPerSecond;
  static constexpr int64_t cMsPerHour = 60 * cMsPerMinute;
  static constexpr int64_t cMsPerDay = 24 * cMsPerHour;

  constexpr TDateTime() = default;
  /// Days are rounded to the next millisecond.
  explicit TDateTime(double iDays);
  static constexpr TDateTime FromMs(int64_t iMs) {
    TDateTime result;
    result.FMs = iMs;
    return result;
  }

  double Days() const { return static_cast<double>(FMs) / static_cast<double>(cMsPerDay); }
  constexpr int64_t Ms() const { return FMs; }
  constexpr bool IsZero() const { return FMs == 0; }

  /// The moment so many milliseconds later.
  constexpr TDateTime PlusMs(int64_t iMs) const { return FromMs(FMs + iMs); }

  friend constexpr auto operator<=>(const TDateTime&, const TDateTime&) = default;  // NOLINT

 private:
  int64_t FMs = 0;
};

/// The parts of a moment; years 1 to 9999, months and days from 1.
struct TDateParts {
  int Year = 1899, Month = 12, Day = 30, Hour = 0, Minute = 0, Second = 0, Ms = 0;
};
TDateParts DecodeDateTime(TDateTime iValue);
/// Parts that name no day or no time of day raise EConvertError.
TDateTime EncodeDateTime(const TDateParts& iParts);

/// Parses by a pattern of yyyy, mm, dd, hh, nn, ss, zzz and fixed characters between them, such as
/// "yyyy-mm-dd hh:nn:ss". Text that does not fit raises EConvertError.
TDateTime DateTimeStrEval(TStringView iFormat, TStringView iText);
/// Writes by the same patterns.
TString FormatDateTime(TStringView iFormat, TDateTime iValue);

/// Date and time, local, in ISO 8601 with milliseconds only where there are some:
/// "2026-11-20T18:30:00" or "2026-11-20T18:30:00.250".
TString DateTimeToIso(TDateTime iValue);
/// Reads that form; a blank may stand for the "T". False for any other text; 0 then.
bool TryIsoToDateTime(TStringView iText, TDateTime& oValue);

/// In the user's locale (ICU): date and time to the second, and its parts; a
/// short date is the one that stands in date and time.
TString DateTimeToStr(TDateTime iValue);
TString ShortDateToStr(TDateTime iValue);
TString LongDateToStr(TDateTime iValue);
TString LongTimeToStr(TDateTime iValue);
/// Reads what DateTimeToStr writes, and a date alone. False for any other text; 0 then.
bool TryStrToDateTime(TStringView iText, TDateTime& oValue);

/// Between local time and UTC (milliseconds since 1970), in the machine's time zone. In autumn,
/// when the clocks go back, an hour's local times occur twice and mean the first; in spring, a time
/// that is left out means the same distance behind the change.
int64_t LocalToUtcMs(TDateTime iLocal);
TDateTime UtcMsToLocal(int64_t iUtcMs);

}  // namespace kk
