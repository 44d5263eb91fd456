#include "host/common/ISecretStore.h"

#include <atomic>

#include "host/common/TKKIniFile.h"

namespace kk {

namespace {

class TFileSecrets : public ISecretStore {
 public:
  TString Read(TStringView iSection, TStringView iKey) override {
    return IniFile().ReadString(iSection, iKey, {});
  }
  void Write(TStringView iSection, TStringView iKey, TStringView iValue) override {
    if (iValue.empty()) return IniFile().DeleteKey(iSection, iKey);
    IniFile().WriteString(iSection, iKey, iValue);
  }
};

std::atomic<ISecretStore*> installedStore{nullptr};

}  // namespace

ISecretStore* SetSecretStore(ISecretStore* iStore) { return installedStore.exchange(iStore); }

ISecretStore& SecretStore() {
  static TFileSecrets file;
  ISecretStore* const store = installedStore.load();
  return store != nullptr ? *store : file;
}

}  // namespace kk
