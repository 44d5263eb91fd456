#pragma once

#include <optional>
#include <stop_token>

#include "host/common/THttpClient.h"
#include "host/common/TOutlook.h"
#include "host/delivery/calendar/TAppointment.h"

namespace kk {

class THttpSession;

/// What the calendar objects of one factory share. Main thread, but for the stop.
struct TCalendarService {
  explicit TCalendarService(int iTotalMs) : TotalMs(iTotalMs) {}

  /// The time for all that one operation takes on the network.
  const int TotalMs;
  THttpClient Client;
  std::stop_source Stop;
  /// An appointment of which nobody knows whether the server has it, because its answer did not
  /// come. Entered again, it keeps its id, and so it can't stand there twice.
  std::optional<TAppointment> Unanswered;

  /// The text for what a stop token has ended.
  TString CancelledText() const;
};

/// A calendar on a CalDAV server (RFC 4791): one collection, in which every appointment is a
/// resource of its own. User and password come from the settings ("CalendarUser",
/// "CalendarPassword") and go over https or to this machine alone. Main thread; the wait window
/// stands meanwhile.
class TCalDavOutlook : public TOutlook {
 public:
  /// The collection's address; raises Exception if it is none. The service is borrowed.
  TCalDavOutlook(TCalendarService& ioService, TStringView iAddress);

  /// The entry id is the address of the resource.
  TString AddAppointment(TStringView iSubject, TStringView iBody, TStringView iLocation, int iFlag,
                         TDateTime iStart, int iCount) override;
  /// An id that does not lie right in this collection is not known, and nobody is asked.
  bool DeleteAppointment(TStringView iEntryId) override;

 private:
  void Put(const TAppointment& iAppointment, const std::stop_token& iStop);
  bool IsStored(const TAppointment& iAppointment, THttpSession& ioSession);
  bool Remove(const std::string& iFileName, const std::stop_token& iStop);
  /// Raises Exception if the settings would send the password in clear.
  THttpRequest Request(THttpMethod iMethod, const std::string& iFileName) const;
  [[noreturn]] void Fail(const THttpResponse& iResponse) const;

  TCalendarService& FService;
  std::string FCollection;  // ends in a slash
};

}  // namespace kk
