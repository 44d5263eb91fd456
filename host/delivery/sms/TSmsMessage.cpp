#include "host/delivery/sms/TSmsMessage.h"

#include <uuid/uuid.h>

#include <array>
#include <nlohmann/json.hpp>

namespace kk {

namespace {

constexpr size_t cMinDigits = 3;
constexpr size_t cMaxDigits = 17;
constexpr size_t cMaxNumberLength = 40;

// The name space of the keys, made once for this purpose.
constexpr std::array<unsigned char, 16> cKeySpace = {
    0x5e, 0x0c, 0x1d, 0x6a, 0x8f, 0x27, 0x4b, 0x93, 0xa1, 0x54, 0x7e, 0xd2, 0x39, 0xc8, 0x06, 0xb5};

// Behind the country's code the zero in brackets is for callers at home.
TString WithoutHomeZero(TStringView iNumber) {
  const bool international = StartsWith(iNumber, u"+") || StartsWith(iNumber, u"00");
  return international ? ReplaceAll(iNumber, u"(0)", {}) : TString(iNumber);
}

std::string NormalNumber(TStringView iNumber) {
  if (iNumber.size() > cMaxNumberLength) return {};
  std::string digits;
  std::string plus;
  for (const char16_t c : WithoutHomeZero(Trim(iNumber))) {
    if (c >= u'0' && c <= u'9') {
      digits += static_cast<char>(c);
    } else if (c == u'+' && digits.empty() && plus.empty()) {
      plus = "+";
    } else if (TStringView(u" -/.()").find(c) == TStringView::npos) {
      return {};
    }
  }
  return digits.size() < cMinDigits || digits.size() > cMaxDigits ? std::string() : plus + digits;
}

std::string Rfc3339(TDateTime iLocal) {
  // The patterns of FormatDateTime know no time zone; a moment of UTC is written like any other.
  const TDateTime epoch = EncodeDateTime({1970, 1, 1, 0, 0, 0, 0});
  const TDateTime utc = epoch.PlusMs(LocalToUtcMs(iLocal));
  return ToUtf8(FormatDateTime(u"yyyy-mm-dd", utc) + u"T" + FormatDateTime(u"hh:nn:ss", utc) +
                u"Z");
}

}  // namespace

TSmsMessage::TSmsMessage(TStringView iText, TStringView iNumber, TDateTime iWhen)
    : To(NormalNumber(iNumber)), Text(iText), When(iWhen) {}

std::string TSmsMessage::Json() const {
  const nlohmann::json object = {{"to", To}, {"text", ToUtf8(Text)}, {"sendAt", Rfc3339(When)}};
  return object.dump();
}

std::string TSmsMessage::IdempotencyKey() const {
  const std::string name = Json();
  uuid_t key;
  uuid_generate_sha1(key, cKeySpace.data(), name.data(), name.size());
  std::array<char, UUID_STR_LEN> text{};
  uuid_unparse_lower(key, text.data());
  return text.data();
}

}  // namespace kk
