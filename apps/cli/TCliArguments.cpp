#include "apps/cli/TCliArguments.h"

#include "apps/cli/ECliUsage.h"

namespace kk {
namespace {

constexpr TStringView cHelpHint = u"Hilfe: kaufkobolde-cli --help";

// The options with a text that the last one of a call decides.
struct TTextOption {
  TStringView Name;
  TCliOption Option;
  std::optional<TString> TCliArguments::*Field;
};
constexpr TTextOption cTextOptions[] = {
    {u"--category", coCategory, &TCliArguments::Category},
    {u"--in", coIn, &TCliArguments::In},
    {u"--at", coAt, &TCliArguments::At},
    {u"--before-end", coBeforeEnd, &TCliArguments::BeforeEnd},
    {u"--kind", coKind, &TCliArguments::Kind},
    {u"--sound", coSound, &TCliArguments::Sound},
    {u"--pdf", coPdf, &TCliArguments::Pdf},
};

bool IsOption(TStringView iWord) { return iWord.size() > 2 && StartsWith(iWord, u"--"); }

// The host's own parameters have one dash.
bool IsHostParameter(TStringView iWord) {
  return iWord.size() > 1 && iWord[0] == u'-' && iWord[1] != u'-';
}

class TParser {
 public:
  explicit TParser(const std::vector<TString>& iArguments) : FArguments(iArguments) {}

  TCliArguments Run() {
    while (FAt < FArguments.size() && FCall.HostLine.empty()) TakeWord();
    if (FArguments.empty()) FCall.Help = true;
    if (FCall.Help || FCall.Version) return FCall;
    if (FCall.HostLine.empty()) FindCommand();
    CheckOptions();
    if (FCall.Command != nullptr) CheckWords();
    return FCall;
  }

 private:
  void TakeWord() {
    const TString& word = FArguments[FAt];
    if (FOnlyWords || (!IsOption(word) && word != u"--")) {
      if (!FOnlyWords && FCall.Words.empty() && IsHostParameter(word)) {
        FCall.HostLine.assign(FArguments.begin() + static_cast<ptrdiff_t>(FAt), FArguments.end());
        return;
      }
      FCall.Words.push_back(word);
    } else if (word == u"--") {
      FOnlyWords = true;
    } else {
      TakeOption(word);
    }
    ++FAt;
  }

  void TakeOption(const TString& iWord) {
    const size_t equals = iWord.find(u'=');
    const TString name = iWord.substr(0, equals);
    FInline = equals == TString::npos ? std::nullopt : std::optional(iWord.substr(equals + 1));
    if (TakeFlag(name)) {
      if (FInline) throw ECliUsage(Format(u"%s nimmt keinen Wert.", {name}), cHelpHint);
      return;
    }
    if (TakeText(name)) return;
    if (name == u"--data") {
      FCall.Data = Value(name);
      if (FCall.Data.empty()) throw ECliUsage(u"--data braucht einen Ordner.", cHelpHint);
    } else if (name == u"--text") {
      if (!FCall.Text) FCall.Text.emplace();
      FCall.Text->push_back(Value(name, coText));
    } else if (name == u"--source") {
      FCall.Sources.push_back(Value(name, coSource));
    } else {
      throw ECliUsage(Format(u"Unbekannte Option: %s", {name}), cHelpHint);
    }
  }

  bool TakeText(const TString& iName) {
    for (const TTextOption& option : cTextOptions) {
      if (option.Name != iName) continue;
      FCall.*option.Field = Value(iName, option.Option);
      if (option.Option == coCategory) FCall.Categories.push_back(*FCall.Category);
      return true;
    }
    return false;
  }

  bool TakeFlag(TStringView iName) {
    if (iName == u"--verbose") return FCall.Verbose = true;
    if (iName == u"--restore-backup") return FCall.RestoreBackup = true;
    if (iName == u"--yes") return FCall.Yes = true;
    if (iName == u"--help") return FCall.Help = true;
    if (iName == u"--version") return FCall.Version = true;
    if (iName == u"--json") return Use(coJson, iName, FCall.Json);
    if (iName == u"--create") return Use(coCreate, iName, FCall.Create);
    if (iName == u"--top") return Use(coTop, iName, FCall.Top);
    if (iName == u"--delete") return Use(coDelete, iName, FCall.Delete);
    return false;
  }

  bool Use(TCliOption iOption, TStringView iName, bool& oFlag) {
    Note(iOption, iName);
    return oFlag = true;
  }

  void Note(TCliOption iOption, TStringView iName) { FUsed.push_back({iOption, TString(iName)}); }

  TString Value(TStringView iName) {
    if (FInline) return *FInline;
    if (FAt + 1 == FArguments.size()) {
      throw ECliUsage(Format(u"%s braucht einen Wert.", {iName}), cHelpHint);
    }
    return FArguments[++FAt];
  }

  TString Value(TStringView iName, TCliOption iOption) {
    Note(iOption, iName);
    return Value(iName);
  }

  void FindCommand() {
    std::vector<TString>& words = FCall.Words;
    if (words.empty()) throw ECliUsage(u"Es fehlt ein Befehl.", cHelpHint);
    TString name = words[0];
    size_t taken = 1;
    if (IsFamily(name)) {
      if (words.size() == 1) throw ECliUsage(Format(u"Was soll \"%s\" tun?", {name}), Family(name));
      name += u" " + words[1];
      taken = 2;
    }
    FCall.Command = FindCliCommand(name);
    if (FCall.Command == nullptr) {
      const TString similar = SimilarCliCommands(name);
      const TString hint = similar.empty() ? TString() : u"Meinten Sie " + similar + u"?\n";
      throw ECliUsage(Format(u"Unbekannter Befehl: %s", {name}), hint + TString(cHelpHint));
    }
    words.erase(words.begin(), words.begin() + static_cast<ptrdiff_t>(taken));
  }

  static bool IsFamily(const TString& iWord) {
    return iWord == u"category" || iWord == u"settings" || iWord == u"test" || iWord == u"mobile";
  }

  static TString Family(const TString& iWord) {
    TString result = u"Richtig wäre:";
    for (const TCliCommandInfo& command : CliCommands()) {
      if (StartsWith(command.Name, iWord + u" ")) result += u"\n  " + CliSynopsis(command);
    }
    return result;
  }

  [[noreturn]] void Wrong(TStringView iMessage) const {
    throw ECliUsage(iMessage, u"Richtig wäre: " + CliSynopsis(*FCall.Command));
  }

  void CheckOptions() const {
    for (const auto& [option, name] : FUsed) {
      if (FCall.Command == nullptr) {
        throw ECliUsage(Format(u"%s gehört nicht vor %s.", {name, FCall.HostLine[0]}), cHelpHint);
      }
      if ((FCall.Command->Options & option) == 0) {
        Wrong(Format(u"\"%s\" kennt die Option %s nicht.", {FCall.Command->Name, name}));
      }
    }
    if (FCall.Create && !FCall.Category) Wrong(u"--create braucht --category NAME.");
    for (const TString& name : FCall.Categories) {
      if (Trim(name).empty()) Wrong(u"--category braucht einen Namen.");
    }
    if (FCall.Command != nullptr && FCall.Command->Name == u"remind") CheckReminder();
  }

  void CheckReminder() const {
    const int times = (FCall.In ? 1 : 0) + (FCall.At ? 1 : 0) + (FCall.BeforeEnd ? 1 : 0);
    if (times > 1) Wrong(u"Nur eine Zeit: --in, --at oder --before-end.");
    if (FCall.Delete && (times > 0 || FCall.Kind || FCall.Sound)) Wrong(u"--delete steht allein.");
    if (FCall.Sound && Trim(*FCall.Sound).empty()) Wrong(u"--sound braucht eine Datei.");
  }

  void CheckWords() const {
    const size_t count = FCall.Words.size();
    if (count < FCall.Command->MinWords) Wrong(u"Es fehlt eine Angabe.");
    if (count > FCall.Command->MaxWords) {
      Wrong(Format(u"Eine Angabe zu viel: %s", {FCall.Words[FCall.Command->MaxWords]}));
    }
    const TStringView name = FCall.Command->Name;
    if (name == u"category move" && (count == 2) == FCall.Top) {
      Wrong(FCall.Top ? u"Entweder ein Ziel oder --top." : u"Es fehlt das Ziel.");
    }
    if ((name == u"note" || name == u"category describe") && !FCall.Text && count < 2) {
      Wrong(u"Es fehlt der Text; \"\" leert ihn.");
    }
    if (name == u"print" && !FCall.Category) Wrong(u"Es fehlt --category NAME.");
    if (name == u"print" && Trim(FCall.Pdf.value_or(u"")).empty()) {
      Wrong(u"Es fehlt --pdf DATEI.");
    }
    if (name == u"category describe" && FCall.Text && count > 1) {
      Wrong(u"Entweder Zeilen oder --text.");
    }
  }

  const std::vector<TString>& FArguments;
  size_t FAt = 0;
  bool FOnlyWords = false;
  std::optional<TString> FInline;
  std::vector<std::pair<TCliOption, TString>> FUsed;
  TCliArguments FCall;
};

}  // namespace

TCliArguments TCliArguments::Parse(const std::vector<TString>& iArguments) {
  return TParser(iArguments).Run();
}

}  // namespace kk
