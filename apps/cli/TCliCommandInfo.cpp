#include "apps/cli/TCliCommandInfo.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace kk {
namespace {

constexpr auto cCommands = std::to_array<TCliCommandInfo>({
    {u"add", 1, cCliAnyNumber, coCategory | coCreate, u"ADRESSE... [--category NAME [--create]]",
     u"Artikel über ihre Adresse in die Beobachtenliste aufnehmen"},
    {u"list", 0, 0, coJson, u"[--json]", u"die ganze Beobachtenliste zeigen"},
    {u"show", 1, 1, coJson, u"ARTIKEL [--json]",
     u"alles zeigen, was über einen Artikel bekannt ist"},
    {u"print", 0, 0, coCategory | coPdf, u"--category NAME --pdf DATEI",
     u"die Artikel einer Kategorie als PDF-Datei drucken, ohne die ihrer Unterkategorien"},
    {u"refresh", 0, 1, 0, u"[ARTIKEL | KATEGORIE]",
     u"aktualisieren: alles, eine Kategorie samt Unterkategorien oder einen Artikel"},
    {u"move", 2, cCliAnyNumber, 0, u"ARTIKEL... KATEGORIE",
     u"Artikel in eine Kategorie verschieben"},
    {u"delete", 1, cCliAnyNumber, 0, u"ARTIKEL... [--yes]", u"Artikel löschen"},
    {u"note", 1, cCliAnyNumber, coText,
     u"ARTIKEL ZEILE... | ARTIKEL... --text ZEILE [--text ZEILE]... [--yes]",
     u"die Notiz ersetzen"},
    {u"category add", 1, 1, coIn | coText, u"NAME [--in KATEGORIE] [--text ZEILE]",
     u"Kategorie anlegen"},
    {u"category rename", 2, 2, 0, u"KATEGORIE NAME", u"Kategorie umbenennen"},
    {u"category describe", 1, cCliAnyNumber, coText, u"KATEGORIE ZEILE...",
     u"die Beschreibung einer Kategorie ersetzen"},
    {u"category move", 1, 2, coTop, u"KATEGORIE ZIEL | KATEGORIE --top",
     u"Kategorie unter eine andere oder auf die oberste Ebene verschieben"},
    {u"category delete", 1, 1, 0, u"KATEGORIE [--yes]",
     u"Kategorie mit allem löschen, was darin steht"},
    {u"remind", 1, 1, coIn | coAt | coBeforeEnd | coKind | coSound | coDelete,
     u"ARTIKEL [--in DAUER | --at ZEIT | --before-end DAUER] [--kind ART]\n"
     u"         [--sound DATEI] | ARTIKEL --delete [--yes]",
     u"an einen Artikel mit einem Ende erinnern lassen; die Erinnerung löschen"},
    {u"reminders", 0, 0, coJson, u"[--json]", u"alle Erinnerungen zeigen, die nächste zuerst"},
    {u"export", 1, 1, coCategory | coSource,
     u"DATEI [--category KATEGORIE]... [--source QUELLE]... [--yes]",
     u"die Beobachtenliste oder einen Teil davon samt Erinnerungen in eine Datei *.wch schreiben"},
    {u"import", 1, 1, coCategory, u"DATEI [--category NAME]",
     u"aus einer solchen Datei übernehmen, was die Beobachtenliste noch nicht hat; mit --category\n"
     u"      alles in eine Kategorie, die angelegt wird, wenn es sie nicht gibt"},
    {u"mobile export", 1, 1, 0, u"DATEI [--yes]",
     u"Kategorien und Artikel für Kaufkobolde Mobile schreiben"},
    {u"mobile import", 1, 1, 0, u"DATEI", u"von dort übernehmen, was neu ist"},
    {u"run", 0, 0, 0, u"",
     u"bleiben und Erinnerungen melden, bis Strg+C oder SIGTERM kommt; andere Aufrufe gehen "
     u"weiter"},
    {u"settings list", 0, 1, coJson, u"[ABSCHNITT] [--json]", u"Einstellungen mit Vorgaben zeigen"},
    {u"settings get", 2, 2, 0, u"ABSCHNITT SCHLÜSSEL", u"eine Einstellung lesen"},
    {u"settings set", 2, 3, 0, u"ABSCHNITT SCHLÜSSEL [WERT]",
     u"eine Einstellung ändern; ein Kennwort ohne WERT wird verdeckt gefragt"},
    {u"settings export", 1, 1, 0, u"DATEI [--yes]",
     u"die Einstellungen der Plug-ins als Text schreiben, für eine andere Installation"},
    {u"settings import", 1, 1, 0, u"DATEI", u"Einstellungen aus einem solchen Text übernehmen"},
    {u"settings confirm-email", 0, 1, 0, u"[CODE]",
     u"die Adresse für Erinnerungen bestätigen: ohne CODE wird einer dorthin geschickt"},
    {u"test sound", 0, 0, coSound, u"[--sound DATEI]", u"den Ton der Erinnerungen jetzt abspielen"},
    {u"test email", 0, 0, 0, u"", u"jetzt eine E-Mail an die eingestellte Adresse schicken"},
    {u"test sms", 0, 0, 0, u"[--yes]",
     u"jetzt eine SMS an die eingestellte Nummer schicken; das kann Geld kosten"},
    {u"test calendar", 0, 0, 0, u"", u"einen Termin eintragen und wieder löschen"},
    {u"test notifier", 0, 0, 0, u"", u"jetzt ein Meldungsfenster zeigen"},
    {u"demo", 0, 0, 0, u"", u"die Beobachtenliste mit einem kleinen Beispielshop vorführen"},
});

constexpr TStringView cIntroduction =
    u"kaufkobolde-cli - die Beobachtenliste im Terminal\n"
    u"\n"
    u"Aufruf: kaufkobolde-cli [--data ORDNER] [--verbose] BEFEHL ...\n"
    u"\n"
    u"Befehle:\n";

constexpr TStringView cConclusion =
    u"  -rem WERT ... -remimport DATEI ...\n"
    u"      die Befehlszeile des Programms: geht, wie sie ist, an alle Plug-ins\n"
    u"\n"
    u"ARTIKEL, KATEGORIE und QUELLE sind eine Id ({...}) oder ein Name, den es nur einmal gibt;\n"
    u"Groß- und Kleinschreibung ist gleich. Die Ids zeigt \"list\". Was mit \"-\" beginnt und\n"
    u"keine Option ist, steht hinter \"--\".\n"
    u"\n"
    u"DAUER ist etwa 90s, 10m, 2h, 1h30m oder 1d; vor dem Ende (--before-end) geht nur eine von\n"
    u"1m 2m 5m 10m 15m 30m 1h 2h 3h 4h 5h 6h 12h 1d. ZEIT ist 18:30, 18:30:15, oder mit dem Tag\n"
    u"\"24.12.2026 18:30\" oder 2026-12-24T18:30. ART ist sound, window, email, sms oder "
    u"calendar.\n"
    u"\n"
    u"Erinnerungen meldet \"run\". Damit es mit jeder Anmeldung startet:\n"
    u"  systemctl --user enable --now kaufkobolde\n"
    u"\n"
    u"Optionen:\n"
    u"  --data ORDNER      Beobachtenliste, Einstellungen und Protokoll liegen in diesem Ordner\n"
    u"  --verbose          das Protokoll auch hier zeigen\n"
    u"  --yes              Rückfragen mit Ja beantworten\n"
    u"  --restore-backup   eine fehlende oder beschädigte Liste aus der Sicherung holen\n"
    u"  --version, --help\n"
    u"\n"
    u"Ohne Terminal an der Eingabe werden Fragen mit ihrer Vorgabe beantwortet.\n"
    u"Ergebnis: 0 erledigt, 1 fehlgeschlagen, 2 falscher Aufruf.\n"
    u"\n"
    u"Beispiele:\n"
    u"  kaufkobolde-cli add https://shop.example/lampe --category Wohnzimmer --create\n"
    u"  kaufkobolde-cli refresh\n"
    u"  kaufkobolde-cli list";

// How many letters have to be changed, added or left out to come from one word to the other.
size_t EditDistance(TStringView iA, TStringView iB) {
  std::vector<size_t> row(iB.size() + 1);
  for (size_t j = 0; j < row.size(); ++j) row[j] = j;
  for (size_t i = 0; i < iA.size(); ++i) {
    size_t diagonal = std::exchange(row[0], i + 1);
    for (size_t j = 0; j < iB.size(); ++j) {
      const size_t change = diagonal + (iA[i] == iB[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({change, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

bool IsNear(TStringView iWord, const TCliCommandInfo& iCommand) {
  constexpr size_t cMaxWord = 40;
  if (iWord.empty() || iWord.size() > cMaxWord) return false;
  return StartsWith(iCommand.Name, iWord) || EditDistance(iWord, iCommand.Name) <= 2;
}

}  // namespace

std::span<const TCliCommandInfo> CliCommands() { return cCommands; }

const TCliCommandInfo* FindCliCommand(TStringView iName) {
  const auto found = std::ranges::find(cCommands, iName, &TCliCommandInfo::Name);
  return found == cCommands.end() ? nullptr : &*found;
}

TString CliSynopsis(const TCliCommandInfo& iCommand) {
  return Trim(Format(u"kaufkobolde-cli %s %s", {iCommand.Name, iCommand.Arguments}));
}

TString SimilarCliCommands(TStringView iWord) {
  TString result;
  for (const TCliCommandInfo& command : cCommands) {
    if (!IsNear(iWord, command)) continue;
    if (!result.empty()) result += u", ";
    result += Format(u"\"%s\"", {command.Name});
  }
  return result;
}

TString CliHelpPage() {
  TString result(cIntroduction);
  for (const TCliCommandInfo& command : cCommands) {
    result += TString(u"  ").append(command.Name);
    if (!command.Arguments.empty()) result.append(u" ").append(command.Arguments);
    result += Format(u"\n      %s\n", {command.Meaning});
  }
  return result.append(cConclusion);
}

}  // namespace kk
