#include "host/delivery/notifier/TNotificationText.h"

namespace kk {

namespace {

constexpr char16_t cReplacement = 0xFFFD;

// The code points that Unicode keeps for programs' own use, which the bus does not take.
bool IsNoncharacter(char32_t iCode) {
  return (iCode >= 0xFDD0 && iCode <= 0xFDEF) || (iCode & 0xFFFE) == 0xFFFE;
}

bool IsHighSurrogate(char16_t iUnit) { return (iUnit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(char16_t iUnit) { return (iUnit & 0xFC00) == 0xDC00; }

TString WithoutNoncharacters(TStringView iText) {
  TString text;
  for (size_t i = 0; i < iText.size(); ++i) {
    const char16_t unit = iText[i];
    const bool isPair =
        IsHighSurrogate(unit) && i + 1 < iText.size() && IsLowSurrogate(iText[i + 1]);
    const char32_t code =
        isPair ? 0x10000 + ((unit & 0x3FFU) << 10) + (iText[i + 1] & 0x3FFU) : char32_t{unit};
    if (IsNoncharacter(code)) {
      text += cReplacement;
    } else {
      text += iText.substr(i, isPair ? 2 : 1);
    }
    if (isPair) ++i;
  }
  return text;
}

TString Cut(TStringView iText, size_t iMax) {
  if (iText.size() <= iMax) return TString(iText);
  size_t end = iMax - 1;
  if (IsHighSurrogate(iText[end - 1])) --end;
  return TString(iText.substr(0, end)) + u"…";
}

// A field of any length, bounded before anything else is done to it.
TString Line(TStringView iText, size_t iMax) {
  return Cut(
      Trim(WithoutControlCharacters(WithoutNoncharacters(ToSingleLine(Cut(iText, 2 * iMax))))),
      iMax);
}

TString Lines(TStringView iText, size_t iMax) {
  const TString text = ReplaceAll(ReplaceAll(Cut(iText, iMax), u"\r\n", u"\n"), u"\r", u"\n");
  TString lines;
  for (const TString& line : Split(text, u'\n')) {
    if (!lines.empty()) lines += u'\n';
    lines += WithoutControlCharacters(WithoutNoncharacters(line));
  }
  return Trim(lines);
}

TString WholeSummary(const TNotification& iNotification) {
  const TString title = Line(iNotification.Title, TNotificationText::cMaxSummary);
  const TString caption = Line(iNotification.Caption, TNotificationText::cMaxCaption);
  if (title.empty() || caption.empty()) return title + caption;
  return title + u": " + caption;
}

void AddParagraph(TString& ioText, const TString& iParagraph) {
  if (!ioText.empty() && !iParagraph.empty()) ioText += u'\n';
  ioText += iParagraph;
}

}  // namespace

std::string TNotificationText::Summary(const TNotification& iNotification) {
  const TString summary = Cut(WholeSummary(iNotification), cMaxSummary);
  return ToUtf8(summary.empty() ? u"Kaufkobolde" : summary);
}

std::string TNotificationText::Body(const TNotification& iNotification, bool iMarkup, bool iLink) {
  TString body;
  if (WholeSummary(iNotification).size() > cMaxSummary)
    body = Line(iNotification.Caption, cMaxCaption);
  AddParagraph(body, Lines(iNotification.Text, cMaxText));
  if (iLink) AddParagraph(body, Line(iNotification.Link, cMaxLink));
  if (iMarkup) {
    body = ReplaceAll(body, u"&", u"&amp;");
    body = ReplaceAll(body, u"<", u"&lt;");
    body = ReplaceAll(body, u">", u"&gt;");
  }
  return ToUtf8(body);
}

std::string TNotificationText::LinkText(const TNotification& iNotification) {
  const TString text = Line(iNotification.LinkText, cMaxLinkText);
  return ToUtf8(text.empty() ? u"Öffnen" : text);
}

}  // namespace kk
