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

}  // namespace kk
