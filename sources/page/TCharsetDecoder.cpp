#include "sources/page/TCharsetDecoder.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <memory>

#include "host/base/TString.h"

namespace kk {

namespace {

constexpr size_t cPrescanBytes = 1024;

struct TLabel {
  std::string_view Label;
  const char* Encoding;
};

// The labels of the Encoding standard that pages use, with ICU's name for each encoding.
constexpr std::array cLabels = {
    TLabel{"utf-8", "UTF-8"},
    TLabel{"utf8", "UTF-8"},
    TLabel{"unicode-1-1-utf-8", "UTF-8"},
    TLabel{"iso-8859-1", "windows-1252"},
    TLabel{"iso8859-1", "windows-1252"},
    TLabel{"iso88591", "windows-1252"},
    TLabel{"iso_8859-1", "windows-1252"},
    TLabel{"latin1", "windows-1252"},
    TLabel{"l1", "windows-1252"},
    TLabel{"ascii", "windows-1252"},
    TLabel{"us-ascii", "windows-1252"},
    TLabel{"windows-1252", "windows-1252"},
    TLabel{"cp1252", "windows-1252"},
    TLabel{"x-cp1252", "windows-1252"},
    TLabel{"ansi_x3.4-1968", "windows-1252"},
    TLabel{"iso-8859-2", "ISO-8859-2"},
    TLabel{"latin2", "ISO-8859-2"},
    TLabel{"iso-8859-3", "ISO-8859-3"},
    TLabel{"iso-8859-4", "ISO-8859-4"},
    TLabel{"iso-8859-5", "ISO-8859-5"},
    TLabel{"iso-8859-6", "ISO-8859-6"},
    TLabel{"iso-8859-7", "ISO-8859-7"},
    TLabel{"iso-8859-8", "ISO-8859-8"},
    TLabel{"iso-8859-8-i", "ISO-8859-8"},
    TLabel{"iso-8859-9", "windows-1254"},
    TLabel{"latin5", "windows-1254"},
    TLabel{"iso-8859-10", "ISO-8859-10"},
    TLabel{"iso-8859-13", "ISO-8859-13"},
    TLabel{"iso-8859-14", "ISO-8859-14"},
    TLabel{"iso-8859-15", "ISO-8859-15"},
    TLabel{"iso8859-15", "ISO-8859-15"},
    TLabel{"latin-9", "ISO-8859-15"},
    TLabel{"l9", "ISO-8859-15"},
    TLabel{"ibm866", "IBM866"},
    TLabel{"cp866", "IBM866"},
    TLabel{"koi8-r", "KOI8-R"},
    TLabel{"koi8", "KOI8-R"},
    TLabel{"koi8-u", "KOI8-U"},
    TLabel{"macintosh", "macintosh"},
    TLabel{"mac", "macintosh"},
    TLabel{"x-mac-roman", "macintosh"},
    TLabel{"windows-874", "windows-874"},
    TLabel{"tis-620", "windows-874"},
    TLabel{"iso-8859-11", "windows-874"},
    TLabel{"windows-1250", "windows-1250"},
    TLabel{"cp1250", "windows-1250"},
    TLabel{"windows-1251", "windows-1251"},
    TLabel{"cp1251", "windows-1251"},
    TLabel{"windows-1253", "windows-1253"},
    TLabel{"windows-1254", "windows-1254"},
    TLabel{"windows-1255", "windows-1255"},
    TLabel{"windows-1256", "windows-1256"},
    TLabel{"windows-1257", "windows-1257"},
    TLabel{"windows-1258", "windows-1258"},
    TLabel{"gb2312", "GBK"},
    TLabel{"gb_2312-80", "GBK"},
    TLabel{"gbk", "GBK"},
    TLabel{"x-gbk", "GBK"},
    TLabel{"gb18030", "gb18030"},
    TLabel{"big5", "Big5-HKSCS"},
    TLabel{"big5-hkscs", "Big5-HKSCS"},
    TLabel{"euc-jp", "EUC-JP"},
    TLabel{"x-euc-jp", "EUC-JP"},
    TLabel{"iso-2022-jp", "ISO-2022-JP"},
    TLabel{"shift_jis", "windows-31j"},
    TLabel{"shift-jis", "windows-31j"},
    TLabel{"sjis", "windows-31j"},
    TLabel{"windows-31j", "windows-31j"},
    TLabel{"euc-kr", "windows-949"},
    TLabel{"ks_c_5601-1987", "windows-949"},
    TLabel{"windows-949", "windows-949"},
    TLabel{"utf-16", "UTF-16LE"},
    TLabel{"utf-16le", "UTF-16LE"},
    TLabel{"utf-16be", "UTF-16BE"},
};

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

std::string LowerTrimmed(std::string_view iText) {
  constexpr std::string_view cBlanks = " \t\r\n\f";
  const size_t begin = std::min(iText.find_first_not_of(cBlanks), iText.size());
  iText.remove_prefix(begin);
  std::string text(iText.substr(0, iText.find_last_not_of(cBlanks) + 1));
  std::transform(text.begin(), text.end(), text.begin(), LowerAscii);
  return text;
}

// The value behind "name =" from a position on, quoted or not; empty if there is none.
std::string_view ValueOf(std::string_view iText, std::string_view iName) {
  constexpr std::string_view cBlanks = " \t\r\n\f";
  for (size_t at = iText.find(iName); at != std::string_view::npos;
       at = iText.find(iName, at + 1)) {
    std::string_view rest = iText.substr(at + iName.size());
    rest.remove_prefix(std::min(rest.find_first_not_of(cBlanks), rest.size()));
    if (!rest.starts_with('=')) continue;
    rest.remove_prefix(1);
    rest.remove_prefix(std::min(rest.find_first_not_of(cBlanks), rest.size()));
    if (rest.starts_with('"') || rest.starts_with('\'')) {
      const size_t end = rest.find(rest[0], 1);
      return end == std::string_view::npos ? std::string_view() : rest.substr(1, end - 1);
    }
    return rest.substr(0, rest.find_first_of(" \t\r\n\f;,>\"'"));
  }
  return {};
}

// The prescan of the HTML standard in short: <meta charset> and the charset within the content of
// <meta http-equiv>, comments aside.
std::string MetaEncoding(std::string_view iBytes) {
  std::string head(iBytes.substr(0, cPrescanBytes));
  std::transform(head.begin(), head.end(), head.begin(), LowerAscii);
  for (size_t at = 0; (at = head.find('<', at)) != std::string::npos;) {
    const std::string_view rest = std::string_view(head).substr(at);
    if (rest.starts_with("<!--")) {
      const size_t end = rest.find("-->");
      if (end == std::string_view::npos) return {};
      at += end + 3;
      continue;
    }
    const size_t end = std::min(rest.find('>'), rest.size());
    at += 1;
    if (!rest.starts_with("<meta")) continue;
    const std::string encoding = EncodingOfLabel(ValueOf(rest.substr(0, end), "charset"));
    if (encoding.empty()) continue;
    // A page that could be read so far is not in UTF-16, whatever it says.
    return encoding.starts_with("UTF-16") ? "UTF-8" : encoding;
  }
  return {};
}

bool IsUtf8(std::string_view iBytes) {
  // Decoding and encoding gives the same bytes back for UTF-8 alone.
  return ToUtf8(FromUtf8(iBytes)) == iBytes;
}

std::string Convert(std::string_view iBytes, const std::string& iEncoding) {
  if (iEncoding == "UTF-8") return ToUtf8(FromUtf8(iBytes));
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(
      ucnv_open(iEncoding.c_str(), &status), &ucnv_close);
  if (U_FAILURE(status)) return ToUtf8(FromUtf8(iBytes));
  // None of the encodings makes more units than it has bytes.
  TString text(iBytes.size(), u'\0');
  const char* from = iBytes.data();
  char16_t* to = text.data();
  ucnv_toUnicode(converter.get(), &to, text.data() + text.size(), &from,
                 iBytes.data() + iBytes.size(), nullptr, true, &status);
  text.resize(static_cast<size_t>(to - text.data()));
  return ToUtf8(text);
}

}  // namespace

std::string EncodingOfLabel(std::string_view iLabel) {
  const std::string label = LowerTrimmed(iLabel);
  for (const TLabel& known : cLabels) {
    if (known.Label == label) return known.Encoding;
  }
  return {};
}

std::string ContentTypeParameter(std::string_view iContentType, std::string_view iName) {
  const size_t parameters = iContentType.find(';');
  if (parameters == std::string_view::npos) return {};
  return std::string(ValueOf(LowerTrimmed(iContentType.substr(parameters + 1)), iName));
}

std::string DecodePage(std::string_view iBytes, std::string_view iContentType) {
  if (iBytes.starts_with("\xEF\xBB\xBF")) return Convert(iBytes.substr(3), "UTF-8");
  if (iBytes.starts_with("\xFE\xFF")) return Convert(iBytes.substr(2), "UTF-16BE");
  if (iBytes.starts_with("\xFF\xFE")) return Convert(iBytes.substr(2), "UTF-16LE");
  std::string encoding = EncodingOfLabel(ContentTypeParameter(iContentType, "charset"));
  if (encoding.empty()) encoding = MetaEncoding(iBytes);
  if (encoding.empty()) encoding = IsUtf8(iBytes) ? "UTF-8" : "windows-1252";
  return Convert(iBytes, encoding);
}

}  // namespace kk
