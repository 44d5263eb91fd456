#pragma once

#include <array>

#include "host/base/TString.h"

/// The texts that users and readers of the log see, German, in the order of the rooms that show
/// them. "%s" and "%d" are filled by Format.
namespace kk {

// The plug-in.
inline constexpr TStringView _resToolButtonCaption = u"Beobachten";
// Looks unfinished and is required: the host gets a single question mark.
inline constexpr TStringView _resPluginLongDescription = u"?";
// A fixed text, not a computed value.
inline constexpr TStringView _resPluginSignature = u"CRC von Datei + Id";
inline constexpr TStringView _resLoggingSenderPlugin = u"Plugin";
inline constexpr TStringView _resLoggingWatchlistIntegrationFound = u"Integration erkannt: %s [%s]";
inline constexpr TStringView _resLoggingCmdParamAdd =
    u"Importiere neuen Eintrag über Kommandozeile: %s";
inline constexpr TStringView _resLoggingcmdParamImportFromFile =
    u"Importiere aus Datei über Kommandozeile: %s";

// The window that waits for running refreshes.
inline constexpr TStringView _resWaitForThreadsCaption = u"Warten auf Beobachtenliste";
inline constexpr TStringView _resWaitForThreadsInfo =
    u"Die laufenden Aktualisierungen in der Beobachtenliste werden beendet.";

// What other plug-ins' views show of the watch list, and its interface for them.
inline constexpr TStringView _resContextMenuItemSearchLocationIntegrationAdd =
    u"Artikel beobachten...";
// Nothing shows it: the column's check does nothing.
inline constexpr TStringView _resContextMenuItemSearchLocationIntegrationCheck =
    u"Überprüfen, ob Eintrag in Beobachtenliste enthalten ist...";
inline constexpr TStringView _resWatchlistExplorerBandbar = u"Artikel beobachten...";
inline constexpr TStringView _resLoggingSenderIWatchlist = u"Watchlist-Interface";
inline constexpr TStringView _resLoggingInsertItem = u"Füge neuen Eintrag ein...";
inline constexpr TStringView _resLoggingInsertItemEmpty =
    u"Eintrag abgelehnt: Leeren Eintrag (=nil) erhalten!";
inline constexpr TStringView _resLoggingInsertItemUnknownPlugin =
    u"Eintrag abgelehnt: Plugin unbekannt (%s)!";
inline constexpr TStringView _resLoggingInsertItemAlreadyKnown =
    u"Eintrag abgelehnt: Bereits in Beobachtenstruktur enthalten!";
inline constexpr TStringView _resLoggingInsertItemRejectedByUser =
    u"Eintrag abgelehnt: User hat Eintrag abgelehnt!";
inline constexpr TStringView _resLoggingSenderSearchLocationIntegration =
    u"SearchLocationIntegration";
inline constexpr TStringView _resLoggingInsertSearchResults =
    u"%d neue Suchergebnisse aus Plugin %s einfügen (Zielintegration: %s / %s).";

// The watch list file.
inline constexpr TStringView _resLoggingSenderWatchlistHandler = u"WatchlistHandler";
inline constexpr TStringView _resEmptyCategoryName = u"<Keiner Kategorie zugewiesen>";
inline constexpr TStringView _resLoggingFileNotFound = u"Datei nicht vorhanden: %s";
inline constexpr TStringView _resLoggingFileVersionOlder = u"Datei-Version ist älter: %d, %d";
inline constexpr TStringView _resLoggingFileVersionNewer = u"Datei-Version ist neuer: %d, %d";
inline constexpr TStringView _resFileNotFoundInZip = u"Datei nicht in ZIP gefunden: %s";
inline constexpr TStringView _resLoggingFileLoadFailed =
    u"Datei konnte nicht geladen werden (%s). Fehlermeldung: %s";
inline constexpr TStringView _resLoggingFileSaveFailed =
    u"Datei konnte nicht gespeichert werden (%s). Fehlermeldung: %s";
inline constexpr TStringView _resLoggingUnknownFileConversion =
    u"Unbekannte Watchlist-Datei-Konvertierung";

// Reminders: the kinds, in the order of TRemindType, and what a reminder writes to the log.
inline constexpr std::array<TStringView, 5> cRemindTypeText = {u"Sound", u"Meldungsfenster", u"SMS",
                                                               u"Outlook", u"E-Mail"};
inline constexpr TStringView _resLoggingRemindItemId = u"Id = %s";
inline constexpr TStringView _resLoggingRemindItemTime = u"RemindTime = %s";
inline constexpr TStringView _resLoggingRemindItemTypes = u"RemindTypes: %s";

// The refresh queue of a source.
inline constexpr TStringView _resLoggingSenderUpdater = u"Updater (%s)";
inline constexpr TStringView _resLoggingUpdaterStartUpdate = u"Update für %s gestartet";
inline constexpr TStringView _resLoggingUpdaterFinishedSuccess = u"Update für %s erfolgreich";
inline constexpr TStringView _resLoggingUpdaterFinishedFailed = u"Update für %s fehlgeschlagen";

// The panel that adds results through a first refresh.
inline constexpr TStringView _resAddProgressCaption = u"Hinzufügen";
inline constexpr TStringView _resAddProgressInfo =
    u"Bitte warten - neue Suchergebnisse werden hinzugefügt.";
inline constexpr TStringView _resAddProgressCancel = u"Abbrechen";

// The question for the category of new results.
inline constexpr TStringView _resAddSearchResultsCaption = u"Zu Beobachtenliste hinzufügen";
inline constexpr TStringView _resAddSearchResultsCategory =
    u"Kategorie, in die die Suchergebnisse eingefügt werden sollen:";
inline constexpr TStringView _resAddSearchResultsPreset =
    u"Kategorie als Voreinstellung übernehmen";
inline constexpr TStringView _resAddSearchResultsNotAgain =
    u"Diesen Dialog nicht mehr anzeigen (weitere Suchergebnisse werden automatisch in die "
    u"voreingestellte Kategorie übernommen).";
inline constexpr TStringView _resAddSearchResultsOnlyNew = u"Nur neue zuordnen";
inline constexpr TStringView _resAddSearchResultsAll = u"Alle zuordnen";
inline constexpr TStringView _resAddSearchResultsCancel = u"Abbrechen";

// The section: its commands and their questions.
inline constexpr TStringView _resLoggingSenderForm = u"Form";
inline constexpr TStringView _resNewCategoryName = u"Neu";
inline constexpr TStringView _resCategoryNameExists =
    u"Der angegebene Kategoriename (%s) existiert bereits!\r\n"
    u"Bitte geben sie einen anderen Namen an.";
inline constexpr TStringView _resConfirmDeleteSingle =
    u"Soll der markierte Eintrag wirklich gelöscht werden?";
inline constexpr TStringView _resConfirmDeleteMultiple =
    u"Sollen die %d markierten Einträge wirklich gelöscht werden?";
inline constexpr TStringView _resConfirmDeleteCategory =
    u"Soll die markierte Kategorie wirklich gelöscht werden?";
inline constexpr TStringView _resConfirmDeletePluginOneItem =
    u"Soll die markierte Kategorie wirklich gelöscht werden?\r\nEs ist noch ein Eintrag enthalten.";
inline constexpr TStringView _resConfirmDeletePluginItems =
    u"Soll die markierte Kategorie wirklich gelöscht werden?\r\n"
    u"Es sind noch %d Einträge enthalten.";
inline constexpr TStringView _resConfirmDeleteCategoryWithContents =
    u"Es sind noch untergeordnete Daten vorhanden.\r\n"
    u"Soll die markierte Kategorie wirklich gelöscht werden?";
inline constexpr TStringView _resConfirmEditDescriptions =
    u"Sie haben mehrere Einträge markiert!\r\n"
    u"Möchten Sie die Beschreibung für alle %d Einträge bearbeiten?";
inline constexpr TStringView _resConfirmDeleteReminder =
    u"Soll die Erinnerung für den markierten Eintrag wirklich gelöscht werden?";
inline constexpr TStringView _resConfirmYesDelete = u"&Ja, löschen";
inline constexpr TStringView _resConfirmYesEditAll = u"&Ja, alle bearbeiten";
inline constexpr TStringView _resConfirmNoCancel = u"&Nein, abbrechen";
inline constexpr TStringView _resConfirmItemsDeleted = u"Die Einträge werden gelöscht.";
inline constexpr TStringView _resConfirmAllDeleted = u"Alle Einträge werden gelöscht.";
inline constexpr TStringView _resConfirmAllEdited = u"Alle Einträge werden bearbeitet.";
inline constexpr TStringView _resConfirmCancelled = u"Der Vorgang wird abgebrochen.";
inline constexpr TStringView _resLoggingReminderDeleted = u"Erinnerung gelöscht (%s)";

// What the rules of the section refuse, for a host without its menus.
inline constexpr TStringView _resRefusedNotReady = u"Die Beobachtenliste ist nicht bereit.";
inline constexpr TStringView _resRefusedNoSuchCategory = u"Es gibt keine Kategorie mit der Id %s.";
inline constexpr TStringView _resRefusedNoSuchItem = u"Es gibt keinen Eintrag mit der Id %s.";
inline constexpr TStringView _resRefusedEmptyName = u"Bitte geben Sie einen Namen an.";
inline constexpr TStringView _resRefusedUnassigned =
    u"Das geht nicht mit der Kategorie \"<Keiner Kategorie zugewiesen>\".";
inline constexpr TStringView _resRefusedIntoItself =
    u"Eine Kategorie kann nicht in sich selbst oder eine ihrer Unterkategorien verschoben werden.";
inline constexpr TStringView _resRefusedTooDeep =
    u"Kategorien können höchstens %d Ebenen tief verschachtelt werden.";

// What the section can't do yet.
inline constexpr TStringView _resLoggingNoImport = u"Import ist noch nicht möglich: %s";
inline constexpr TStringView _resLoggingNoMobileImport =
    u"Import von Kaufkobolde Mobile ist noch nicht möglich.";
inline constexpr TStringView _resLoggingNoAutoReminder =
    u"Automatische Erinnerungen sind noch nicht möglich. Es wurde keine angelegt.";
inline constexpr TStringView _resLoggingNoAppointments =
    u"Termine im Kalender können noch nicht gelöscht werden. Der Termin bleibt bestehen.";

}  // namespace kk
