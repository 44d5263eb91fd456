#include "host/delivery/sms/TSmsGateway.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "host/common/THttpAddress.h"
#include "host/common/THttpSession.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/controls/TfrmKKCommonWait.h"
#include "host/delivery/sms/TSmsMessage.h"

namespace kk {

namespace {

using enum TSMSResult;
using TJson = nlohmann::json;

constexpr size_t cMaxAnswerBytes = size_t{64} << 10;
constexpr size_t cMaxReasonLength = 200;

// The account at the gateway, as the settings have it.
struct TAccount {
  std::string Address;
  std::string Token;
  TString Problem;  // why nothing can be sent with it; empty for nothing
};

bool IsTokenChar(char iChar) { return iChar > 0x20 && iChar < 0x7F; }

TAccount ReadAccount() {
  const TIniFileSectionCommunication settings;
  TAccount account{ToUtf8(Trim(settings.GetSmsUrl())), ToUtf8(Trim(settings.GetSmsToken())), {}};
  const auto address = THttpAddress::Parse(account.Address);
  if (account.Address.empty()) {
    account.Problem = u"Es ist kein SMS-Dienst eingerichtet (SmsUrl ist leer)";
  } else if (!address) {
    account.Problem =
        u"Die Adresse des SMS-Dienstes (SmsUrl) ist ungültig; sie muss mit https:// beginnen";
  } else if (!address->IsSafeForSecrets()) {
    account.Problem =
        u"Die Adresse des SMS-Dienstes (SmsUrl) muss mit https:// beginnen, sonst könnten andere "
        u"den Zugangsschlüssel mitlesen";
  } else if (account.Token.empty()) {
    account.Problem =
        u"Für den SMS-Dienst ist kein Zugangsschlüssel eingerichtet (SmsToken ist leer)";
  } else if (!std::all_of(account.Token.begin(), account.Token.end(), IsTokenChar)) {
    account.Problem = u"Der Zugangsschlüssel des SMS-Dienstes (SmsToken) enthält ungültige Zeichen";
  } else {
    account.Address = address->Text;
  }
  return account;
}

// The first of these members that is a text.
std::string TextIn(const TJson& iObject, std::initializer_list<const char*> iNames) {
  for (const char* const name : iNames) {
    const auto member = iObject.find(name);
    if (member != iObject.end() && member->is_string()) return member->get<std::string>();
  }
  return {};
}

// What the gateway says of its refusal.
struct TRefusal {
  std::string Code;
  TString Reason;  // one line, bounded
};

TRefusal ReadRefusal(const std::string& iBody) {
  const TJson answer = TJson::parse(iBody, nullptr, false);
  if (!answer.is_object()) return {};
  const auto error = answer.find("error");
  const TJson& object = error != answer.end() && error->is_object() ? *error : answer;
  TString reason = FromUtf8(TextIn(object, {"message", "detail", "title", "error"}));
  reason = WithoutControlCharacters(ToSingleLine(reason));
  return {TextIn(object, {"code", "error"}), ShortenedText(reason, cMaxReasonLength)};
}

bool IsAboutNumber(const std::string& iCode) {
  constexpr std::array cCodes = {"invalid_number", "invalid_phone_number", "invalid_recipient",
                                 "invalid_to"};
  return std::any_of(cCodes.begin(), cCodes.end(),
                     [&](const char* iKnown) { return iCode == iKnown; });
}

// The codes of HTTP (RFC 9110), and 429 (RFC 6585).
TSMSResult ResultOf(int iStatus, const std::string& iCode) {
  if (iStatus >= 200 && iStatus < 300) return srOk;
  switch (iStatus) {
    case 401:
    case 403:
      return srUnauthorized;
    case 402:
      return srNoCredit;
    case 400:
    case 422:
      return IsAboutNumber(iCode) ? srInvalidNumber : srRejected;
    case 404:
    // An earlier hand-over of the same message still runs: whether it goes well isn't known yet.
    case 409:
    case 429:
      return srUnavailable;
    default:
      return iStatus >= 400 && iStatus < 500 ? srRejected : srUnavailable;
  }
}

TString TextOf(TSMSResult iResult, int iStatus) {
  switch (iResult) {
    case srUnauthorized:
      return u"Der SMS-Dienst erkennt den Zugangsschlüssel nicht an";
    case srNoCredit:
      return u"Das Guthaben beim SMS-Dienst ist aufgebraucht";
    case srInvalidNumber:
      return u"Der SMS-Dienst kann an diese Rufnummer nichts senden";
    case srRejected:
      return u"Der SMS-Dienst lehnt die Nachricht ab";
    default:
      break;
  }
  if (iStatus == 404) return u"Unter der Adresse in SmsUrl gibt es keinen SMS-Dienst";
  if (iStatus == 409) return u"Der SMS-Dienst bearbeitet diese Nachricht noch";
  if (iStatus == 429) return u"Der SMS-Dienst nimmt zur Zeit nicht so viele Nachrichten an";
  return Format(u"Der SMS-Dienst ist zur Zeit gestört (HTTP %d)", {iStatus});
}

}  // namespace

TSmsGateway::TSmsGateway(int iTotalMs) : FTotalMs(iTotalMs) {}

bool TSmsGateway::Send(TStringView iMessage, TStringView iNumber, TDateTime iWhen,
                       TSMSResult& oResult, TString& oErrorText) {
  TOutcome outcome = Cancelled();
  const TSmsMessage message(iMessage, iNumber, iWhen);
  if (!FStop.stop_requested()) {
    TfrmKKCommonWait::Run(u"Die SMS wird dem SMS-Dienst übergeben...",
                          [&](const std::stop_token& iStop) { outcome = Deliver(message, iStop); });
  }
  oResult = outcome.Result;
  oErrorText = outcome.ErrorText;
  return oResult == srOk;
}

TSmsGateway::TOutcome TSmsGateway::Cancelled() const {
  const bool ending = FStop.stop_requested();
  return {srCancelled, ending ? u"Abgebrochen, das Programm wird beendet" : u"Abgebrochen"};
}

TSmsGateway::TOutcome TSmsGateway::Deliver(const TSmsMessage& iMessage,
                                           const std::stop_token& iStop) {
  const TAccount account = ReadAccount();
  if (!account.Problem.empty()) return {srNotSetUp, account.Problem};
  if (iMessage.To.empty()) return {srInvalidNumber, u"Die Rufnummer ist ungültig"};
  THttpRequest request;
  request.Method = THttpMethod::hmPost;
  request.Address = account.Address;
  request.Accept = "application/json";
  request.ContentType = "application/json";
  request.Body = iMessage.Json();
  request.Headers = {{"Authorization", "Bearer " + account.Token},
                     {"Idempotency-Key", iMessage.IdempotencyKey()}};
  request.Limits.MaxBytes = cMaxAnswerBytes;
  THttpSession session(FClient, FTotalMs, iStop, FStop.get_token());
  return OutcomeOf(session.FetchRepeatable(request));
}

TSmsGateway::TOutcome TSmsGateway::OutcomeOf(const THttpResponse& iResponse) const {
  if (iResponse.Cancelled) return Cancelled();
  // The first line of the answer decides, also where the rest did not come in whole.
  if (iResponse.Status != 0) {
    const TRefusal refusal = ReadRefusal(iResponse.Body);
    const TSMSResult result = ResultOf(iResponse.Status, refusal.Code);
    if (result == srOk) return {srOk, {}};
    const TString text = TextOf(result, iResponse.Status);
    return {result, refusal.Reason.empty() ? text : text + u": " + refusal.Reason};
  }
  if (iResponse.TimedOut) {
    return {srTimeout,
            u"Der SMS-Dienst hat nicht rechtzeitig geantwortet. Ein zweiter Versuch verschickt die "
            u"Nachricht nicht doppelt"};
  }
  return {srUnavailable, u"Der SMS-Dienst ist nicht erreichbar: " + iResponse.Failure};
}

}  // namespace kk
