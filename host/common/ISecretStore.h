#pragma once

#include "host/base/TString.h"

namespace kk {

/// Where passwords and tokens lie; the host installs one, and without it they lie in the settings
/// file like everything else. Any thread; every operation returns within a few seconds.
class ISecretStore {
 public:
  virtual ~ISecretStore() = default;
  /// The secret of a key of the settings; empty if there is none.
  virtual TString Read(TStringView iSection, TStringView iKey) = 0;
  /// An empty value takes the secret away. Raises Exception if it could be kept nowhere.
  virtual void Write(TStringView iSection, TStringView iKey, TStringView iValue) = 0;
};

/// Installs a store, which is borrowed, and answers the one before; null is the settings file
/// alone. Main thread.
ISecretStore* SetSecretStore(ISecretStore* iStore);
/// The installed store, or the settings file as one.
ISecretStore& SecretStore();
/// The settings file as a store. Before a secret comes into it, it is made the user's alone (0600);
/// one that can't be made so takes none.
ISecretStore& FileSecretStore();

}  // namespace kk
