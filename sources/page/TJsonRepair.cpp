#include "sources/page/TJsonRepair.h"

#include <algorithm>
#include <array>

namespace kk {

namespace {

constexpr std::string_view cBlanks = " \t\r\n\f\v";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsWordChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || IsDigit(c) || c == '_' || c == '$' ||
         c == '-' || c == '+' || c == '.' || c == '@' || static_cast<unsigned char>(c) >= 0x80;
}

// RFC 8259, section 6.
bool IsNumber(std::string_view iWord) {
  size_t at = iWord.starts_with('-') ? 1 : 0;
  const auto digits = [&] {
    const size_t begin = at;
    while (at < iWord.size() && IsDigit(iWord[at])) ++at;
    return at - begin;
  };
  const bool leadingZero = at < iWord.size() && iWord[at] == '0';
  const size_t whole = digits();
  if (whole == 0 || (leadingZero && whole > 1)) return false;
  if (at < iWord.size() && iWord[at] == '.') {
    ++at;
    if (digits() == 0) return false;
  }
  if (at < iWord.size() && (iWord[at] == 'e' || iWord[at] == 'E')) {
    ++at;
    if (at < iWord.size() && (iWord[at] == '+' || iWord[at] == '-')) ++at;
    if (digits() == 0) return false;
  }
  return at == iWord.size();
}

int HexValue(std::string_view iText, size_t iAt) {
  if (iAt + 4 > iText.size()) return -1;
  int value = 0;
  for (size_t i = iAt; i < iAt + 4; ++i) {
    const char lower = static_cast<char>(iText[i] | 0x20);
    if (IsDigit(iText[i])) {
      value = value * 16 + (iText[i] - '0');
    } else if (lower >= 'a' && lower <= 'f') {
      value = value * 16 + (lower - 'a' + 10);
    } else {
      return -1;
    }
  }
  return value;
}

class TRepair {
 public:
  explicit TRepair(std::string_view iText) : FText(iText) {}

  std::string Run() {
    while (FAt < FText.size()) {
      if (!SkipNoise()) Token();
    }
    DropComma();
    if (FTopLevelValues > 1) return "[" + FOut + "]";
    return std::move(FOut);
  }

 private:
  // What the last token was.
  enum class TLast { laNothing, laOpen, laValue, laComma, laColon };

  bool At(std::string_view iPiece) const { return FText.substr(FAt).starts_with(iPiece); }

  void SkipBehind(std::string_view iPiece) {
    const size_t end = FText.find(iPiece, FAt);
    FAt = end == std::string_view::npos ? FText.size() : end + iPiece.size();
  }

  // Blanks, comments and wrappings between tokens. False where a token begins.
  bool SkipNoise() {
    if (cBlanks.find(FText[FAt]) != std::string_view::npos || FText[FAt] == ';' ||
        FText[FAt] == '\0') {
      ++FAt;
      return true;
    }
    for (const std::string_view mark : {"<![CDATA[", "]]>", "<!--", "-->", "\xEF\xBB\xBF"}) {
      if (!At(mark)) continue;
      FAt += mark.size();
      return true;
    }
    // Within a comment may stand one half of a wrapping alone: "//<![CDATA[", "/*]]>*/".
    if (At("/*")) {
      SkipBehind("*/");
      return true;
    }
    if (!At("//")) return false;
    const size_t end = FText.find_first_of("\r\n", FAt);
    const std::string_view line = FText.substr(FAt, end - FAt);
    const size_t wrapping = std::min(line.find("<![CDATA["), line.find("<!--"));
    // What follows an opening wrapping on the same line is no comment.
    FAt = wrapping != std::string_view::npos ? FAt + wrapping : FAt + line.size();
    return true;
  }

  void Token() {
    const char c = FText[FAt];
    if (c == '{' || c == '[') {
      BeforeValue();
      Put(c, TLast::laOpen);
      ++FDepth;
    } else if (c == '}' || c == ']') {
      DropComma();
      Put(c, TLast::laValue);
      --FDepth;
    } else if (c == ',') {
      if (FLast == TLast::laValue) {
        FComma = FOut.size();
        Put(c, TLast::laComma);
      }
      ++FAt;
      return;
    } else if (c == ':') {
      Put(c, TLast::laColon);
    } else if (c == '"' || c == '\'') {
      BeforeValue();
      String(c);
      return;
    } else {
      Word();
      return;
    }
    ++FAt;
  }

  void Put(char c, TLast iLast) {
    FOut += c;
    FLast = iLast;
  }

  // A value behind a value lacks its comma.
  void BeforeValue() {
    if (FLast == TLast::laValue) FOut += ',';
    if (FDepth == 0) ++FTopLevelValues;
  }

  void DropComma() {
    if (FLast != TLast::laComma) return;
    FOut.erase(FComma);
    FLast = TLast::laValue;
  }

  void Word() {
    const size_t begin = FAt;
    while (FAt < FText.size() && IsWordChar(FText[FAt])) ++FAt;
    if (FAt == begin) {
      ++FAt;  // nothing that JSON or JavaScript knows
      return;
    }
    const std::string_view word = FText.substr(begin, FAt - begin);
    BeforeValue();
    FLast = TLast::laValue;
    const size_t next = std::min(FText.find_first_not_of(cBlanks, FAt), FText.size());
    const bool isName = next < FText.size() && FText[next] == ':';
    const bool isPlain = word == "true" || word == "false" || word == "null" || IsNumber(word);
    if (isPlain && !isName) {
      FOut += word;
    } else if (isName || IsDigit(word[0]) || word[0] == '.' || word[0] == '+') {
      FOut += '"';
      FOut += word;
      FOut += '"';
    } else {
      FOut += "null";
    }
  }

  // Whether a quotation mark at this place ends its string: only what may follow a string follows.
  bool EndsString(size_t iAt) const {
    const size_t next = FText.find_first_not_of(cBlanks, iAt + 1);
    if (next == std::string_view::npos) return true;
    return std::string_view(",:}]/;").find(FText[next]) != std::string_view::npos;
  }

  void String(char iQuote) {
    FOut += '"';
    for (++FAt; FAt < FText.size(); ++FAt) {
      const char c = FText[FAt];
      if (c == iQuote && EndsString(FAt)) {
        ++FAt;
        break;
      }
      if (c == '\\') {
        Escape();
      } else if (c == '"') {
        FOut += "\\\"";
      } else if (static_cast<unsigned char>(c) < 0x20) {
        Control(c);
      } else {
        FOut += c;
      }
    }
    FOut += '"';
    FLast = TLast::laValue;
  }

  void Control(char c) {
    constexpr char cDigits[] = "0123456789abcdef";
    FOut += "\\u00";
    FOut += cDigits[c >> 4];
    FOut += cDigits[c & 15];
  }

  // At a backslash; leaves FAt on the last character of the escape.
  void Escape() {
    if (FAt + 1 >= FText.size()) return;
    const char c = FText[++FAt];
    if (std::string_view("\"\\/bfnrt").find(c) != std::string_view::npos) {
      FOut += '\\';
      FOut += c;
    } else if (c == 'u') {
      UnicodeEscape();
    } else if (static_cast<unsigned char>(c) < 0x20) {
      Control(c);
    } else {
      FOut += c;
    }
  }

  void UnicodeEscape() {
    const int value = HexValue(FText, FAt + 1);
    if (value < 0) {
      FOut += 'u';
      return;
    }
    const bool isHigh = value >= 0xD800 && value < 0xDC00;
    const bool isLow = value >= 0xDC00 && value < 0xE000;
    const int second =
        isHigh && FText.substr(FAt + 5).starts_with("\\u") ? HexValue(FText, FAt + 7) : -1;
    const bool isPair = second >= 0xDC00 && second < 0xE000;
    if (isLow || (isHigh && !isPair)) {
      FOut += "\\ufffd";
      FAt += 4;
      return;
    }
    const size_t length = isPair ? 10 : 4;
    FOut += "\\u";
    FOut += FText.substr(FAt + 1, length);
    FAt += length;
  }

  std::string_view FText;
  size_t FAt = 0;
  std::string FOut;
  size_t FComma = 0;
  TLast FLast = TLast::laNothing;
  int FDepth = 0;
  int FTopLevelValues = 0;
};

}  // namespace

std::string RepairJson(std::string_view iText) { return TRepair(iText).Run(); }

}  // namespace kk
