#include "sources/page/TSchemaTime.h"

#include <algorithm>

#include "host/base/Exception.h"
#include "host/base/Guard.h"

namespace kk {

namespace {

constexpr int64_t cMsOfUnixEpoch = 25569 * TDateTime::cMsPerDay;  // 1970-01-01

// Reads a text from its front; once something did not fit, Failed stays true.
class TCursor {
 public:
  explicit TCursor(std::string_view iText) : FText(iText) {}

  int Number(size_t iDigits) {
    int number = 0;
    if (FText.size() < iDigits) FFailed = true;
    for (size_t i = 0; i < iDigits && !FFailed; ++i) {
      const char c = FText[i];
      if (c < '0' || c > '9') FFailed = true;
      number = number * 10 + (c - '0');
    }
    if (!FFailed) FText.remove_prefix(iDigits);
    return number;
  }
  bool Take(std::string_view iAnyOf) {
    if (FText.empty() || iAnyOf.find(FText[0]) == std::string_view::npos) return false;
    FText.remove_prefix(1);
    return true;
  }
  char Peek() const { return FText.empty() ? '\0' : FText[0]; }
  /// False once something did not fit: nothing more is taken then.
  bool NextIsDigit() const { return !FFailed && Peek() >= '0' && Peek() <= '9'; }
  bool AtEnd() const { return FText.empty(); }
  bool Failed() const { return FFailed; }

 private:
  std::string_view FText;
  bool FFailed = false;
};

void ReadTime(TCursor& ioCursor, TDateParts& oParts) {
  oParts.Hour = ioCursor.Number(2);
  ioCursor.Take(":");
  oParts.Minute = ioCursor.Number(2);
  oParts.Second = 0;
  if (ioCursor.Take(":") || ioCursor.NextIsDigit()) oParts.Second = ioCursor.Number(2);
  if (!ioCursor.Take(".,")) return;
  for (int unit = 100; ioCursor.NextIsDigit(); unit /= 10) oParts.Ms += ioCursor.Number(1) * unit;
}

// True if the text has an offset from UTC; in minutes then.
bool ReadOffset(TCursor& ioCursor, int& oMinutes) {
  oMinutes = 0;
  ioCursor.Take(" ");
  if (ioCursor.Take("Zz")) return true;
  const bool west = ioCursor.Peek() == '-';
  if (!ioCursor.Take("+-")) return false;
  oMinutes = ioCursor.Number(2) * 60;
  ioCursor.Take(":");
  if (!ioCursor.AtEnd()) oMinutes += ioCursor.Number(2);
  if (west) oMinutes = -oMinutes;
  return true;
}

TDateTime Read(std::string_view iText) {
  TCursor cursor(iText);
  TDateParts parts;
  parts.Year = cursor.Number(4);
  cursor.Take("-");
  parts.Month = cursor.Number(2);
  cursor.Take("-");
  parts.Day = cursor.Number(2);
  if (cursor.Failed() || parts.Year < 1970 || parts.Year > 2199) return {};
  if (cursor.AtEnd()) {
    parts.Hour = 23;
    parts.Minute = parts.Second = 59;
    return EncodeDateTime(parts);
  }
  if (!cursor.Take("Tt ")) return {};
  ReadTime(cursor, parts);
  int offset = 0;
  const bool hasOffset = ReadOffset(cursor, offset);
  if (cursor.Failed() || !cursor.AtEnd()) return {};
  // "24:00" is the end of the day.
  const bool endOfDay = parts.Hour == 24 && parts.Minute == 0 && parts.Second == 0;
  if (endOfDay) parts.Hour = 0;
  const TDateTime time = EncodeDateTime(parts).PlusMs(endOfDay ? TDateTime::cMsPerDay : 0);
  if (!hasOffset) return time;
  return UtcMsToLocal(time.Ms() - cMsOfUnixEpoch - offset * TDateTime::cMsPerMinute);
}

}  // namespace

TDateTime EndTimeFromText(std::string_view iText) {
  constexpr std::string_view cBlanks = " \t\r\n";
  const size_t begin = std::min(iText.find_first_not_of(cBlanks), iText.size());
  iText.remove_prefix(begin);
  iText = iText.substr(0, iText.find_last_not_of(cBlanks) + 1);
  TDateTime time;
  // Parts that name no day raise; such a text is none of the forms.
  Guarded(u"EndTimeFromText", [&] { time = Read(iText); });
  return time;
}

}  // namespace kk
