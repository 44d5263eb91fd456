#include "apps/desktop/shell/TDesktopArguments.h"

#include <filesystem>
#include <optional>

#include "apps/desktop/shell/TDroppedText.h"

namespace kk {
namespace {

constexpr TStringView cImport = u"-remimport";

constexpr TStringView cHelpPage =
    u"Aufruf: kaufkobolde [OPTION...] [ADRESSE|DATEI...]\n"
    u"        kaufkobolde [OPTION...] -rem WERT | -remimport DATEI\n"
    u"\n"
    u"Sucht in Quellen und beobachtet Artikel. Eine Adresse öffnet \"Suchen\" mit ihren Artikeln,\n"
    u"eine Datei *.wch fragt, was von ihr in die Beobachtenliste soll.\n"
    u"Läuft das Programm mit diesem Ordner schon, nimmt es den Aufruf entgegen und kommt nach "
    u"vorn.\n"
    u"\n"
    u"  -rem WERT          nimmt einen Artikel (etwa seine Adresse) in die Beobachtenliste auf\n"
    u"  -remimport DATEI   übernimmt eine exportierte Beobachtenliste, ohne zu fragen\n"
    u"\n"
    u"Optionen:\n"
    u"  --data ORDNER      Beobachtenliste, Einstellungen und Protokoll liegen in diesem Ordner\n"
    u"  --theme FARBEN     hell, dunkel oder system (wie der Desktop)\n"
    u"  --verbose          das Protokoll auch hier zeigen\n"
    u"  --version, --help\n"
    u"\n"
    u"Ergebnis: 0 erledigt, 1 fehlgeschlagen, 2 falscher Aufruf, 3 kein Bildschirm.\n"
    u"Ohne Bildschirm: kaufkobolde-cli --help";

TString FullPath(const TString& iPath) {
  return FromUtf8(std::filesystem::absolute(ToUtf8(iPath)).lexically_normal().string());
}

TThemeChoice ThemeOf(TStringView iName) {
  if (SameText(iName, u"system")) return TThemeChoice::tcSystem;
  if (SameText(iName, u"hell")) return TThemeChoice::tcLight;
  if (SameText(iName, u"dunkel")) return TThemeChoice::tcDark;
  throw EDesktopUsage(Format(u"--theme kennt hell, dunkel und system, nicht \"%s\".", {iName}));
}

class TParser {
 public:
  explicit TParser(const std::vector<TString>& iArguments) : FArguments(iArguments) {}

  TDesktopArguments Run() {
    while (FAt < FArguments.size() && FCall.HostLine.empty()) TakeWord();
    return FCall;
  }

 private:
  void TakeWord() {
    const TString& word = FArguments[FAt];
    if (FOnlyWords || word.size() < 2 || word[0] != u'-') {
      if (!word.empty()) FCall.Words.push_back(FullName(word));
    } else if (word == u"--") {
      FOnlyWords = true;
    } else if (word == u"-session") {
      ++FAt;
    } else if (word[1] != u'-') {
      TakeHostLine();
    } else {
      TakeOption(word);
    }
    ++FAt;
  }

  void TakeHostLine() {
    FCall.HostLine.assign(FArguments.begin() + static_cast<ptrdiff_t>(FAt), FArguments.end());
    for (size_t i = 1; i < FCall.HostLine.size(); ++i) {
      TString& value = FCall.HostLine[i];
      if (SameText(FCall.HostLine[i - 1], cImport) && !value.empty()) value = FullName(value);
    }
  }

  void TakeOption(const TString& iWord) {
    const size_t equals = iWord.find(u'=');
    const TString name = iWord.substr(0, equals);
    FInline = equals == TString::npos ? std::nullopt : std::optional(iWord.substr(equals + 1));
    if (name == u"--data") {
      FCall.Data = FullPath(Value(name));
    } else if (name == u"--theme") {
      FCall.Theme = ThemeOf(Value(name));
    } else {
      Flag(name) = true;
      if (FInline) throw EDesktopUsage(Format(u"%s nimmt keinen Wert.", {name}));
    }
  }

  bool& Flag(TStringView iName) {
    if (iName == u"--verbose") return FCall.Verbose;
    if (iName == u"--help") return FCall.Help;
    if (iName == u"--version") return FCall.Version;
    throw EDesktopUsage(Format(u"Unbekannte Option: %s", {iName}));
  }

  TString Value(TStringView iName) {
    const bool isLast = !FInline && FAt + 1 == FArguments.size();
    const TString value = FInline ? *FInline : isLast ? TString() : FArguments[++FAt];
    if (value.empty()) throw EDesktopUsage(Format(u"%s braucht einen Wert.", {iName}));
    return value;
  }

  // Another process, with another folder, may be the one that opens it.
  static TString FullName(const TString& iWord) {
    const TDroppedText word = TDroppedText::OfWord(iWord);
    return word.Files.empty() ? iWord : FullPath(word.Files.front());
  }

  const std::vector<TString>& FArguments;
  size_t FAt = 0;
  bool FOnlyWords = false;
  std::optional<TString> FInline;
  TDesktopArguments FCall;
};

}  // namespace

TDesktopArguments TDesktopArguments::Parse(const std::vector<TString>& iArguments) {
  return TParser(iArguments).Run();
}

// A word that begins with "-" stands behind "--", and no host line does.
std::vector<TString> TDesktopArguments::ToWords() const {
  std::vector<TString> result;
  if (HostLine.empty() && !Words.empty()) result.emplace_back(u"--");
  result.insert(result.end(), Words.begin(), Words.end());
  result.insert(result.end(), HostLine.begin(), HostLine.end());
  return result;
}

TString TDesktopArguments::HelpPage() { return TString(cHelpPage); }

}  // namespace kk
