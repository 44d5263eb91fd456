#include "apps/cli/TCliSettings.h"

#include <algorithm>
#include <array>
#include <utility>

#include "apps/cli/ECliUsage.h"
#include "apps/cli/TCliConfirm.h"
#include "apps/cli/TerminalText.h"
#include "host/common/ISecretStore.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TKKIniFile.h"
#include "host/delivery/TCommunicationCheck.h"

namespace kk {
namespace {

using enum TSettingsKeyType;

constexpr TStringView cCommunication = u"Communication";

// The host's own sections.
std::vector<TSettingsKeyInfo> HostKeys() {
  std::vector<TSettingsKeyInfo> keys = {{u"General", u"DelayedStart", sktBoolean, u"1", 0, 1,
                                         u"Bereiche kommen einen Augenblick nach dem Programm"},
                                        {u"General", u"CloseToTray", sktBoolean, u"0", 0, 1,
                                         u"das Fenster zu schließen beendet das Programm nicht"},
                                        {u"General", u"StartInTray", sktBoolean, u"0", 0, 1,
                                         u"das Programm beginnt im Infobereich, ohne Fenster"},
                                        {u"Common", u"PathToLastImExport", sktString, u"", 0, 0,
                                         u"Ordner des letzten Im- oder Exports"}};
  for (TSettingsKeyInfo& key : TIniFileSectionCommunication::Keys()) keys.push_back(std::move(key));
  return keys;
}

// Else anybody's mailbox could be filled with reminders.
void CheckNotConfirmedByHand(const TSettingsKeyInfo& iInfo, TStringView iValue) {
  if (iInfo.Section != cCommunication || iInfo.Key != u"EMailConfirmed" || iValue != u"1") return;
  throw ECliUsage(u"Eine Adresse bestätigt nur der Code, der an sie geschickt wird.",
                  u"Den schickt: kaufkobolde-cli settings confirm-email");
}

bool IsAnyOf(TStringView iText, std::initializer_list<TStringView> iWords) {
  return std::ranges::any_of(iWords, [iText](TStringView iWord) { return SameText(iText, iWord); });
}

// As it stands in the file.
TString CheckedBoolean(const TSettingsKeyInfo& iInfo, TStringView iValue) {
  const TString value = Trim(iValue);
  if (IsAnyOf(value, {u"1", u"true", u"ja", u"an"})) return u"1";
  if (IsAnyOf(value, {u"0", u"false", u"nein", u"aus"})) return u"0";
  throw ECliUsage(Format(u"%s nimmt nur 1 oder 0.", {iInfo.Key}),
                  u"Auch ja und nein, true und false werden verstanden.");
}

TString CheckedInteger(const TSettingsKeyInfo& iInfo, TStringView iValue) {
  int64_t number = 0;
  if (TryStrToInt(iValue, number) && number >= iInfo.Min && number <= iInfo.Max) {
    return IntToStr(number);
  }
  throw ECliUsage(
      Format(u"%s nimmt nur eine ganze Zahl von %d bis %d.", {iInfo.Key, iInfo.Min, iInfo.Max}),
      Format(u"Vorgabe: %s", {iInfo.Default}));
}

TString CheckedText(const TSettingsKeyInfo& iInfo, TStringView iValue) {
  if (iInfo.Section != cCommunication) return TString(iValue);
  try {
    return TCommunicationCheck::Value(iInfo.Key, iValue);
  } catch (const EConvertError& e) {
    throw ECliUsage(ForTerminal(e), Format(u"%s: %s", {iInfo.Key, iInfo.Meaning}));
  }
}

TString Checked(const TSettingsKeyInfo& iInfo, TStringView iValue) {
  switch (iInfo.Type) {
    case sktBoolean:
      return CheckedBoolean(iInfo, iValue);
    case sktInteger:
      return CheckedInteger(iInfo, iValue);
    case sktSecret:
    case sktString:
      break;
  }
  return CheckedText(iInfo, iValue);
}

// What the program makes of a text that somebody wrote into the file by hand.
TString Effective(const TSettingsKeyInfo& iInfo, const TString& iStored) {
  int64_t number = 0;
  switch (iInfo.Type) {
    case sktBoolean:
      if (IsAnyOf(iStored, {u"1", u"true"})) return u"1";
      return IsAnyOf(iStored, {u"0", u"false"}) ? TString(u"0") : iInfo.Default;
    case sktInteger:
      if (!TryStrToInt(iStored, number)) return iInfo.Default;
      return IntToStr(std::clamp<int64_t>(number, iInfo.Min, iInfo.Max));
    case sktSecret:
    case sktString:
      break;
  }
  return iStored;
}

// The running number behind the name.
bool IsNumberOf(const TSettingsKeyInfo& iInfo, TStringView iKey) {
  const size_t length = iInfo.Key.size();
  if (!iInfo.Numbered || iKey.size() <= length) return false;
  return SameText(iKey.substr(0, length), iInfo.Key) &&
         std::ranges::all_of(iKey.substr(length),
                             [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

TString Kind(const TSettingsKeyInfo& iInfo) {
  switch (iInfo.Type) {
    case sktBoolean:
      return u"0 oder 1";
    case sktInteger:
      return Format(u"%d bis %d", {iInfo.Min, iInfo.Max});
    case sktSecret:
      return u"geheim";
    case sktString:
      break;
  }
  return u"Text";
}

void Confirm(ICliConsole& ioConsole, const TCliArguments& iCall) {
  TCliConfirm confirm(ioConsole);
  iCall.Words.empty() ? confirm.Request() : confirm.Check(iCall.Words[0]);
}

}  // namespace

TCliSettings::TCliSettings(ICliConsole& ioConsole, const std::vector<TSettingsKeyInfo>& iPluginKeys,
                           TCliSettingsText::TPublishers iPublishers)
    : FConsole(ioConsole), FKeys(HostKeys()), FPublishers(std::move(iPublishers)) {
  FKeys.insert(FKeys.end(), iPluginKeys.begin(), iPluginKeys.end());
}

bool TCliSettings::Knows(const TCliCommandInfo& iCommand) {
  return StartsWith(iCommand.Name, u"settings ");
}

void TCliSettings::Run(const TCliArguments& iCall) {
  const TStringView name = iCall.Command->Name;
  if (name == u"settings list") return List(iCall);
  if (name == u"settings set") return Set(iCall);
  if (name == u"settings confirm-email") return Confirm(FConsole, iCall);
  TCliSettingsText text(FConsole, FPublishers);
  if (name == u"settings export") return text.Export(iCall.Words[0]);
  if (name == u"settings import") return text.Import(iCall.Words[0]);
  FConsole.Print(ForTerminal(Read(Find(iCall.Words[0], iCall.Words[1])).Value));
}

void TCliSettings::List(const TCliArguments& iCall) const {
  if (!iCall.Words.empty()) CheckSection(iCall.Words[0]);
  std::vector<TCliSetting> settings;
  for (const TSettingsKeyInfo& key : FKeys) {
    if (!iCall.Words.empty() && !SameText(key.Section, iCall.Words[0])) continue;
    for (const TCliSetting& setting : ReadAll(key)) settings.push_back(setting);
  }
  if (iCall.Json) return FConsole.Print(FromUtf8(TCliJson::Settings(settings)));
  TString section;
  for (const TCliSetting& setting : settings) {
    const TSettingsKeyInfo& info = setting.Info;
    if (section != info.Section) {
      if (!section.empty()) FConsole.Print(u"");
      section = info.Section;
      FConsole.Print(Format(u"[%s]", {section}));
    }
    const TString origin = setting.IsDefault ? TString(u"Vorgabe")
                                             : Format(u"Vorgabe: %s", {ForTerminal(info.Default)});
    FConsole.Print(Format(u"%s=%s  (%s; %s) %s", {info.Key, ForTerminal(setting.Value), Kind(info),
                                                  origin, ForTerminal(info.Meaning)}));
  }
}

void TCliSettings::Set(const TCliArguments& iCall) {
  const TSettingsKeyInfo info = Find(iCall.Words[0], iCall.Words[1]);
  const bool hasValue = iCall.Words.size() > 2;
  if (info.Type == sktSecret) {
    SetSecret(info, hasValue ? std::optional(iCall.Words[2]) : std::nullopt);
  } else if (!hasValue) {
    throw ECliUsage(u"Es fehlt der Wert.", u"Richtig wäre: " + CliSynopsis(*iCall.Command));
  } else {
    const TString value = Checked(info, iCall.Words[2]);
    CheckNotConfirmedByHand(info, value);
    if (info.Section == cCommunication && info.Key == u"EMail") {
      SetAddress(value);
    } else if (value == info.Default) {
      IniFile().DeleteKey(info.Section, info.Key);
    } else {
      IniFile().WriteString(info.Section, info.Key, value);
    }
  }
  IniFile().NotifyChanged();
}

void TCliSettings::SetSecret(const TSettingsKeyInfo& iInfo, const std::optional<TString>& iValue) {
  TString value = iValue.value_or(TString());
  if (!iValue) {
    value = FConsole.ReadSecret(Format(u"%s: ", {iInfo.Meaning})).value_or(TString());
    while (value.ends_with(u'\r')) value.pop_back();
    if (value.empty()) {
      throw Exception(
          Format(u"Es wurde nichts eingegeben. %s bleibt, wie es ist; der Wert \"\" "
                 u"entfernt es.",
                 {iInfo.Key}));
    }
  }
  SecretStore().Write(iInfo.Section, iInfo.Key, value);
  if (value.empty()) return FConsole.Print(Format(u"%s ist entfernt.", {iInfo.Key}));
  if (iValue) {
    FConsole.Complain(
        u"Hinweis: Was auf der Befehlszeile steht, können andere sehen. Ohne WERT wird verdeckt "
        u"danach gefragt.");
  }
  if (!IniFile().HasKey(iInfo.Section, iInfo.Key)) {
    return FConsole.Print(Format(u"%s liegt jetzt im Schlüsselbund.", {iInfo.Key}));
  }
  FConsole.Print(Format(u"%s steht jetzt in der Einstellungsdatei, die nur Sie lesen können: %s",
                        {iInfo.Key, ForTerminal(IniFile().GetFileName())}));
}

void TCliSettings::SetAddress(TStringView iAddress) {
  TIniFileSectionCommunication section;
  section.SetEMail(iAddress);
  TString address;
  if (section.GetEMail(address) || address.empty()) return;
  FConsole.Print(
      Format(u"%s ist noch nicht bestätigt. \"kaufkobolde-cli settings confirm-email\" schickt "
             u"einen Code dorthin.",
             {ForTerminal(address)}));
}

void TCliSettings::CheckSection(TStringView iSection) const {
  TString known;
  for (const TSettingsKeyInfo& key : FKeys) {
    if (SameText(key.Section, iSection)) return;
    if (known.find(key.Section) == TString::npos) known += u" " + key.Section;
  }
  throw ECliUsage(Format(u"Den Abschnitt gibt es nicht: %s", {ForTerminal(iSection)}),
                  u"Abschnitte:" + known);
}

TSettingsKeyInfo TCliSettings::Find(TStringView iSection, TStringView iKey) const {
  CheckSection(iSection);
  TString known;
  for (const TSettingsKeyInfo& key : FKeys) {
    if (!SameText(key.Section, iSection)) continue;
    const bool isNumber = IsNumberOf(key, iKey);
    if (isNumber || (!key.Numbered && SameText(key.Key, iKey))) {
      TSettingsKeyInfo result = key;
      if (isNumber) result.Key = iKey;
      return result;
    }
    known += u"\n  " + key.Key + (key.Numbered ? u" mit einer Nummer dahinter" : u"");
  }
  throw ECliUsage(Format(u"Den Schlüssel gibt es im Abschnitt %s nicht: %s",
                         {ForTerminal(iSection), ForTerminal(iKey)}),
                  u"Schlüssel:" + known);
}

TCliSetting TCliSettings::Read(const TSettingsKeyInfo& iInfo) const {
  if (iInfo.Type == sktSecret) {
    const bool isSet = !SecretStore().Read(iInfo.Section, iInfo.Key).empty();
    return {iInfo, isSet ? u"(gesetzt)" : u"(leer)", !isSet};
  }
  const TString stored = IniFile().ReadString(iInfo.Section, iInfo.Key, iInfo.Default);
  const TString value = Effective(iInfo, stored);
  return {iInfo, value, value == iInfo.Default};
}

std::vector<TCliSetting> TCliSettings::ReadAll(const TSettingsKeyInfo& iInfo) const {
  if (!iInfo.Numbered) return {Read(iInfo)};
  std::vector<TCliSetting> result;
  TStringList keys;
  IniFile().ReadSection(iInfo.Section, keys);
  for (const TString& key : keys.Lines()) {
    if (!IsNumberOf(iInfo, key)) continue;
    TSettingsKeyInfo info = iInfo;
    info.Key = key;
    result.push_back(Read(info));
  }
  return result;
}

}  // namespace kk
