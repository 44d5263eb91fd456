#pragma once

#include <memory>

#include "host/base/TDateTime.h"
#include "host/base/TString.h"

namespace kk {

/// The user's calendar, for one call or a few. Main thread; an operation keeps the main loop alive
/// while it waits.
class TOutlook {
 public:
  virtual ~TOutlook() = default;
  /// Enters an appointment and answers the id by which a later delete finds it. iStart is local
  /// time; iFlag and iCount have no meaning here. Raises Exception if that failed.
  virtual TString AddAppointment(TStringView iSubject, TStringView iBody, TStringView iLocation,
                                 int iFlag, TDateTime iStart, int iCount) = 0;
  /// Whether it was deleted; false also for an id that the calendar does not know. Raises Exception
  /// if the calendar can't be reached.
  virtual bool DeleteAppointment(TStringView iEntryId) = 0;
};

/// What makes calendar objects; the host installs one.
class IOutlookFactory {
 public:
  virtual ~IOutlookFactory() = default;
  /// Raises Exception if no calendar is set up.
  virtual std::unique_ptr<TOutlook> Create() = 0;
};
/// Installs a factory, which is borrowed, and answers the one before; null is none. Main thread.
IOutlookFactory* SetOutlookFactory(IOutlookFactory* iFactory);

/// A new calendar object. Raises Exception if there is no calendar. Main thread.
std::unique_ptr<TOutlook> CreateOutlook();

}  // namespace kk
