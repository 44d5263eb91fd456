#include "host/delivery/email/TSmtpServer.h"

#include <arpa/inet.h>
#include <curl/curl.h>

#include <memory>

#include "host/common/TIniFileSectionCommunication.h"

namespace kk {

namespace {

using enum TSmtpOutcome;

using TUrl = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

// Empty if the address has no such part.
std::string PartOf(CURLU* iUrl, CURLUPart iPart) {
  char* part = nullptr;
  if (curl_url_get(iUrl, iPart, &part, 0) != CURLUE_OK) return {};
  std::string text = part;
  curl_free(part);
  return text;
}

bool IsLoopbackHost(const std::string& iHost) {
  in_addr address{};
  if (inet_pton(AF_INET, iHost.c_str(), &address) == 1) return ntohl(address.s_addr) >> 24 == 127;
  return iHost == "[::1]" || curl_strequal(iHost.c_str(), "localhost") != 0;
}

// The reason why an address can't be used; empty if it can. It is not shown: it may hold a
// password.
TString CheckUrl(TSmtpServer& ioServer) {
  if (ioServer.Url.empty()) {
    return u"Es ist kein Postausgang eingerichtet: Die Einstellung SmtpUrl ist leer";
  }
  const TUrl url(curl_url(), &curl_url_cleanup);
  if (!url) return u"Der Speicher reicht nicht";
  const bool parsed = curl_url_set(url.get(), CURLUPART_URL, ioServer.Url.c_str(),
                                   CURLU_NON_SUPPORT_SCHEME) == CURLUE_OK;
  const std::string scheme = parsed ? PartOf(url.get(), CURLUPART_SCHEME) : std::string();
  if (scheme != "smtp" && scheme != "smtps") {
    return u"Die Adresse des Postausgangs ist ungültig. Sie lautet smtps://server:port oder "
           u"smtp://server:port";
  }
  if (!PartOf(url.get(), CURLUPART_USER).empty() ||
      !PartOf(url.get(), CURLUPART_PASSWORD).empty() ||
      !PartOf(url.get(), CURLUPART_OPTIONS).empty()) {
    return u"Benutzer und Kennwort gehören nicht in die Adresse des Postausgangs, sondern in die "
           u"Einstellungen SmtpUser und SmtpPassword";
  }
  ioServer.IsLoopback = IsLoopbackHost(PartOf(url.get(), CURLUPART_HOST));
  return {};
}

}  // namespace

bool TSmtpServer::FromSettings(TSmtpServer& oServer, TSmtpResult& oFailure) {
  const TIniFileSectionCommunication settings;
  oServer.Url = ToUtf8(Trim(settings.GetSmtpUrl()));
  oServer.User = ToUtf8(settings.GetSmtpUser());
  oFailure = {soForGood, CheckUrl(oServer)};
  if (!oFailure.Reason.empty()) return false;
  oServer.Password = ToUtf8(settings.GetSmtpPassword());
  if (oServer.User.empty() == oServer.Password.empty()) return true;
  if (oServer.User.empty()) {
    oFailure.Reason = u"Für den Postausgang ist ein Kennwort hinterlegt, aber kein Benutzer";
    return false;
  }
  // The store of passwords may be locked at this moment.
  oFailure = {soForNow,
              u"Das Kennwort für den Postausgang ist nicht hinterlegt oder zurzeit nicht "
              u"zugänglich"};
  return false;
}

}  // namespace kk
