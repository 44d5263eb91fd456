#include "apps/cli/TCliMoment.h"

#include <array>

#include "host/base/Guard.h"

namespace kk {
namespace {

constexpr int64_t cLongestSpan = int64_t{10} * 366 * 24 * 60 * 60;
constexpr size_t cMaxDigits = 9;

struct TUnit {
  char16_t Letter;
  int64_t Seconds;
};
constexpr std::array<TUnit, 4> cUnits = {{{u'd', 86400}, {u'h', 3600}, {u'm', 60}, {u's', 1}}};

constexpr auto cTimes = std::to_array<TStringView>({u"hh:nn", u"hh:nn:ss"});
constexpr auto cDaysWithTimes = std::to_array<TStringView>(
    {u"dd.mm.yyyy hh:nn", u"dd.mm.yyyy hh:nn:ss", u"yyyy-mm-dd hh:nn", u"yyyy-mm-dd hh:nn:ss",
     u"yyyy-mm-ddThh:nn", u"yyyy-mm-ddThh:nn:ss"});

bool IsDigit(char16_t iChar) { return iChar >= u'0' && iChar <= u'9'; }

// "1.2.2026 8:30" is "01.02.2026 08:30".
TString WithTwoDigits(TStringView iText) {
  TString result;
  for (size_t i = 0; i < iText.size(); ++i) {
    const bool begins = i == 0 || !IsDigit(iText[i - 1]);
    const bool ends = i + 1 == iText.size() || !IsDigit(iText[i + 1]);
    if (IsDigit(iText[i]) && begins && ends) result += u'0';
    result += iText[i];
  }
  return result;
}

template <size_t N>
bool TryFormats(const std::array<TStringView, N>& iFormats, TStringView iText, TDateTime& oMoment) {
  for (const TStringView format : iFormats) {
    if (Guarded(u"TCliMoment", [&] { oMoment = DateTimeStrEval(format, iText); })) return true;
  }
  return false;
}

}  // namespace

bool TCliMoment::TryParseSpan(TStringView iText, int64_t& oSeconds) {
  int64_t seconds = 0;
  size_t unit = 0;
  size_t at = 0;
  while (at < iText.size()) {
    const size_t begin = at;
    int64_t number = 0;
    for (; at < iText.size() && IsDigit(iText[at]); ++at) {
      if (at - begin == cMaxDigits) return false;
      number = number * 10 + (iText[at] - u'0');
    }
    if (at == begin || at == iText.size()) return false;
    while (unit < cUnits.size() && cUnits[unit].Letter != iText[at]) ++unit;
    if (unit == cUnits.size()) return false;
    seconds += number * cUnits[unit++].Seconds;
    ++at;
  }
  oSeconds = seconds;
  return !iText.empty() && seconds <= cLongestSpan;
}

bool TCliMoment::TryParse(TStringView iText, TDateTime iNow, TDateTime& oMoment) {
  const TString text = WithTwoDigits(Trim(iText));
  if (TryFormats(cDaysWithTimes, text, oMoment)) return true;
  if (!TryFormats(cTimes, text, oMoment)) return false;
  TDateParts day = DecodeDateTime(iNow);
  const TDateParts time = DecodeDateTime(oMoment);
  day.Hour = time.Hour;
  day.Minute = time.Minute;
  day.Second = time.Second;
  day.Ms = 0;
  oMoment = EncodeDateTime(day);
  if (oMoment <= iNow) oMoment = oMoment.PlusMs(TDateTime::cMsPerDay);
  return true;
}

}  // namespace kk
