#include "host/common/TFastWriterBaseSimpleXML.h"

#include <algorithm>

#include "host/base/Exception.h"
#include "host/common/TSimpleXMLDocument.h"

namespace kk {

namespace {

bool IsHighSurrogate(char16_t iUnit) { return (iUnit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(char16_t iUnit) { return (iUnit & 0xFC00) == 0xDC00; }

// XML 1.0, section 2.2; surrogates aside.
bool IsHeld(char32_t iChar) {
  if (iChar < 0x20) return iChar == U'\t' || iChar == U'\r' || iChar == U'\n';
  return iChar != 0xFFFE && iChar != 0xFFFF;
}

constexpr std::string_view cByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view cDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";

void AppendUtf8(std::string& ioBytes, char32_t iChar) {
  const auto tail = [&](int iShift) {
    ioBytes += static_cast<char>(0x80 | ((iChar >> iShift) & 0x3F));
  };
  if (iChar < 0x80) {
    ioBytes += static_cast<char>(iChar);
  } else if (iChar < 0x800) {
    ioBytes += static_cast<char>(0xC0 | (iChar >> 6));
    tail(0);
  } else if (iChar < 0x10000) {
    ioBytes += static_cast<char>(0xE0 | (iChar >> 12));
    tail(6);
    tail(0);
  } else {
    ioBytes += static_cast<char>(0xF0 | (iChar >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

// The characters that stand for themselves (XML 1.0, production 2, less those that have a meaning
// in markup or, as line breaks, are changed by a reader).
void AppendChar(std::string& ioBytes, char32_t iChar) {
  switch (iChar) {
    case U'&':
      ioBytes += "&amp;";
      return;
    case U'<':
      ioBytes += "&lt;";
      return;
    case U'>':
      ioBytes += "&gt;";
      return;
    case U'\r':
      ioBytes += "&#13;";
      return;
    case U'\n':
      ioBytes += "&#10;";
      return;
    default:
      break;
  }
  if (IsHeld(iChar)) AppendUtf8(ioBytes, iChar);
}

// Nearly all that is written: one byte each, and without a meaning in markup.
bool IsPlain(char16_t iUnit) {
  return iUnit >= 0x20 && iUnit < 0x80 && iUnit != u'&' && iUnit != u'<' && iUnit != u'>';
}

// From the text's start on; answers how many.
size_t AppendPlain(std::string& ioBytes, TStringView iText) {
  const auto end = std::find_if_not(iText.begin(), iText.end(), IsPlain);
  const auto count = static_cast<size_t>(end - iText.begin());
  const size_t size = ioBytes.size();
  ioBytes.resize(size + count);
  std::transform(iText.begin(), end, ioBytes.begin() + static_cast<ptrdiff_t>(size),
                 [](char16_t iUnit) { return static_cast<char>(iUnit); });
  return count;
}

void AppendEscaped(std::string& ioBytes, TStringView iText) {
  for (size_t i = AppendPlain(ioBytes, iText); i < iText.size(); ++i) {
    const char16_t unit = iText[i];
    if (IsPlain(unit)) {
      i += AppendPlain(ioBytes, iText.substr(i)) - 1;
      continue;
    }
    if (IsHighSurrogate(unit) && i + 1 < iText.size() && IsLowSurrogate(iText[i + 1])) {
      const char16_t low = iText[++i];
      AppendUtf8(ioBytes, 0x10000 + ((unit & 0x3FFu) << 10) + (low & 0x3FFu));
    } else if (!IsHighSurrogate(unit) && !IsLowSurrogate(unit)) {
      AppendChar(ioBytes, unit);
    }
  }
}

void AppendTag(std::string& ioBytes, std::string_view iBegin, TStringView iName) {
  ioBytes += iBegin;
  const size_t plain = AppendPlain(ioBytes, iName);
  for (const char16_t unit : iName.substr(plain)) AppendUtf8(ioBytes, unit);
  ioBytes += '>';
}

}  // namespace

TString TFastWriterBaseSimpleXML::HeldText(TStringView iText) {
  TString held;
  for (size_t i = 0; i < iText.size(); ++i) {
    const char16_t unit = iText[i];
    if (IsHighSurrogate(unit) && i + 1 < iText.size() && IsLowSurrogate(iText[i + 1])) {
      held.append(iText.substr(i++, 2));
    } else if (!IsHighSurrogate(unit) && !IsLowSurrogate(unit) && IsHeld(unit)) {
      held += unit;
    }
  }
  return held;
}

void TFastWriterBaseSimpleXML::Clear() {
  FText.clear();
  FOpen.clear();
}

void TFastWriterBaseSimpleXML::AppendIndent() { FText.append(FOpen.size() * 2, ' '); }

void TFastWriterBaseSimpleXML::BeginNode(TStringView iName) {
  AppendIndent();
  AppendTag(FText, "<", iName);
  FText += "\r\n";
  FOpen.emplace_back(iName);
}

void TFastWriterBaseSimpleXML::EndNode(TStringView iName) {
  if (FOpen.empty() || FOpen.back() != iName) {
    throw Exception(Format(u"Das XML-Element %s ist nicht das zuletzt begonnene", {iName}));
  }
  FOpen.pop_back();
  AppendIndent();
  AppendTag(FText, "</", iName);
  FText += "\r\n";
}

void TFastWriterBaseSimpleXML::AppendLine(TStringView iName, TStringView iText) {
  AppendIndent();
  AppendTag(FText, "<", iName);
  AppendEscaped(FText, iText);
  AppendTag(FText, "</", iName);
  FText += "\r\n";
}

void TFastWriterBaseSimpleXML::WriteString(TStringView iName, TStringView iValue,
                                           TStringView iDefault) {
  if (iValue != iDefault) AppendLine(iName, iValue);
}

void TFastWriterBaseSimpleXML::WriteBoolean(TStringView iName, bool iValue, bool iDefault) {
  if (iValue != iDefault) AppendLine(iName, BooleanToText(iValue));
}

void TFastWriterBaseSimpleXML::WriteInteger(TStringView iName, int64_t iValue, int64_t iDefault) {
  if (iValue != iDefault) AppendLine(iName, IntToStr(iValue));
}

void TFastWriterBaseSimpleXML::WriteDateTime(TStringView iName, TDateTime iValue,
                                             TDateTime iDefault) {
  if (iValue != iDefault) AppendLine(iName, DateTimeToText(iValue));
}

void TFastWriterBaseSimpleXML::WriteStringList(TStringView iName, const TStringList& iLines,
                                               char16_t iDelimiter) {
  AppendLine(iName, iLines.GetDelimited(TStringView(&iDelimiter, 1)));
}

void TFastWriterBaseSimpleXML::SaveToStream(TStream& ioStream) const {
  if (FText.empty()) return;
  // What could not be read back must not be written.
  if (!TSimpleXMLDocument::Fits(FText)) throw Exception(u"Das XML-Dokument ist größer als erlaubt");
  ioStream.Write(cByteOrderMark);
  if (FWriteDeclaration) ioStream.Write(cDeclaration);
  ioStream.Write(FText);
}

}  // namespace kk
