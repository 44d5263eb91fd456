#include "host/delivery/email/TSmtpClient.h"

#include <utility>

#include "host/delivery/email/TSmtpTransfer.h"

namespace kk {

namespace {

using enum TSmtpOutcome;

constexpr int cFirstForGood = 500;

TSmtpResult Refused(const TSmtpReplies& iReplies, bool iLogin) {
  const bool forNow = iReplies.RefusalCode() < cFirstForGood;
  TStringView format = forNow ? u"Der Mailserver nimmt die E-Mail zurzeit nicht an (%s)"
                              : u"Der Mailserver hat die E-Mail abgelehnt (%s)";
  if (iLogin) {
    format = forNow ? u"Der Mailserver nimmt die Anmeldung zurzeit nicht an (%s)"
                    : u"Der Mailserver hat die Anmeldung abgelehnt (%s)";
  }
  return {forNow ? soForNow : soForGood, Format(format, {iReplies.Refusal()})};
}

// It was the server's last word, and libcurl gave up because of it.
bool IsRefusal(CURLcode iCode, const TSmtpTransfer& iTransfer) {
  const int refusal = iTransfer.Replies().RefusalCode();
  if (refusal == 0 || refusal != iTransfer.LastCode()) return false;
  return iTransfer.Replies().IsFinal() || iCode == CURLE_SEND_ERROR ||
         iCode == CURLE_WEIRD_SERVER_REPLY || iCode == CURLE_LOGIN_DENIED ||
         iCode == CURLE_REMOTE_ACCESS_DENIED ||
         (iCode == CURLE_USE_SSL_FAILED && refusal < cFirstForGood);
}

// What went wrong on the way to the server.
TSmtpResult FailureOf(CURLcode iCode) {
  switch (iCode) {
    case CURLE_COULDNT_RESOLVE_HOST:
      return {soForNow, u"Der Mailserver wurde nicht gefunden"};
    case CURLE_COULDNT_RESOLVE_PROXY:
      return {soForNow, u"Der Proxy wurde nicht gefunden"};
    case CURLE_COULDNT_CONNECT:
      return {soForNow, u"Der Mailserver ist nicht erreichbar"};
    case CURLE_OPERATION_TIMEDOUT:
    case CURLE_ABORTED_BY_CALLBACK:  // at the end of the time
      return {soForNow, u"Der Mailserver hat nicht rechtzeitig geantwortet"};
    case CURLE_LOGIN_DENIED:
      return {soForGood, u"Die Anmeldung am Mailserver ist nicht möglich"};
    case CURLE_USE_SSL_FAILED:
      return {soForGood,
              u"Der Mailserver bietet keine verschlüsselte Verbindung (STARTTLS) an, und "
              u"unverschlüsselt wird nichts verschickt"};
    case CURLE_PEER_FAILED_VERIFICATION:
      return {soForGood, u"Das Zertifikat des Mailservers ist ungültig"};
    case CURLE_SSL_CACERT_BADFILE:
      return {soForGood, u"Die Zertifikate, denen vertraut wird, sind nicht lesbar"};
    case CURLE_SSL_CONNECT_ERROR:  // also a line that breaks at this moment
      return {soForNow, u"Mit dem Mailserver kommt keine verschlüsselte Verbindung zustande"};
    case CURLE_URL_MALFORMAT:
    case CURLE_UNSUPPORTED_PROTOCOL:
      return {soForGood, u"Die Adresse des Postausgangs ist ungültig"};
    case CURLE_OK:  // without an answer to the message
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
      return {soForNow, u"Die Verbindung zum Mailserver wurde unterbrochen"};
    case CURLE_WRITE_ERROR:
    case CURLE_WEIRD_SERVER_REPLY:
      return {soForNow, u"Die Antwort des Mailservers ist nicht verständlich"};
    default:
      return {soForNow,
              Format(u"Fehler bei der Übertragung (%s)", {FromUtf8(curl_easy_strerror(iCode))})};
  }
}

}  // namespace

TSmtpClient::TSmtpClient(TSmtpOptions iOptions) : FOptions(std::move(iOptions)) {}

TSmtpResult TSmtpClient::Send(const TMailMessage& iMessage, std::stop_token iStop) const {
  TSmtpServer server;
  TSmtpResult failure;
  if (!TSmtpServer::FromSettings(server, failure)) return failure;
  if (iStop.stop_requested()) return {soCancelled, u"Abgebrochen"};
  TSmtpTransfer transfer(server, FOptions, iMessage, iStop);
  const CURLcode code = transfer.Perform();
  const TSmtpReplies& replies = transfer.Replies();
  if (transfer.IsAccepted()) return {soSent, {}};
  if (IsRefusal(code, transfer)) return Refused(replies, code == CURLE_LOGIN_DENIED);
  if (iStop.stop_requested()) return {soCancelled, u"Abgebrochen"};
  return FailureOf(code);
}

}  // namespace kk
