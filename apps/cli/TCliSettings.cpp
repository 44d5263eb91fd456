#include "apps/cli/TCliSettings.h"

#include <algorithm>
#include <array>

#include "apps/cli/ECliUsage.h"
#include "apps/cli/TerminalText.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TKKIniFile.h"

namespace kk {
namespace {

using enum TSettingsKeyType;

// The host's own sections.
std::vector<TSettingsKeyInfo> HostKeys() {
  std::vector<TSettingsKeyInfo> keys = {{u"General", u"DelayedStart", sktBoolean, u"1", 0, 1,
                                         u"Bereiche kommen einen Augenblick nach dem Programm"},
                                        {u"Common", u"PathToLastImExport", sktString, u"", 0, 0,
                                         u"Ordner des letzten Im- oder Exports"}};
  for (TSettingsKeyInfo& key : TIniFileSectionCommunication::Keys()) keys.push_back(std::move(key));
  return keys;
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
  return TString(iValue);
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
    case sktString:
      break;
  }
  return u"Text";
}

}  // namespace

TCliSettings::TCliSettings(ICliConsole& ioConsole, const std::vector<TSettingsKeyInfo>& iPluginKeys)
    : FConsole(ioConsole), FKeys(HostKeys()) {
  FKeys.insert(FKeys.end(), iPluginKeys.begin(), iPluginKeys.end());
}

bool TCliSettings::Knows(const TCliCommandInfo& iCommand) {
  return StartsWith(iCommand.Name, u"settings ");
}

void TCliSettings::Run(const TCliArguments& iCall) {
  const TStringView name = iCall.Command->Name;
  if (name == u"settings list") return List(iCall);
  if (name == u"settings set") return Set(iCall.Words[0], iCall.Words[1], iCall.Words[2]);
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

void TCliSettings::Set(TStringView iSection, TStringView iKey, TStringView iValue) {
  const TSettingsKeyInfo info = Find(iSection, iKey);
  const TString value = Checked(info, iValue);
  if (value == info.Default) {
    IniFile().DeleteKey(info.Section, info.Key);
  } else {
    IniFile().WriteString(info.Section, info.Key, value);
  }
  IniFile().NotifyChanged();
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
