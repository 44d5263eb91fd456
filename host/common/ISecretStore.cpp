#include "host/common/ISecretStore.h"

#include <sys/stat.h>

#include <atomic>

#include "host/base/Exception.h"
#include "host/common/TKKIniFile.h"

namespace kk {

namespace {

constexpr mode_t cAnybodyElse = S_IRWXG | S_IRWXO;

// A file that does not exist yet is made for this user alone.
void MakePrivate(const TString& iFileName) {
  const std::string path = ToUtf8(iFileName);
  struct stat info {};
  if (stat(path.c_str(), &info) != 0 || (info.st_mode & cAnybodyElse) == 0) return;
  if (chmod(path.c_str(), S_IRUSR | S_IWUSR) == 0) return;
  throw EInOutError(
      Format(u"Die Einstellungsdatei %s ist auch für andere lesbar, und das lässt "
             u"sich nicht ändern. Ein Kennwort kommt nicht hinein.",
             {iFileName}));
}

class TFileSecrets : public ISecretStore {
 public:
  TString Read(TStringView iSection, TStringView iKey) override {
    return IniFile().ReadString(iSection, iKey, {});
  }
  void Write(TStringView iSection, TStringView iKey, TStringView iValue) override {
    if (iValue.empty()) return IniFile().DeleteKey(iSection, iKey);
    MakePrivate(IniFile().GetFileName());
    IniFile().WriteString(iSection, iKey, iValue);
  }
};

std::atomic<ISecretStore*> installedStore{nullptr};

}  // namespace

ISecretStore* SetSecretStore(ISecretStore* iStore) { return installedStore.exchange(iStore); }

ISecretStore& SecretStore() {
  ISecretStore* const store = installedStore.load();
  return store != nullptr ? *store : FileSecretStore();
}

ISecretStore& FileSecretStore() {
  static TFileSecrets file;
  return file;
}

}  // namespace kk
