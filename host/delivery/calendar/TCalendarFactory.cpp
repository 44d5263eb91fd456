#include "host/delivery/calendar/TCalendarFactory.h"

#include "host/base/Exception.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/delivery/calendar/TFolderOutlook.h"

namespace kk {

TCalendarFactory::TCalendarFactory(int iTotalMs) : FService(iTotalMs) {}

std::unique_ptr<TOutlook> TCalendarFactory::Create() {
  if (FService.Stop.stop_requested()) throw Exception(FService.CancelledText());
  const TIniFileSectionCommunication settings;
  const TString address = settings.GetCalendarUrl();
  if (!Trim(address).empty()) return std::make_unique<TCalDavOutlook>(FService, address);
  const TString folder = settings.GetCalendarFolder();
  if (!Trim(folder).empty()) return std::make_unique<TFolderOutlook>(FService, folder);
  throw Exception(
      u"Es ist kein Kalender eingerichtet. Bitte geben Sie in den Einstellungen die Adresse eines "
      u"Kalenders (CalendarUrl) oder einen Ordner für Termine (CalendarFolder) an.");
}

}  // namespace kk
