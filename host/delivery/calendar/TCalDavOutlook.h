#pragma once

#include <stop_token>
#include <vector>

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
  /// Appointments of which nobody knows whether the server has them, because its answer did not
  /// come; the last cMaxUnanswered. Entered again, each keeps its id, and so it can't stand there
  /// twice.
  std::vector<TAppointment> Unanswered;
  static constexpr size_t cMaxUnanswered = 100;

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
  THttpResponse Put(const TAppointment& iAppointment, const std::stop_token& iStop);
  bool Remove(const std::string& iFileName, const std::stop_token& iStop);
  /// Raises Exception if the settings would send the password in clear, or a user without one.
  THttpRequest Request(THttpMethod iMethod, const std::string& iFileName) const;
  [[noreturn]] void Fail(const THttpResponse& iResponse) const;

  TCalendarService& FService;
  std::string FCollection;  // ends in a slash
};

}  // namespace kk
