#pragma once

#include <vector>

#include "host/base/IInterface.h"

namespace kk {

/// A secret lies in SecretStore() and is shown to nobody.
enum class TSettingsKeyType { sktBoolean, sktInteger, sktString, sktSecret };

/// One key of the settings file: what may stand there and what it means.
struct TSettingsKeyInfo {
  TString Section;
  TString Key;
  TSettingsKeyType Type = TSettingsKeyType::sktString;
  TString Default;  ///< as it would stand in the file; Booleans "1" and "0"
  int Min = 0;      ///< integers only, both bounds are allowed values
  int Max = 0;
  TString Meaning;  ///< one German line for the user
  /// The key's name goes on with a running number from 0, so that there may be any number of it.
  bool Numbered = false;
};

/// Offered by a plug-in whose settings a user may list, read and change without its settings page.
/// Main thread.
class ISettingsKeys : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{5D0E6F5A-0C39-4B7E-9D15-7C1B6E2A4F83}");

  /// All keys, in the order in which a user reads them. Needs no Initialize.
  virtual std::vector<TSettingsKeyInfo> GetSettingsKeys() const = 0;
};

}  // namespace kk
