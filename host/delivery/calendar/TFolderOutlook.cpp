#include "host/delivery/calendar/TFolderOutlook.h"

#include "host/base/Exception.h"
#include "host/base/Guard.h"
#include "host/common/TFileHelper.h"
#include "host/controls/TfrmKKCommonWait.h"

namespace kk {

namespace {

constexpr unsigned cOwnerOnly = 0600;

}  // namespace

TFolderOutlook::TFolderOutlook(TCalendarService& ioService, TStringView iFolder)
    : FService(ioService), FFolder(Trim(iFolder)) {
  if (!StartsWith(FFolder, u"/")) {
    throw Exception(u"Der Ordner für Termine (CalendarFolder) muss ein vollständiger Pfad sein");
  }
}

TString TFolderOutlook::AddAppointment(TStringView iSubject, TStringView iBody,
                                       TStringView iLocation, int, TDateTime iStart, int) {
  if (FService.Stop.stop_requested()) throw Exception(FService.CancelledText());
  const TAppointment appointment(iSubject, iBody, iLocation, iStart);
  TString fileName = FromUtf8(appointment.FileName());
  TfrmKKCommonWait::Run(u"Der Termin wird eingetragen...", [&](const std::stop_token&) {
    MakeHostFolder(FFolder);
    try {
      WriteFileAtomically(PathOf(fileName), appointment.Ical(), cOwnerOnly);
    } catch (const Exception&) {
      // Who is told that it isn't entered enters it again.
      Guarded(u"Kalender", [&] { DeleteFile(PathOf(fileName)); });
      throw;
    }
  });
  return fileName;
}

bool TFolderOutlook::DeleteAppointment(TStringView iEntryId) {
  if (FService.Stop.stop_requested()) throw Exception(FService.CancelledText());
  if (!TAppointment::IsFileName(iEntryId)) return false;
  bool found = false;
  TfrmKKCommonWait::Run(u"Der Termin wird gelöscht...", [&](const std::stop_token&) {
    found = FileExists(PathOf(iEntryId));
    if (found) DeleteFile(PathOf(iEntryId));
  });
  return found;
}

}  // namespace kk
