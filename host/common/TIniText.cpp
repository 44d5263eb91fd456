#include "host/common/TIniText.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <map>
#include <set>

namespace kk {

namespace {

constexpr std::string_view cMark = "\xEF\xBB\xBF";
constexpr std::string_view cBlanks = " \t\r\v\f";

std::string_view TrimBytes(std::string_view iBytes) {
  const size_t begin = iBytes.find_first_not_of(cBlanks);
  if (begin == std::string_view::npos) return {};
  return iBytes.substr(begin, iBytes.find_last_not_of(cBlanks) - begin + 1);
}

bool IsControl(char16_t iUnit) { return iUnit < 0x20 || (iUnit >= 0x7F && iUnit <= 0x9F); }

// One half of a pair without the other has no UTF-8.
bool IsUnpaired(TStringView iText, size_t iAt) {
  const auto isHigh = [](char16_t c) { return (c & 0xFC00) == 0xD800; };
  const auto isLow = [](char16_t c) { return (c & 0xFC00) == 0xDC00; };
  if (isHigh(iText[iAt])) return iAt + 1 == iText.size() || !isLow(iText[iAt + 1]);
  if (!isLow(iText[iAt])) return false;
  return iAt == 0 || !isHigh(iText[iAt - 1]);
}

bool NeedsEscape(TStringView iText, size_t iAt, TStringView iSpecial) {
  return IsControl(iText[iAt]) || IsUnpaired(iText, iAt) ||
         iSpecial.find(iText[iAt]) != TStringView::npos;
}

bool NeedsQuotes(TStringView iText, TStringView iSpecial) {
  if (iText.empty()) return !iSpecial.empty();  // an empty name
  if (iText.front() == u' ' || iText.back() == u' ' || iText.front() == u'"') return true;
  // What a line of another kind begins with.
  if (!iSpecial.empty() && TStringView(u";#[\uFEFF").find(iText.front()) != TStringView::npos) {
    return true;
  }
  for (size_t i = 0; i < iText.size(); ++i) {
    if (NeedsEscape(iText, i, iSpecial)) return true;
  }
  return false;
}

TString UnitAsHex(char16_t iUnit) {
  constexpr char16_t cDigits[] = u"0123456789ABCDEF";
  TString text = u"\\u";
  for (int shift = 12; shift >= 0; shift -= 4) text += cDigits[iUnit >> shift & 0xF];
  return text;
}

// iSpecial: further characters that can't stand there as they are; none for a value.
std::string Encode(TStringView iText, TStringView iSpecial) {
  if (!NeedsQuotes(iText, iSpecial)) return ToUtf8(iText);
  TString quoted = u"\"";
  for (size_t i = 0; i < iText.size(); ++i) {
    if (NeedsEscape(iText, i, iSpecial)) {
      quoted += UnitAsHex(iText[i]);
      continue;
    }
    if (iText[i] == u'\\' || iText[i] == u'"') quoted += u'\\';
    quoted += iText[i];
  }
  return ToUtf8(quoted + u"\"");
}

bool DecodeHex(TStringView iDigits, char16_t& oUnit) {
  const std::string digits = ToUtf8(iDigits);
  unsigned value = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  oUnit = static_cast<char16_t>(value);
  return digits.size() == 4 && error == std::errc() && end == digits.data() + 4;
}

// False if it is not what Encode makes of quotes; the text counts as it stands then.
bool Unquote(TStringView iText, TString& oText) {
  if (iText.size() < 2 || iText.front() != u'"' || iText.back() != u'"') return false;
  iText = iText.substr(1, iText.size() - 2);
  for (size_t i = 0; i < iText.size(); ++i) {
    if (iText[i] == u'"') return false;
    if (iText[i] != u'\\') {
      oText += iText[i];
      continue;
    }
    if (++i == iText.size()) return false;
    char16_t unit = iText[i];
    if (unit == u'u') {
      if (!DecodeHex(iText.substr(i + 1, 4), unit)) return false;
      i += 4;
    } else if (unit != u'\\' && unit != u'"') {
      return false;
    }
    oText += unit;
  }
  return true;
}

TString Decode(std::string_view iBytes) {
  const TString text = FromUtf8(TrimBytes(iBytes));
  TString unquoted;
  return Unquote(text, unquoted) ? unquoted : text;
}

constexpr TStringView cSpecialInNames = u"=]";

struct TLessText {
  bool operator()(const TString& iA, const TString& iB) const { return CompareText(iA, iB) < 0; }
};

}  // namespace

TIniText::TIniText(std::string_view iBytes) {
  FHasMark = iBytes.starts_with(cMark);
  if (FHasMark) iBytes.remove_prefix(cMark.size());
  TString section;
  while (!iBytes.empty()) {
    const size_t end = std::min(iBytes.find('\n'), iBytes.size());
    FLines.push_back(ParseLine(iBytes.substr(0, end), section));
    section = FLines.back().Section;
    iBytes.remove_prefix(std::min(end + 1, iBytes.size()));
  }
  if (!FLines.empty() && FLines.front().Bytes.ends_with('\r')) FLineEnd = "\r";
}

TIniText::TLine TIniText::ParseLine(std::string_view iBytes, const TString& iSection) {
  TLine line;
  line.Bytes = iBytes;
  line.Section = iSection;
  const std::string_view text = TrimBytes(iBytes);
  if (text.empty() || text[0] == ';' || text[0] == '#') return line;
  const size_t bracket = text.find(']');
  const size_t equals = text.find('=');
  if (text[0] == '[' && bracket != std::string_view::npos) {
    line.Kind = TLineKind::lkSection;
    line.Section = Decode(text.substr(1, bracket - 1));
  } else if (equals != std::string_view::npos) {
    line.Kind = TLineKind::lkKey;
    line.Key = Decode(text.substr(0, equals));
    line.Value = Decode(text.substr(equals + 1));
  }
  return line;
}

std::string TIniText::ToBytes() const {
  std::string bytes(FHasMark ? cMark : "");
  for (const TLine& line : FLines) bytes.append(line.Bytes).append("\n");
  return bytes;
}

size_t TIniText::IndexOf(TStringView iSection, TStringView iKey) const {
  const auto hit = std::find_if(FLines.begin(), FLines.end(), [&](const TLine& iLine) {
    return iLine.Kind == TLineKind::lkKey && SameText(iLine.Key, iKey) &&
           SameText(iLine.Section, iSection);
  });
  return static_cast<size_t>(hit - FLines.begin());
}

std::optional<TString> TIniText::Find(TStringView iSection, TStringView iKey) const {
  const size_t index = IndexOf(iSection, iKey);
  return index == FLines.size() ? std::nullopt : std::optional(FLines[index].Value);
}

TIniText::TLine TIniText::MakeLine(TStringView iSection, TStringView iKey,
                                   TStringView iValue) const {
  TLine line;
  line.Kind = TLineKind::lkKey;
  line.Bytes = Encode(iKey, cSpecialInNames) + "=" + Encode(iValue, {}) + FLineEnd;
  line.Section = iSection;
  line.Key = iKey;
  line.Value = iValue;
  return line;
}

void TIniText::AppendSection(TStringView iSection) {
  TLine blank;
  blank.Bytes = FLineEnd;
  if (!FLines.empty()) {
    blank.Section = FLines.back().Section;
    FLines.push_back(blank);
  }
  TLine header;
  header.Kind = TLineKind::lkSection;
  header.Bytes = "[" + Encode(iSection, cSpecialInNames) + "]" + FLineEnd;
  header.Section = iSection;
  FLines.push_back(header);
}

// Behind the last line of the section's first part that is not blank; the section is made if there
// is none. Lines before any section header belong to the section without a name.
size_t TIniText::EndOfSection(TStringView iSection) {
  const auto inSection = [&](const TLine& iLine) { return SameText(iLine.Section, iSection); };
  auto begin = std::find_if(FLines.begin(), FLines.end(), inSection);
  if (begin == FLines.end() && iSection.empty()) return 0;
  if (begin == FLines.end()) {
    AppendSection(iSection);
    return FLines.size();
  }
  auto end = std::find_if_not(begin, FLines.end(), inSection);
  while (end != begin && TrimBytes((end - 1)->Bytes).empty()) --end;
  return static_cast<size_t>(end - FLines.begin());
}

void TIniText::Set(TStringView iSection, TStringView iKey, TStringView iValue) {
  const TLine line = MakeLine(iSection, iKey, iValue);
  const size_t index = IndexOf(iSection, iKey);
  if (index < FLines.size()) {
    FLines[index] = line;
    return;
  }
  const size_t end = EndOfSection(iSection);
  FLines.insert(FLines.begin() + static_cast<ptrdiff_t>(end), line);
}

bool TIniText::Delete(TStringView iSection, TStringView iKey) {
  return std::erase_if(FLines, [&](const TLine& iLine) {
           return iLine.Kind == TLineKind::lkKey && SameText(iLine.Key, iKey) &&
                  SameText(iLine.Section, iSection);
         }) > 0;
}

bool TIniText::SetAll(TStringView iSection,
                      const std::vector<std::pair<TString, TString>>& iValues) {
  std::map<TString, size_t, TLessText> places;
  for (size_t i = 0; i < FLines.size(); ++i) {
    const TLine& line = FLines[i];
    if (line.Kind == TLineKind::lkKey && SameText(line.Section, iSection)) {
      places.emplace(line.Key, i);
    }
  }
  bool changed = false;
  std::vector<TLine> added;  // their places count on behind the lines that are there
  for (const auto& [key, value] : iValues) {
    const auto [place, isNew] = places.emplace(key, FLines.size() + added.size());
    if (isNew) added.emplace_back();
    const size_t index = place->second;
    TLine& line = index < FLines.size() ? FLines[index] : added[index - FLines.size()];
    if (!isNew && line.Value == value) continue;
    line = MakeLine(iSection, key, value);
    changed = true;
  }
  if (added.empty()) return changed;
  const auto end = static_cast<ptrdiff_t>(EndOfSection(iSection));
  FLines.insert(FLines.begin() + end, std::make_move_iterator(added.begin()),
                std::make_move_iterator(added.end()));
  return true;
}

bool TIniText::DeleteAll(TStringView iSection, const std::vector<TString>& iKeys) {
  const std::set<TString, TLessText> keys(iKeys.begin(), iKeys.end());
  return std::erase_if(FLines, [&](const TLine& iLine) {
           return iLine.Kind == TLineKind::lkKey && keys.count(iLine.Key) > 0 &&
                  SameText(iLine.Section, iSection);
         }) > 0;
}

std::vector<std::pair<TString, TString>> TIniText::Values(TStringView iSection) const {
  std::vector<std::pair<TString, TString>> values;
  std::set<TString, TLessText> seen;
  for (const TLine& line : FLines) {
    if (line.Kind != TLineKind::lkKey || !SameText(line.Section, iSection)) continue;
    if (seen.insert(line.Key).second) values.emplace_back(line.Key, line.Value);
  }
  return values;
}

std::vector<TString> TIniText::Sections() const {
  std::vector<TString> sections;
  std::set<TString, TLessText> seen;
  for (const TLine& line : FLines) {
    if (line.Kind != TLineKind::lkSection || !seen.insert(line.Section).second) continue;
    sections.push_back(line.Section);
  }
  return sections;
}

}  // namespace kk
