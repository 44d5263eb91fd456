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

// The columns in result views.
inline constexpr TStringView _resColumnCaptionReminder = u"Erinnerung";
inline constexpr TStringView _resColumnCaptionDateOffer = u"Daten vom";
inline constexpr TStringView _resColumnWatchlistCaption = u"Beobachten";

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
inline constexpr TStringView _resLoggingMobileFieldsLeftOut =
    u"Angaben der Quelle %s fehlen im Dokument für Kaufkobolde Mobile, weil sie keinen Namen "
    u"haben, der dort stehen kann: %s (zusammen %d)";
inline constexpr TStringView _resLoggingUnknownFileConversion =
    u"Unbekannte Watchlist-Datei-Konvertierung";

// Reminders: the kinds, in the order of TRemindType, and what a reminder writes to the log.
inline constexpr std::array<TStringView, 5> cRemindTypeText = {u"Sound", u"Meldungsfenster", u"SMS",
                                                               u"Outlook", u"E-Mail"};
inline constexpr TStringView _resLoggingRemindItemId = u"Id = %s";
inline constexpr TStringView _resLoggingRemindItemTime = u"RemindTime = %s";
inline constexpr TStringView _resLoggingRemindItemTypes = u"RemindTypes: %s";

// The editor of reminders: its window, what it refuses, and the times before the end of an auction.
inline constexpr TStringView _resEditRemindCaption = u"Erinnerung";
inline constexpr TStringView _resEditRemindType = u"Benachrichtigung";
// In the order of the editor's list, which is not that of TRemindType.
inline constexpr std::array<TStringView, 5> cEditRemindTypeText = {u"Nur Sound", u"Meldungsfenster",
                                                                   u"E-Mail", u"Outlook", u"SMS"};
inline constexpr TStringView _resEditRemindSoundFile = u"Sounddatei";
inline constexpr TStringView _resEditRemindChooseSoundFile = u"...";
inline constexpr TStringView _resEditRemindSoundFileTitle = u"Bitte Sounddatei auswählen";
inline constexpr TStringView _resEditRemindSoundFileFilter = u"Sounddatei (*.wav)|*.wav";
inline constexpr TStringView _resEditRemindTimeSpan = u"Nach Ablauf von";
inline constexpr TStringView _resEditRemindHours = u"Stunden";
inline constexpr TStringView _resEditRemindMinutes = u"Minuten";
inline constexpr TStringView _resEditRemindSeconds = u"Sekunden";
inline constexpr TStringView _resEditRemindTimeRelative = u"vor Ablauf der Auktion";
inline constexpr std::array<TStringView, 14> cRemindTimeRelativeText = {
    u"1 Minute",   u"2 Minuten", u"5 Minuten",  u"10 Minuten", u"15 Minuten",
    u"30 Minuten", u"1 Stunde",  u"2 Stunden",  u"3 Stunden",  u"4 Stunden",
    u"5 Stunden",  u"6 Stunden", u"12 Stunden", u"1 Tag"};
inline constexpr TStringView _resEditRemindChosenTime = u"ausgewählter Zeitpunkt: ";
inline constexpr TStringView _resEditRemindOK = u"&OK";
inline constexpr TStringView _resEditRemindCancel = u"&Abbrechen";
inline constexpr TStringView _resEditRemindNoSoundFile =
    u"Bitte geben Sie eine gültige Sounddatei an.";
inline constexpr TStringView _resEditRemindSoundFileNotFound =
    u"Ungültige Sounddatei!\r\nDie Datei %s konnte nicht gefunden werden.";
inline constexpr TStringView _resEditRemindTimeInPast =
    u"Das eingestellte Erinnerungsdatum darf nicht in der Vergangenheit liegen!\r\n"
    u"Derzeitiges Erinnerungsdatum: %s";
inline constexpr TStringView _resEditRemindEMailNotConfirmed =
    u"E-Mail-Benachrichtigung nicht freigeschaltet!\r\n"
    u"Um eine Benachrichtigung per E-Mail erhalten zu können, müssen Sie diese Funktionalität "
    u"zuerst in den Einstellungen freischalten.";
inline constexpr TStringView _resEditRemindNoEMail =
    u"Es wurde keine E-Mail-Adresse angegeben.\r\n"
    u"Bitte geben Sie Ihre E-Mail-Adresse in den Programmeinstellungen an oder wählen Sie eine "
    u"andere Erinnerungsart.";
// "SMS-Benachrichtungen" is how the text is spelt.
inline constexpr TStringView _resEditRemindSeveralSms =
    u"Sie haben %d Einträge markiert!\r\n"
    u"Aus Sicherheitsgründen ist es nicht zulässig, SMS-Benachrichtungen für mehrere Einträge "
    u"gleichzeitig einzurichten!";
inline constexpr TStringView _resEditRemindNoSmsNumber =
    u"Es wurde keine Mobilnummer hinterlegt.\r\n"
    u"Bitte richten Sie Ihre Mobilnummer in den Einstellungen des Programms ein\r\n"
    u"oder wählen Sie eine andere Erinnerungsart.";

// Appointments in the calendar.
inline constexpr TStringView _resLoggingSenderRemindOutlook = u"Watchlist-Reminder (Outlook)";
inline constexpr TStringView _resOutlookSubject = u"Kaufkobolde %MV%SV";
inline constexpr TStringView _resOutlookLocation = u"Erinnerung an %s";
inline constexpr TStringView _resLoggingOutlookAdded =
    u"Termin erfolgreich in Outlook eingetragen (%s)";
inline constexpr TStringView _resOutlookAddFailed =
    u"Fehler beim Eintragen des Termins in Outlook:\r\n%s";
inline constexpr TStringView _resLoggingOutlookDeleted =
    u"Termin erfolgreich gelöscht (EntryId: %s)";
inline constexpr TStringView _resLoggingOutlookNotDeleted =
    u"Termin konnte nicht gelöscht werden (EntryId: %s)";

// Reminders that are due: the thread, the five ways, and what goes out by them. In the templates
// "%MV" and "%SV" are replaced before "%s" is filled.
inline constexpr TStringView _resLoggingSenderRemind = u"Watchlist-Reminder";
inline constexpr TStringView _resLoggingSenderRemindSound = u"Watchlist-Reminder (Sound)";
inline constexpr TStringView _resLoggingSenderRemindWindow = u"Watchlist-Reminder (Window)";
inline constexpr TStringView _resLoggingSenderRemindSMS = u"Watchlist-Reminder (SMS)";
inline constexpr TStringView _resLoggingSenderRemindEMail = u"Watchlist-Reminder (E-Mail)";
inline constexpr TStringView _resLoggingRemindProcessItem = u"Melde Erinnerung";
inline constexpr TStringView _resLoggingRemindUnknownType = u"Unbekannte Erinnerungsart: %s";
inline constexpr TStringView _resLoggingRemindProcess = u"Melde...";
inline constexpr TStringView _resLoggingRemindProcessExternal = u"Meldung extern...";
inline constexpr TStringView _resLoggingRemindSoundFileNotFound = u"Datei nicht gefunden: %s";
inline constexpr TStringView _resLoggingRemindNoApplication = u"Kein Zugriff auf IApplication";
inline constexpr TStringView _resLoggingRemindNoItem = u"Kein gültiges Item vorhanden";
inline constexpr TStringView _resLoggingRemindNoDetails = u"Keine Detaildaten vorhanden";
inline constexpr TStringView _resLoggingRemindWindowFailed =
    u"Fenster konnte nicht angezeigt werden. Fehlermeldung: %s";
inline constexpr TStringView _resLoggingRemindEMailNotConfirmed =
    u"E-Mail konnte nicht verschickt werden. Empfängeradresse (%s) nicht freigeschaltet.";
inline constexpr TStringView _resLoggingRemindEMailNoAddress =
    u"E-Mail konnte nicht verschickt werden. Keine gültige Empfängeradresse angegeben.";
inline constexpr TStringView _resLoggingRemindEMailFailed =
    u"E-Mail konnte nicht verschickt werden. Fehlermeldung: %s";
inline constexpr TStringView _resLoggingRemindEMailSent = u"E-Mail erfolgreich an %s verschickt.";
inline constexpr TStringView _resLoggingRemindSMSAdded =
    u"SMS erfolgreich für %s (%s) eingerichtet.";
inline constexpr TStringView _resLoggingRemindSMSFailed =
    u"SMS konnte nicht eingerichtet werden. Fehlermeldung: (%d) %s";
// Nothing writes it: the text of an SMS goes out whole.
inline constexpr TStringView _resLoggingRemindSMSShortened = u"Text von %d auf %d Zeichen gekürzt.";
inline constexpr TStringView _resRemindEMailSubject = u"Kaufkobolde %MV%SV - Erinnerung an %s";
inline constexpr TStringView _resRemindEMailBody =
    u"Sie wollten an %s erinnert werden.\r\n%s\r\n\r\n%s\r\n\r\n"
    u"Gesendet am %s mit Kaufkobolde %MV%SV\r\n\r\nAlle Angaben ohne Gewähr";
inline constexpr TStringView _resRemindEMailSenderName = u"Kaufkobolde";
inline constexpr TStringView _resRemindSMS = u"Kaufkobolde %MV%SV - Erinnerung an %s";
inline constexpr TStringView _resRemindNotifierTitle = u"Erinnerung";
inline constexpr TStringView _resRemindNotifierLink = u"Jetzt besuchen";

// The pop-up window of a reminder.
inline constexpr TStringView _resNotificationOpenLink = u"Link in Browser öffnen";

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
inline constexpr TStringView _resNoItems =
    u"Hier stehen später Ihre beobachteten Artikel.\r\n"
    u"Suchen Sie im Bereich „Suchen“ nach einem Artikel und wählen Sie „Artikel beobachten...“.";
inline constexpr TStringView _resNoItemsInCategory =
    u"Diese Kategorie enthält selbst keine Artikel.\r\n"
    u"Nehmen Sie welche im Bereich „Suchen“ mit „Artikel beobachten...“ auf, "
    u"oder verschieben Sie welche hierher.";
inline constexpr TStringView _resLoggingAutoUpdateOnInterval =
    u"Interval für autom. Aktualisieren abgelaufen. Aktualisiere Einträge...";
inline constexpr TStringView _resLoggingAutoUpdateOnStartup =
    u"Autom. Aktualisieren bei Programmstart ausgeführt...";
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
inline constexpr TStringView _resConfirmEditReminders =
    u"Sie haben mehrere Einträge markiert!\r\n"
    u"Möchten Sie die Erinnerungen für alle %d Einträge bearbeiten?\r\n";
inline constexpr TStringView _resConfirmDeleteReminder =
    u"Soll die Erinnerung für den markierten Eintrag wirklich gelöscht werden?";
inline constexpr TStringView _resConfirmYesDelete = u"&Ja, löschen";
inline constexpr TStringView _resConfirmYesEditAll = u"&Ja, alle bearbeiten";
inline constexpr TStringView _resConfirmNoCancel = u"&Nein, abbrechen";
inline constexpr TStringView _resConfirmItemsDeleted = u"Die Einträge werden gelöscht.";
inline constexpr TStringView _resConfirmAllDeleted = u"Alle Einträge werden gelöscht.";
inline constexpr TStringView _resConfirmAllEdited = u"Alle Einträge werden bearbeitet.";
inline constexpr TStringView _resConfirmCancelled = u"Der Vorgang wird abgebrochen.";
inline constexpr TStringView _resLoggingReminderAdded = u"Neue Erinnerung angelegt";
inline constexpr TStringView _resLoggingReminderDeleted = u"Erinnerung gelöscht (%s)";

// The context menu of a source's view in the section, and the categories in menus and trees.
inline constexpr TStringView _resContextMenuItemReminderAdd = u"Erinnerung einrichten...";
inline constexpr TStringView _resContextMenuItemReminderDelete = u"Erinnerung löschen";
inline constexpr TStringView _resContextMenuItemRefreshSelected = u"Aktualisieren";
inline constexpr TStringView _resContextMenuItemRefreshAll = u"Alle aktualisieren";
inline constexpr TStringView _resContextMenuItemMoveSelected = u"Verschieben nach ...";
inline constexpr TStringView _resContextMenuItemDeleteSelected = u"Löschen";
inline constexpr TStringView _resContextMenuItemDeleteFinished = u"Beendete löschen";
inline constexpr TStringView _resContextMenuItemDeleteAll = u"Alle löschen";
inline constexpr TStringView _resContextMenuItemDescription = u"Notiz bearbeiten...";
inline constexpr TStringView _resRootNodeName = u"oberste Ebene";

// The tree of categories, its menu, its hints, and the status bar.
inline constexpr TStringView _resCategoriesCaption = u"Kategorien";
inline constexpr TStringView _resCategoriesNew = u"Neu";
inline constexpr TStringView _resCategoriesDelete = u"Löschen";
inline constexpr TStringView _resCategoriesRename = u"Bearbeiten";
inline constexpr TStringView _resMenuItemEdit = u"Markierten Eintrag bearbeiten...";
inline constexpr TStringView _resMenuItemMove = u"Markierten Eintrag verschieben nach...";
inline constexpr TStringView _resMenuItemDelete = u"Markierten Eintrag löschen";
inline constexpr TStringView _resMenuItemCategoryNew = u"Neue Kategorie...";
inline constexpr TStringView _resMenuItemAddCategoryAtLevel = u"auf dieser Ebene anlegen...";
inline constexpr TStringView _resMenuItemAddCategoryAtSubLevel = u"als Unterkategorie anlegen...";
inline constexpr TStringView _resMenuItemAddCategoryRoot = u"als Hauptkategorie anlegen...";
inline constexpr TStringView _resMenuItemUpdate = u"Markierten Eintrag aktualisieren";
inline constexpr TStringView _resMenuItemUpdateAll = u"Alles aktualisieren";
inline constexpr TStringView _resHintOneItem = u"Enthält 1 Eintrag";
inline constexpr TStringView _resHintItems = u"Enthält %d Einträge";
inline constexpr TStringView _resHintReminder = u"Erinnerung:";
inline constexpr TStringView _resHintReminderTime = u"am %s um %s";
inline constexpr TStringView _resStatusUpdate = u"Aktualisierung: %d";

// The explorer bar of the section.
inline constexpr TStringView _resExplorerBarGroupCategory = u"Kategorie";
inline constexpr TStringView _resExplorerBarPanelDetails = u"Details";
inline constexpr TStringView _resExplorerBarGroupReminder = u"Erinnerung";
inline constexpr TStringView _resExplorerBarPanelMore = u"Weitere Optionen";
inline constexpr TStringView _resExplorerBarCategoryEdit = u"Kategorie bearbeiten...";
inline constexpr TStringView _resExplorerBarCategoryUpdate = u"Kategorie aktualisieren";
inline constexpr TStringView _resExplorerBarCategoryName = u"Kategorie:";
inline constexpr TStringView _resExplorerBarCategoryCount = u"Anzahl Einträge:";
inline constexpr TStringView _resExplorerBarCategoryDescription = u"Beschreibung:";
inline constexpr TStringView _resExplorerBarRemindAdd = u"Erinnerung einrichten...";
inline constexpr TStringView _resExplorerBarRemindEdit = u"Erinnerung bearbeiten...";
inline constexpr TStringView _resExplorerBarRemindDelete = u"Erinnerung löschen";
inline constexpr TStringView _resExplorerBarRemindType = u"Meldung:";
inline constexpr TStringView _resExplorerBarRemindSound = u"+ Sound";
inline constexpr TStringView _resExplorerBarRemindDate = u"Datum:";
inline constexpr TStringView _resExplorerBarRemindTime = u"Uhrzeit:";
inline constexpr TStringView _resExplorerBarDetailsDescription = u"Notiz";
inline constexpr TStringView _resExplorerBarDetailsEditDescription = u"Notiz bearbeiten...";
inline constexpr TStringView _resExplorerBarDetailsUpdateDateTime = u"Letzte Aktualisierung:";
inline constexpr TStringView _resExplorerBarDetailsUpdate = u"Eintrag aktualisieren";
inline constexpr TStringView _resExplorerBarDetailsUpdateNotIfFinished =
    u"Eintrag beendet. Aktualisierung nicht möglich.";
inline constexpr TStringView _resExplorerBarMoreExport = u"Daten exportieren...";
inline constexpr TStringView _resExplorerBarMoreImport = u"Daten importieren...";
inline constexpr TStringView _resExplorerBarMorePrint = u"Daten drucken...";
inline constexpr TStringView _resExplorerBarMoreDisclaimer =
    u"* Die Preise und Versandkosten können sich seit der letzten Aktualisierung verändert haben. "
    u"Es ist technisch nicht möglich, die angegebenen Preise in Echtzeit zu aktualisieren. Es gilt "
    u"der Preis zum Zeitpunkt des Kaufs auf der Website des Verkäufers.";
/// For no items, and for an item that was never refreshed.
inline constexpr TStringView _resExplorerBarNone = u"-";
/// What stands for the lines that are left out.
inline constexpr TStringView _resExplorerBarMoreLines = u"...";

// The editors of a category and of a note.
inline constexpr TStringView _resEditCategoryCaptionEdit = u"Kategorie bearbeiten";
inline constexpr TStringView _resEditCategoryCaptionNew = u"Kategorie anlegen";
inline constexpr TStringView _resEditCategoryName = u"Name";
inline constexpr TStringView _resEditCategoryDescription = u"Beschreibung";
inline constexpr TStringView _resEditDescriptionCaption = u"Notiz";
inline constexpr TStringView _resEditOK = u"&OK";
inline constexpr TStringView _resEditCancel = u"&Abbrechen";

// What the rules of the section refuse, for a host without its menus.
inline constexpr TStringView _resRefusedNotReady = u"Die Beobachtenliste ist nicht bereit.";
inline constexpr TStringView _resRefusedNoSuchCategory = u"Es gibt keine Kategorie mit der Id %s.";
inline constexpr TStringView _resRefusedNoSuchItem = u"Es gibt keinen Eintrag mit der Id %s.";
inline constexpr TStringView _resRefusedNoSuchSource = u"Es gibt keine Quelle mit der Id %s.";
inline constexpr TStringView _resRefusedEmptyName = u"Bitte geben Sie einen Namen an.";
inline constexpr TStringView _resRefusedUnassigned =
    u"Das geht nicht mit der Kategorie \"<Keiner Kategorie zugewiesen>\".";
inline constexpr TStringView _resRefusedIntoItself =
    u"Eine Kategorie kann nicht in sich selbst oder eine ihrer Unterkategorien verschoben werden.";
inline constexpr TStringView _resRefusedTooDeep =
    u"Kategorien können höchstens %d Ebenen tief verschachtelt werden.";

// The settings page, and the name under which settings are exchanged.
inline constexpr TStringView _resSettingsCaption = u"Beobachten";
inline constexpr TStringView _resSettingsUpdate = u"Aktualisierung";
inline constexpr TStringView _resSettingsUpdateOnStartup =
    u"Einträge bei Programmstart aktualisieren";
inline constexpr TStringView _resSettingsUpdateOnInterval = u"Einträge automatisch alle";
inline constexpr TStringView _resSettingsInterval = u"Stunden aktualisieren";
inline constexpr TStringView _resSettingsView = u"Darstellung";
inline constexpr TStringView _resSettingsShowAddDialog =
    u"Kategorieauswahlfenster beim Hinzufügen von Einträgen anzeigen";
inline constexpr TStringView _resSettingsShowItemCount =
    u"Anzahl der Einträge hinter Kategorien anzeigen";
inline constexpr TStringView _resSettingsShowItemCountRecursive =
    u"Dabei auch Einträge in untergeordneten Kategorien berücksichtigen";
inline constexpr TStringView _resSettingsReminder = u"Voreinstellung Erinnerung";
inline constexpr TStringView _resSettingsSoundfile = u"Sounddatei";
inline constexpr TStringView _resSettingsChooseSoundfile = u"...";
inline constexpr TStringView _resSettingsSoundfileTitle = u"Bitte Sounddatei auswählen";
inline constexpr TStringView _resSettingsSoundfileFilter = u"Sounddatei (*.wav)|*.wav";
inline constexpr TStringView _resSettingsStoreLastSelectedSoundfile =
    u"Zuletzt ausgewählte Sounddatei speichern";
inline constexpr TStringView _resSettingsAutoActivateReminder =
    u"Beim Hinzufügen immer automatisch Erinnerung aktivieren (sofern möglich)";
inline constexpr TStringView _resSettingsUseLastSettings =
    u"Immer den zuletzt gewählten Zeitpunkt nutzen";
inline constexpr TStringView _resSettingsUseDefaultSettings =
    u"Immer folgende Standardeinstellungen nutzen:";
inline constexpr TStringView _resSettingsRemindType = u"Benachrichtigung";
inline constexpr std::array<TStringView, 2> cSettingsRemindTypeText = {u"Nur Sound",
                                                                       u"Meldungsfenster"};
inline constexpr TStringView _resSettingsTimeSpan = u"Nach Ablauf von";
inline constexpr TStringView _resSettingsHours = u"Std";
inline constexpr TStringView _resSettingsMinutes = u"Min";
inline constexpr TStringView _resSettingsSeconds = u"Sek";
inline constexpr TStringView _resSettingsTimeRelative = u"vor Ablauf der Auktion";
inline constexpr TStringView _resSettingsNoInteger = u"'%s' ist keine gültige ganze Zahl (%s)";
inline constexpr TStringView _resSettingsNoBoolean = u"'%s' ist weder \"-1\" noch \"0\" (%s)";

// Export and import.
inline constexpr TStringView _resExportCaption = u"Beobachten (Export)";
inline constexpr TStringView _resExportQuestion = u"Welche Daten sollen exportiert werden?";
inline constexpr TStringView _resImportCaption = u"Beobachten (Import)";
inline constexpr TStringView _resImportQuestion = u"Welche Daten sollen importiert werden?";
inline constexpr TStringView _resExchangeRemindItems = u"Erinnerungen (%d vorhanden)";
inline constexpr TStringView _resExchangeCategories = u"Kategorien (%d vorhanden)";
inline constexpr TStringView _resExchangeIntegration = u"%s [%d Einträge vorhanden]";
inline constexpr TStringView _resExchangeFileName = u"Beobachten.wch";
inline constexpr TStringView _resExchangeFilter =
    u"Beobachten-Dateien (*.wch)|*.wch|Alle Dateien (*.*)|*.*";
inline constexpr TStringView _resExportNothing =
    u"Es liegen keine Einträge vor, die exportiert werden können.";
// An export without the dialog refuses these.
inline constexpr TStringView _resExportOwnFile =
    u"In %s steht die Beobachtenliste selbst. Bitte geben Sie eine andere Datei an.";
inline constexpr TStringView _resExportNoFile =
    u"%s ist ein Ordner oder Gerät. Bitte geben Sie eine Datei an.";
// A file that was given to the program, and not chosen in the dialog.
inline constexpr TStringView _resImportUnreadable =
    u"Diese Datei ist keine Beobachtenliste oder beschädigt: %s";
inline constexpr TStringView _resImportReading = u"Die Datei wird gelesen...";
/// Followed by today's date in its short form.
inline constexpr TStringView _resImportCategoryName = u"Import ";
inline constexpr TStringView _resImportAskForCategoryCaption = u"Beobachten - Kategorie";
inline constexpr TStringView _resImportAskForCategory =
    u"Bitte wählen Sie eine Kategorie aus, in die die importierten Einträge eingefügt werden "
    u"sollen:";
inline constexpr TStringView _resImportProgressCaption = u"Import";
inline constexpr TStringView _resImportSteps = u"Ermittle Schritte...";
inline constexpr TStringView _resImportNewCategory = u"Verschiebe Einträge in neue Kategorie...";
inline constexpr TStringView _resImportCategories = u"Übernehme Kategoriestruktur...";
inline constexpr TStringView _resImportItems = u"Übernehme Einträge...";
inline constexpr TStringView _resImportRemindItems = u"Übernehme Erinnerungen...";
inline constexpr TStringView _resImportDescription = u"Erstellt durch Import am %s um %s";

inline constexpr TStringView _resDataStreamName = u"Beobachten";
inline constexpr TStringView _resDataStreamNameMobile = u"Beobachten (für Kaufkobolde Mobile)";

// Print.
inline constexpr TStringView _resPrintCaption = u"Beobachten Kategorien Drucken";
inline constexpr TStringView _resPrintQuestion = u"Bitte wählen Sie die Kategorien aus:";
inline constexpr TStringView _resPrintNothing =
    u"Es existiert keine Beobachten-Kategorie, die mindestens einen Artikel beinhaltet.";
inline constexpr TStringView _resPrintCategory = u"%s (%d)";
/// The 7 is a part of the text, not the version of the program.
inline constexpr TStringView _resPrintTitle = u"Kaufkobolde 7 -> Beobachten -> %s";
inline constexpr TStringView _resPrintDate = u"Gedruckt am: %s";

}  // namespace kk
