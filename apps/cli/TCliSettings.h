#pragma once

#include "apps/cli/ICliConsole.h"
#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliJson.h"
#include "apps/cli/TCliSettingsText.h"

namespace kk {

/// The commands "settings": the keys of the settings file that somebody describes, read and written
/// in IniFile(), secrets in SecretStore(). A secret is never shown, only whether there is one.
class TCliSettings {
 public:
  /// iPluginKeys: what the plug-ins describe; the host's own come first. iPublishers: the plug-ins
  /// that exchange their settings. The console is borrowed.
  TCliSettings(ICliConsole& ioConsole, const std::vector<TSettingsKeyInfo>& iPluginKeys,
               TCliSettingsText::TPublishers iPublishers);

  /// True if the command is one of these.
  static bool Knows(const TCliCommandInfo& iCommand);
  /// An unknown section or key, and a value that the key does not take, raise ECliUsage.
  void Run(const TCliArguments& iCall);

 private:
  void List(const TCliArguments& iCall) const;
  void Set(const TCliArguments& iCall);
  void SetSecret(const TSettingsKeyInfo& iInfo, const std::optional<TString>& iValue);
  void SetAddress(TStringView iAddress);

  /// The key as described, under its own name in the file.
  TSettingsKeyInfo Find(TStringView iSection, TStringView iKey) const;
  TCliSetting Read(const TSettingsKeyInfo& iInfo) const;
  /// With each number that a numbered key has in the file.
  std::vector<TCliSetting> ReadAll(const TSettingsKeyInfo& iInfo) const;
  void CheckSection(TStringView iSection) const;

  ICliConsole& FConsole;
  std::vector<TSettingsKeyInfo> FKeys;
  TCliSettingsText::TPublishers FPublishers;
};

}  // namespace kk
