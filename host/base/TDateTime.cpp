#include "host/base/TDateTime.h"

#include <unicode/calendar.h>
#include <unicode/datefmt.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <chrono>
#include <cmath>
#include <memory>
#include <optional>

#include "host/base/Exception.h"
#include "host/base/TLocale.h"

namespace kk {

namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr sys_days cEpoch =
    sys_days{std::chrono::year{1899} / std::chrono::December / std::chrono::day{30}};
// 1970-01-01 on our scale, read as if it were a local time.
constexpr int64_t cUnixEpochMs = -cEpoch.time_since_epoch().count() * TDateTime::cMsPerDay;

// All our days are of the Gregorian calendar (ISO 8601), those before its introduction, too.
constexpr UDate cAlwaysGregorian = -1.0e17;

// The years 1 to 9999.
constexpr TDateTime cFirst = TDateTime::FromMs(
    (sys_days{std::chrono::year{1} / 1 / 1} - cEpoch).count() * TDateTime::cMsPerDay);
constexpr TDateTime cBehindLast = TDateTime::FromMs(
    (sys_days{std::chrono::year{10000} / 1 / 1} - cEpoch).count() * TDateTime::cMsPerDay);

// ICU works on moments, not on local times; the formats run in UTC, on the local time's own
// figures.
double AsIcuDate(TDateTime iValue) { return static_cast<double>(iValue.Ms() - cUnixEpochMs); }

TDateTime FromIcuDate(double iDate) {
  return TDateTime::FromMs(static_cast<int64_t>(std::llround(iDate)) + cUnixEpochMs);
}

std::unique_ptr<icu::DateFormat> MakeFormat(icu::DateFormat::EStyle iDate,
                                            icu::DateFormat::EStyle iTime) {
  std::unique_ptr<icu::DateFormat> format(
      icu::DateFormat::createDateTimeInstance(iDate, iTime, icu::Locale(LocaleName().c_str())));
  if (!format) throw EConvertError(u"Die Datumsformate der Sprache fehlen");
  UErrorCode status = U_ZERO_ERROR;
  auto calendar = std::make_unique<icu::GregorianCalendar>(
      icu::TimeZone::getGMT()->clone(), icu::Locale(LocaleName().c_str()), status);
  calendar->setGregorianChange(cAlwaysGregorian, status);
  if (U_FAILURE(status)) throw EConvertError(u"Der Kalender der Sprache fehlt");
  format->adoptCalendar(calendar.release());
  format->setLenient(false);
  return format;
}

TString FormatLocale(icu::DateFormat::EStyle iDate, icu::DateFormat::EStyle iTime,
                     TDateTime iValue) {
  icu::UnicodeString text;
  MakeFormat(iDate, iTime)->format(AsIcuDate(iValue), text);
  return TString(text.getBuffer(), static_cast<size_t>(text.length()));
}

bool ParseLocale(icu::DateFormat::EStyle iDate, icu::DateFormat::EStyle iTime, TStringView iText,
                 TDateTime& oValue) {
  const icu::UnicodeString text(iText.data(), static_cast<int32_t>(iText.size()));
  icu::ParsePosition position(0);
  const UDate date = MakeFormat(iDate, iTime)->parse(text, position);
  if (position.getIndex() != text.length() || position.getErrorIndex() >= 0) return false;
  const TDateTime value = FromIcuDate(date);
  if (value < cFirst || value >= cBehindLast) return false;
  oValue = value;
  return true;
}

// A run of one pattern letter, such as the "yyyy" at the start of "yyyy-mm".
size_t RunLength(TStringView iFormat, size_t iFrom) {
  const size_t end = iFormat.find_first_not_of(iFormat[iFrom], iFrom);
  return std::min(end, iFormat.size()) - iFrom;
}

int* PartOf(TDateParts& ioParts, char16_t iLetter) {
  switch (iLetter) {
    case u'y':
      return &ioParts.Year;
    case u'm':
      return &ioParts.Month;
    case u'd':
      return &ioParts.Day;
    case u'h':
      return &ioParts.Hour;
    case u'n':
      return &ioParts.Minute;
    case u's':
      return &ioParts.Second;
    case u'z':
      return &ioParts.Ms;
    default:
      return nullptr;
  }
}

std::optional<TDateTime> TryEncode(const TDateParts& iParts) {
  const auto within = [](int iValue, int iEnd) { return iValue >= 0 && iValue < iEnd; };
  // First the bounds: the calendar's types hold small numbers and would wrap around.
  if (iParts.Year < 1 || iParts.Year > 9999 || !within(iParts.Month, 13) ||
      !within(iParts.Day, 32)) {
    return {};
  }
  const std::chrono::year_month_day date{std::chrono::year{iParts.Year},
                                         std::chrono::month{static_cast<unsigned>(iParts.Month)},
                                         std::chrono::day{static_cast<unsigned>(iParts.Day)}};
  if (!date.ok() || !within(iParts.Hour, 24) || !within(iParts.Minute, 60) ||
      !within(iParts.Second, 60) || !within(iParts.Ms, 1000)) {
    return {};
  }
  const int64_t day = (sys_days{date} - cEpoch).count();
  return TDateTime::FromMs(day * TDateTime::cMsPerDay + iParts.Hour * TDateTime::cMsPerHour +
                           iParts.Minute * TDateTime::cMsPerMinute +
                           iParts.Second * TDateTime::cMsPerSecond + iParts.Ms);
}

std::optional<int> ReadDigits(TStringView iText) {
  int number = 0;
  for (const char16_t digit : iText) {
    if (digit < u'0' || digit > u'9') return {};
    number = number * 10 + (digit - u'0');
  }
  return number;
}

std::optional<TDateTime> TryEval(TStringView iFormat, TStringView iText) {
  TDateParts parts;
  size_t at = 0;
  for (size_t i = 0; i < iFormat.size();) {
    int* part = PartOf(parts, iFormat[i]);
    if (part == nullptr) {
      if (at >= iText.size() || iText[at++] != iFormat[i++]) return {};
      continue;
    }
    const size_t length = RunLength(iFormat, i);
    if (at + length > iText.size()) return {};
    const std::optional<int> number = ReadDigits(iText.substr(at, length));
    if (!number) return {};
    *part = *number;
    i += length;
    at += length;
  }
  return at == iText.size() ? TryEncode(parts) : std::nullopt;
}

}  // namespace

TDateTime::TDateTime(double iDays) : FMs(std::llround(iDays * static_cast<double>(cMsPerDay))) {}

TDateParts DecodeDateTime(TDateTime iValue) {
  int64_t day = iValue.Ms() / TDateTime::cMsPerDay;
  int64_t rest = iValue.Ms() % TDateTime::cMsPerDay;
  if (rest < 0) {
    --day;
    rest += TDateTime::cMsPerDay;
  }
  const std::chrono::year_month_day date(cEpoch + days(day));
  TDateParts parts;
  parts.Year = static_cast<int>(date.year());
  parts.Month = static_cast<int>(static_cast<unsigned>(date.month()));
  parts.Day = static_cast<int>(static_cast<unsigned>(date.day()));
  parts.Hour = static_cast<int>(rest / TDateTime::cMsPerHour);
  parts.Minute = static_cast<int>(rest / TDateTime::cMsPerMinute % 60);
  parts.Second = static_cast<int>(rest / TDateTime::cMsPerSecond % 60);
  parts.Ms = static_cast<int>(rest % TDateTime::cMsPerSecond);
  return parts;
}

TDateTime EncodeDateTime(const TDateParts& iParts) {
  const std::optional<TDateTime> value = TryEncode(iParts);
  if (!value) throw EConvertError(u"Ungültige Angabe für Datum oder Uhrzeit");
  return *value;
}

TDateTime DateTimeStrEval(TStringView iFormat, TStringView iText) {
  const std::optional<TDateTime> value = TryEval(iFormat, iText);
  if (!value) throw EConvertError(Format(u"'%s' ist kein gültiges Datum", {iText}));
  return *value;
}

TString FormatDateTime(TStringView iFormat, TDateTime iValue) {
  TDateParts parts = DecodeDateTime(iValue);
  TString text;
  for (size_t i = 0; i < iFormat.size();) {
    const int* part = PartOf(parts, iFormat[i]);
    if (part == nullptr) {
      text += iFormat[i++];
      continue;
    }
    const size_t length = RunLength(iFormat, i);
    TString digits = IntToStr(*part);
    if (digits.size() < length) digits.insert(0, length - digits.size(), u'0');
    text += digits;
    i += length;
  }
  return text;
}

TString DateTimeToIso(TDateTime iValue) {
  const bool whole = iValue.Ms() % TDateTime::cMsPerSecond == 0;
  return FormatDateTime(whole ? u"yyyy-mm-ddThh:nn:ss" : u"yyyy-mm-ddThh:nn:ss.zzz", iValue);
}

bool TryIsoToDateTime(TStringView iText, TDateTime& oValue) {
  TString text(iText);
  if (text.size() > 10 && text[10] == u' ') text[10] = u'T';
  const TStringView format = text.size() > 19 ? u"yyyy-mm-ddThh:nn:ss.zzz" : u"yyyy-mm-ddThh:nn:ss";
  const std::optional<TDateTime> value = TryEval(format, text);
  oValue = value.value_or(TDateTime());
  return value.has_value();
}

TString DateTimeToStr(TDateTime iValue) {
  return FormatLocale(icu::DateFormat::kMedium, icu::DateFormat::kMedium, iValue);
}

TString ShortDateToStr(TDateTime iValue) {
  return FormatLocale(icu::DateFormat::kMedium, icu::DateFormat::kNone, iValue);
}

TString LongDateToStr(TDateTime iValue) {
  return FormatLocale(icu::DateFormat::kFull, icu::DateFormat::kNone, iValue);
}

TString LongTimeToStr(TDateTime iValue) {
  return FormatLocale(icu::DateFormat::kNone, icu::DateFormat::kMedium, iValue);
}

bool TryStrToDateTime(TStringView iText, TDateTime& oValue) {
  oValue = TDateTime();
  const TString text = Trim(iText);
  if (text.empty()) return false;
  return ParseLocale(icu::DateFormat::kMedium, icu::DateFormat::kMedium, text, oValue) ||
         ParseLocale(icu::DateFormat::kMedium, icu::DateFormat::kNone, text, oValue);
}

int64_t LocalToUtcMs(TDateTime iLocal) {
  UErrorCode status = U_ZERO_ERROR;
  icu::GregorianCalendar calendar(status);
  calendar.setGregorianChange(cAlwaysGregorian, status);
  calendar.setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
  calendar.setSkippedWallTimeOption(UCAL_WALLTIME_LAST);
  const TDateParts parts = DecodeDateTime(iLocal);
  calendar.clear();
  calendar.set(parts.Year, parts.Month - 1, parts.Day, parts.Hour, parts.Minute, parts.Second);
  const UDate date = calendar.getTime(status);
  if (U_FAILURE(status)) throw EConvertError(u"Die Zeitzone des Rechners ist nicht bestimmbar");
  return static_cast<int64_t>(date) + parts.Ms;
}

TDateTime UtcMsToLocal(int64_t iUtcMs) {
  static thread_local std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createDefault());
  int32_t raw = 0;
  int32_t saving = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone->getOffset(static_cast<UDate>(iUtcMs), false, raw, saving, status);
  return TDateTime::FromMs(iUtcMs + raw + saving + cUnixEpochMs);
}

}  // namespace kk
