#pragma once

#include <stop_token>

#include "host/common/TOutlook.h"
#include "host/delivery/calendar/TCalDavOutlook.h"

namespace kk {

/// A calendar that is a folder of .ics files, one for each appointment, for programs that read such
/// folders. Main thread; the wait window stands meanwhile.
class TFolderOutlook : public TOutlook {
 public:
  /// A full path; raises Exception for any other text. The folder is made with the first
  /// appointment. The service is borrowed.
  TFolderOutlook(TCalendarService& ioService, TStringView iFolder);

  /// The entry id is the file's name in the folder.
  TString AddAppointment(TStringView iSubject, TStringView iBody, TStringView iLocation, int iFlag,
                         TDateTime iStart, int iCount) override;
  /// An id that is no name of such a file is not known.
  bool DeleteAppointment(TStringView iEntryId) override;

 private:
  TString PathOf(TStringView iFileName) const { return FFolder + u"/" + TString(iFileName); }

  TCalendarService& FService;
  TString FFolder;
};

}  // namespace kk
