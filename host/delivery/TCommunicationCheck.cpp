#include "host/delivery/TCommunicationCheck.h"

#include <filesystem>

#include "host/base/Exception.h"
#include "host/common/THttpAddress.h"
#include "host/delivery/email/TMailAddress.h"
#include "host/delivery/sms/TSmsMessage.h"

namespace kk {
namespace {

constexpr TStringView cMailScheme = u"smtp";

bool IsAnyOf(TStringView iKey, std::initializer_list<TStringView> iKeys) {
  for (const TStringView key : iKeys) {
    if (key == iKey) return true;
  }
  return false;
}

TString MailAddress(TStringView iKey, TStringView iValue) {
  try {
    return FromUtf8(TMailAddress::Check(iValue));
  } catch (const Exception& e) {
    throw EConvertError(Format(u"%s nimmt genau eine E-Mail-Adresse wie name@example.org: %s.",
                               {iKey, e.Message()}));
  }
}

// As the gateway takes it.
TString PhoneNumber(const TString& iValue) {
  if (!TSmsMessage({}, iValue, {}).To.empty()) return iValue;
  throw EConvertError(u"SMS nimmt nur eine Rufnummer wie +4915112345678.");
}

// A mail server's address has the form of a page's, with nothing behind the port.
bool IsMailServer(TStringView iText) {
  if (!StartsWith(iText, u"smtp://") && !StartsWith(iText, u"smtps://")) return false;
  const TString asPage = u"http" + TString(iText.substr(cMailScheme.size()));
  const auto address = THttpAddress::Parse(ToUtf8(asPage));
  return address && address->Path == "/" && address->Query.empty();
}

}  // namespace

TString TCommunicationCheck::Value(TStringView iKey, TStringView iValue) {
  if (IsAnyOf(iKey, {u"SmtpPassword", u"SmsToken", u"CalendarPassword"})) return TString(iValue);
  const TString value = Trim(iValue);
  if (value.empty()) return value;
  if (IsAnyOf(iKey, {u"EMail", u"EMailFrom"})) return MailAddress(iKey, value);
  if (iKey == u"SMS") return PhoneNumber(value);
  // Whoever enters an appointment later stands in another folder.
  if (iKey == u"CalendarFolder") {
    return FromUtf8(std::filesystem::absolute(ToUtf8(value)).lexically_normal().string());
  }
  if (iKey == u"SmtpUrl" && !IsMailServer(value)) {
    throw EConvertError(
        u"SmtpUrl nimmt nur smtps://server:port oder smtp://server:port. Benutzer und Kennwort "
        u"stehen in SmtpUser und SmtpPassword.");
  }
  if (IsAnyOf(iKey, {u"SmsUrl", u"CalendarUrl"}) && !THttpAddress::Parse(ToUtf8(value))) {
    throw EConvertError(
        Format(u"%s nimmt nur eine Adresse, die mit https:// oder http:// beginnt, ohne Benutzer "
               u"und Kennwort darin.",
               {iKey}));
  }
  return value;
}

}  // namespace kk
