#include "apps/cli/TerminalText.h"

#include "host/base/Exception.h"

namespace kk {
namespace {

constexpr char16_t cEscape = 0x1B;
constexpr char16_t cBell = 0x07;
constexpr char16_t cCsi = 0x9B;
constexpr char16_t cStringTerminator = 0x9C;

// The text that OSC, DCS, SOS, PM and APC take along goes to the bell or to the terminator.
size_t EndOfControlString(TStringView iText, size_t iAt) {
  for (; iAt < iText.size(); ++iAt) {
    if (iText[iAt] == cBell || iText[iAt] == cStringTerminator) return iAt + 1;
    if (iText[iAt] == cEscape)
      return iAt + 1 < iText.size() && iText[iAt + 1] == u'\\' ? iAt + 2 : iAt;
  }
  return iAt;
}

// Parameters and intermediates, then one final character (ECMA-48, 5.4).
size_t EndOfControlSequence(TStringView iText, size_t iAt) {
  while (iAt < iText.size() && iText[iAt] >= 0x20 && iText[iAt] <= 0x3F) ++iAt;
  return iAt < iText.size() && iText[iAt] >= 0x40 && iText[iAt] <= 0x7E ? iAt + 1 : iAt;
}

size_t EndOfEscape(TStringView iText, size_t iAt) {
  if (iText[iAt] == cCsi) return EndOfControlSequence(iText, iAt + 1);
  if (++iAt == iText.size()) return iAt;
  if (iText[iAt] == u'[') return EndOfControlSequence(iText, iAt + 1);
  if (TStringView(u"]PX^_").find(iText[iAt]) != TStringView::npos) {
    return EndOfControlString(iText, iAt + 1);
  }
  return iText[iAt] >= 0x20 && iText[iAt] <= 0x7E ? iAt + 1 : iAt;
}

bool TurnsDirection(char16_t iChar) {
  return (iChar >= 0x202A && iChar <= 0x202E) || (iChar >= 0x2066 && iChar <= 0x2069) ||
         iChar == 0x200E || iChar == 0x200F || iChar == 0x061C;
}

bool IsBreak(char16_t iChar) {
  return (iChar >= 0x09 && iChar <= 0x0D) || iChar == 0x85 || iChar == 0x2028 || iChar == 0x2029;
}

}  // namespace

TString ForTerminal(TStringView iText) {
  TString result;
  result.reserve(iText.size());
  for (size_t at = 0; at < iText.size();) {
    const char16_t c = iText[at];
    if (c == cEscape || c == cCsi) {
      at = EndOfEscape(iText, at);
      continue;
    }
    ++at;
    if (c == 0x0D && at < iText.size() && iText[at] == 0x0A) continue;
    if (!TurnsDirection(c)) result += IsBreak(c) ? u' ' : c;
  }
  return WithoutControlCharacters(result);
}

TString ForTerminal(const std::exception& iException) {
  return ForTerminal(ToSingleLine(MessageOf(iException)));
}

TString Counted(size_t iCount, TStringView iSingular, TStringView iPlural) {
  return Format(u"%d %s", {iCount, iCount == 1 ? iSingular : iPlural});
}

}  // namespace kk
