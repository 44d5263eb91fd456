#include "host/delivery/calendar/TCalDavOutlook.h"

#include "host/base/Exception.h"
#include "host/common/THttpAddress.h"
#include "host/common/THttpSession.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/controls/TfrmKKCommonWait.h"

namespace kk {

namespace {

using enum THttpMethod;

constexpr size_t cMaxAnswerBytes = size_t{256} << 10;
constexpr size_t cMaxShownAddress = 200;

bool IsSuccess(const THttpResponse& iResponse) {
  return iResponse.Status >= 200 && iResponse.Status < 300;
}

TString Shown(const std::string& iAddress) {
  return WithoutControlCharacters(FromUtf8(iAddress)).substr(0, cMaxShownAddress);
}

// What the server's refusal means (RFC 9110; 507: RFC 4918).
TString TextOf(const THttpResponse& iResponse) {
  switch (iResponse.Status) {
    case 301:
    case 302:
    case 303:
    case 307:
    case 308:
      return u"Der Kalender ist umgezogen. Bitte tragen Sie seine neue Adresse ein: " +
             Shown(iResponse.Location);
    case 401:
      return u"Benutzer oder Kennwort für den Kalender sind falsch";
    case 403:
      return u"Der Benutzer darf in diesem Kalender nichts ändern";
    case 404:
    case 405:
    case 409:
    case 410:
      return u"Unter der eingestellten Adresse gibt es keinen Kalender";
    case 412:
      return u"Im Kalender steht unter dieser Kennung schon etwas anderes";
    case 413:
    case 507:
      return u"Der Kalender hat keinen Platz für den Termin";
    case 429:
      return u"Der Kalender nimmt zur Zeit nicht so viele Anfragen an";
    default:
      break;
  }
  const bool gone = iResponse.Status >= 500;
  return Format(gone ? u"Der Kalender ist zur Zeit gestört (HTTP %d)"
                     : u"Der Kalender lehnt die Anfrage ab (HTTP %d)",
                {iResponse.Status});
}

}  // namespace

TString TCalendarService::CancelledText() const {
  return Stop.stop_requested() ? u"Abgebrochen, das Programm wird beendet" : u"Abgebrochen";
}

TCalDavOutlook::TCalDavOutlook(TCalendarService& ioService, TStringView iAddress)
    : FService(ioService) {
  const auto address = THttpAddress::Parse(ToUtf8(Trim(iAddress)));
  if (!address || !address->Query.empty()) {
    throw Exception(
        u"Die Adresse des Kalenders (CalendarUrl) ist ungültig; sie muss mit https:// beginnen");
  }
  FCollection = address->Text;
  if (FCollection.back() != '/') FCollection += '/';
}

TString TCalDavOutlook::AddAppointment(TStringView iSubject, TStringView iBody,
                                       TStringView iLocation, int, TDateTime iStart, int) {
  if (FService.Stop.stop_requested()) throw Exception(FService.CancelledText());
  TAppointment appointment(iSubject, iBody, iLocation, iStart);
  auto& unanswered = FService.Unanswered;
  if (unanswered && unanswered->HasSameContent(appointment)) {
    appointment.SetUid(unanswered->Uid());
  }
  unanswered = appointment;
  TfrmKKCommonWait::Run(u"Der Termin wird eingetragen...",
                        [&](const std::stop_token& iStop) { Put(appointment, iStop); });
  unanswered.reset();
  return FromUtf8(FCollection + appointment.FileName());
}

bool TCalDavOutlook::DeleteAppointment(TStringView iEntryId) {
  if (FService.Stop.stop_requested()) throw Exception(FService.CancelledText());
  // An id may come from a foreign file: only its last part is taken, the way there is our own.
  const TString collection = FromUtf8(FCollection);
  if (!StartsWith(iEntryId, collection)) return false;
  const TStringView fileName = iEntryId.substr(collection.size());
  if (!TAppointment::IsFileName(fileName)) return false;
  bool deleted = false;
  TfrmKKCommonWait::Run(u"Der Termin wird gelöscht...", [&](const std::stop_token& iStop) {
    deleted = Remove(ToUtf8(fileName), iStop);
  });
  return deleted;
}

void TCalDavOutlook::Put(const TAppointment& iAppointment, const std::stop_token& iStop) {
  THttpRequest request = Request(hmPut, iAppointment.FileName());
  request.Body = iAppointment.Ical();
  request.ContentType = "text/calendar; charset=utf-8";
  request.Headers = {{"If-None-Match", "*"}};
  THttpSession session(FService.Client, FService.TotalMs, iStop, FService.Stop.get_token());
  const THttpResponse response = session.FetchRepeatable(request);
  if (IsSuccess(response)) return;
  // An earlier attempt whose answer was lost has brought it there.
  if (response.Status == 412 && IsStored(iAppointment, session)) return;
  Fail(response);
}

bool TCalDavOutlook::IsStored(const TAppointment& iAppointment, THttpSession& ioSession) {
  const THttpResponse response = ioSession.FetchRepeatable(Request(hmGet, iAppointment.FileName()));
  if (!response.Received()) Fail(response);
  return IsSuccess(response) && iAppointment.IsIn(response.Body);
}

bool TCalDavOutlook::Remove(const std::string& iFileName, const std::stop_token& iStop) {
  THttpSession session(FService.Client, FService.TotalMs, iStop, FService.Stop.get_token());
  bool repeated = false;
  const THttpResponse response = session.FetchRepeatable(Request(hmDelete, iFileName), &repeated);
  if (IsSuccess(response)) return true;
  // Gone at the second attempt, it went by the first.
  if (response.Status == 404 || response.Status == 410) return repeated;
  Fail(response);
}

THttpRequest TCalDavOutlook::Request(THttpMethod iMethod, const std::string& iFileName) const {
  const TIniFileSectionCommunication settings;
  THttpRequest request;
  request.Method = iMethod;
  request.Address = FCollection + iFileName;
  request.User = ToUtf8(settings.GetCalendarUser());
  request.Password = ToUtf8(settings.GetCalendarPassword());
  request.Limits.MaxBytes = cMaxAnswerBytes;
  request.Limits.MaxRedirects = 0;
  const bool secret = !request.User.empty() || !request.Password.empty();
  if (secret && !THttpAddress::Parse(FCollection)->IsSafeForSecrets()) {
    throw Exception(
        u"Die Adresse des Kalenders (CalendarUrl) muss mit https:// beginnen, sonst könnten andere "
        u"das Kennwort mitlesen");
  }
  return request;
}

void TCalDavOutlook::Fail(const THttpResponse& iResponse) const {
  if (iResponse.Cancelled) throw Exception(FService.CancelledText());
  if (iResponse.Status != 0 && !IsSuccess(iResponse)) throw Exception(TextOf(iResponse));
  if (iResponse.TimedOut) throw Exception(u"Der Kalender hat nicht rechtzeitig geantwortet");
  throw Exception(u"Der Kalender ist nicht erreichbar: " + iResponse.Failure);
}

}  // namespace kk
