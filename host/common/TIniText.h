#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/base/TString.h"

namespace kk {

/// The text of a settings file as lines. Whatever it does not change stays byte by byte as it was.
///
/// "[section]" lines, "key=value" lines, comments that begin with ";" or "#". Blanks around a name
/// and a value do not count. A name or value that would not come back so is written in double
/// quotes, and inside of them "\\", "\"" and "\uXXXX" (a UTF-16 unit: control characters, unpaired
/// surrogates, and "=" and "]" in names) stand for what can't stand there itself. Any other value
/// is taken as it stands, backslashes too. Of two keys of one name in a section the first counts;
/// two sections of one name are one. Names are found without regard to case. One thread at a time.
class TIniText {
 public:
  TIniText() = default;
  explicit TIniText(std::string_view iBytes);

  std::string ToBytes() const;

  std::optional<TString> Find(TStringView iSection, TStringView iKey) const;
  void Set(TStringView iSection, TStringView iKey, TStringView iValue);
  /// Every key of this name in the section; false if there was none.
  bool Delete(TStringView iSection, TStringView iKey);
  /// The same for many keys in turn, in the time of one walk along the text; false if nothing has
  /// changed.
  bool SetAll(TStringView iSection, const std::vector<std::pair<TString, TString>>& iValues);
  bool DeleteAll(TStringView iSection, const std::vector<TString>& iKeys);
  /// Keys and values in file order; one of a name.
  std::vector<std::pair<TString, TString>> Values(TStringView iSection) const;
  std::vector<TString> Sections() const;

 private:
  enum class TLineKind { lkOther, lkSection, lkKey };
  struct TLine {
    TLineKind Kind = TLineKind::lkOther;
    std::string Bytes;  ///< without the line feed
    TString Section;    ///< the section that it stands in, or that it begins
    TString Key;
    TString Value;
  };
  static TLine ParseLine(std::string_view iBytes, const TString& iSection);
  size_t IndexOf(TStringView iSection, TStringView iKey) const;
  TLine MakeLine(TStringView iSection, TStringView iKey, TStringView iValue) const;
  size_t EndOfSection(TStringView iSection);
  void AppendSection(TStringView iSection);

  std::vector<TLine> FLines;
  std::string FLineEnd;  // what stands before a line feed: "\r" if the first line has it
  bool FHasMark = false;
};

}  // namespace kk
