#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/common/TKKIniFile.h"
#include "settings/TSettingsTextWatchlist.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestIniFile.h"

namespace kk {
namespace {

// The machine's, but it does not wait for the disk.
class TQuickFileLayer : public IFileLayer {
 public:
  TQuickFileLayer() { SetFileLayer(this); }
  int Open(const char* iPath, int iFlags, unsigned iMode) override {
    return MachineFileLayer().Open(iPath, iFlags, iMode);
  }
  long Write(int iFile, const void* iBytes, size_t iCount) override {
    return MachineFileLayer().Write(iFile, iBytes, iCount);
  }
  int Flush(int) override { return 0; }
  int Close(int iFile) override { return MachineFileLayer().Close(iFile); }
  int Rename(const char* iOldPath, const char* iNewPath) override {
    return MachineFileLayer().Rename(iOldPath, iNewPath);
  }
  int Unlink(const char* iPath) override { return MachineFileLayer().Unlink(iPath); }
};

}  // namespace
}  // namespace kk

// The text of settings that came from elsewhere. Whatever it stores, and whether it fails in the
// middle or not, what is given out then can be given back and changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  using namespace kk;
  static TQuickFileLayer layer;
  static const TTempFolder folder(true);
  static TTestIniFile file(folder.File(u"settings.ini"));
  TStringList text;
  text.SetText(FromUtf8(std::string(reinterpret_cast<const char*>(iData), iSize)));
  try {
    TSettingsTextWatchlist::SetSettings(text);
  } catch (const EConvertError&) {
  }
  TStringList before;
  TSettingsTextWatchlist::GetSettings(before);
  TSettingsTextWatchlist::SetSettings(before);
  TStringList after;
  TSettingsTextWatchlist::GetSettings(after);
  if (before.GetCount() != 16 || after.Lines() != before.Lines()) std::abort();
  return 0;
}
