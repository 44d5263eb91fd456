#pragma once

#include "host/base/TString.h"

namespace kk {

inline constexpr TStringView _resSearchCaption = u"Suchen";
inline constexpr TStringView _resSearchStart = u"&Suchen";
inline constexpr TStringView _resSearchCancel = u"&Abbrechen";
inline constexpr TStringView _resSearchPanelMore = u"Weitere Optionen";

inline constexpr TStringView _resSearchMoreHint = u"Wählen Sie in der Liste Ergebnisse aus.";

inline constexpr TStringView _resSearchNoSource =
    u"Es ist keine Quelle da, in der gesucht werden kann.";
inline constexpr TStringView _resSearchEmptyHint =
    u"Geben Sie oben ein, was gesucht werden soll, und drücken Sie die Eingabetaste. Umschalt und "
    u"Eingabetaste beginnen eine weitere Zeile; bei mehreren Zeilen suchen Strg und Eingabetaste. "
    u"Was gefunden wird, steht dann hier.";
inline constexpr TStringView _resSearchTryExample = u"Beispielladen ausprobieren";

inline constexpr TStringView _resSearchNothingToSearch = u"Geben Sie zuerst etwas ein.";
inline constexpr TStringView _resSearchTooLong =
    u"Das ist zu viel auf einmal: Es werden höchstens %d Zeichen genommen.";
inline constexpr TStringView _resSearchRunning = u"Es wird gesucht - bisher %s";
inline constexpr TStringView _resSearchCancelled = u"Abgebrochen - %s";
inline constexpr TStringView _resSearchNoResult = u"kein Ergebnis";
inline constexpr TStringView _resSearchOneResult = u"1 Ergebnis";
inline constexpr TStringView _resSearchResults = u"%d Ergebnisse";
inline constexpr TStringView _resSearchWithOneProblem = u"%s, 1 Problem";
inline constexpr TStringView _resSearchWithProblems = u"%s, %d Probleme";
inline constexpr TStringView _resSearchProblemShortened = u"Der Text ist gekürzt.";
inline constexpr TStringView _resSearchOneMoreProblem = u"Und ein weiteres Problem.";
inline constexpr TStringView _resSearchMoreProblems = u"Und %d weitere Probleme.";
inline constexpr TStringView _resSearchShowProblems = u"Alle Proble&me anzeigen...";
inline constexpr TStringView _resSearchProblemsCaption = u"Probleme bei der Suche";
inline constexpr TStringView _resSearchClose = u"&Schließen";

}  // namespace kk
