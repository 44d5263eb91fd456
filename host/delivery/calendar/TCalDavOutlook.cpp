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

// Whether the server may have done what it was asked for.
bool IsOpen(const THttpResponse& iResponse) {
  return iResponse.Status == 0 || iResponse.Status >= 500;
}

TString Shown(const std::string& iAddress) {
  return ShortenedText(WithoutControlCharacters(FromUtf8(iAddress)), cMaxShownAddress);
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
  for (const TAppointment& earlier : FService.Unanswered) {
    if (earlier.HasSameContent(appointment)) appointment.SetUid(earlier.Uid());
  }
  THttpResponse response;
  TfrmKKCommonWait::Run(u"Der Termin wird eingetragen...",
                        [&](const std::stop_token& iStop) { response = Put(appointment, iStop); });
  // While the window stood, others may have been entered.
  auto& unanswered = FService.Unanswered;
  std::erase_if(unanswered, [&](const TAppointment& i) { return i.Uid() == appointment.Uid(); });
  if (IsSuccess(response)) return FromUtf8(FCollection + appointment.FileName());
  if (IsOpen(response)) {
    if (unanswered.size() == TCalendarService::cMaxUnanswered) unanswered.erase(unanswered.begin());
    unanswered.push_back(appointment);
  }
  Fail(response);
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

THttpResponse TCalDavOutlook::Put(const TAppointment& iAppointment, const std::stop_token& iStop) {
  THttpRequest request = Request(hmPut, iAppointment.FileName());
  request.Body = iAppointment.Ical();
  request.ContentType = "text/calendar; charset=utf-8";
  request.Headers = {{"If-None-Match", "*"}};
  THttpSession session(FService.Client, FService.TotalMs, iStop, FService.Stop.get_token());
  const THttpResponse response = session.FetchRepeatable(request);
  if (response.Status != 412) return response;
  // An earlier attempt whose answer was lost may have brought it there.
  THttpResponse stored = session.FetchRepeatable(Request(hmGet, iAppointment.FileName()));
  if (!stored.Received()) stored.Status = 0;  // its first line says nothing of the content
  const bool isOther = IsSuccess(stored) && !iAppointment.IsIn(stored.Body);
  return isOther || stored.Status == 404 ? response : stored;
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
  // The store of passwords may be locked at this moment.
  if (!request.User.empty() && request.Password.empty()) {
    throw Exception(
        u"Das Kennwort für den Kalender (CalendarPassword) ist nicht hinterlegt oder zurzeit nicht "
        u"zugänglich");
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
