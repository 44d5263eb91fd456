#include <cstdlib>
#include <string>
#include <string_view>

#include "model/TLstWatchlistIntegration.h"
#include "persistence/TWatchlistFileLoader.h"
#include "persistence/TWatchlistFileSaver.h"
#include "reminders/TLstRemindItem.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TRawZip.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestModelRoot.h"

// The watch list file. With an even first byte the rest is the file as it lies on the disk; with an
// odd one it is the content of the entries, between bytes FF, so that the fuzzer gets past the
// archive. Whatever loads can be saved, and what was saved loads.
namespace kk {
namespace {

constexpr TGuid cSource = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");
constexpr const char* cEntries[] = {"version", "categories", "remind",
                                    "items{5E000000-0000-0000-0000-000000000001}",
                                    "{5E000000-0000-0000-0000-000000000001}"};

std::string Archive(std::string_view iBytes) {
  TRawZip zip;
  for (const char* name : cEntries) {
    const size_t end = iBytes.find('\xFF');
    zip.AddStored(name, std::string(iBytes.substr(0, end)));
    iBytes.remove_prefix(end == std::string_view::npos ? iBytes.size() : end + 1);
  }
  return zip.ToBytes();
}

struct TWorld {
  TTestModelRoot Root;
  TLstWatchlistIntegration Integrations{true};
  TLstRemindItem Reminders{true};

  TWorld() { Integrations.Add(MakeIntf<TFakeSource>(u"Quelle", cSource)); }
  bool Load(const TString& iFileName) {
    return TWatchlistFileLoader(iFileName).LoadFromFile(Root.RootCategories(), Reminders,
                                                        Integrations);
  }
};

void LoadAndSave(const TTempFolder& iFolder) {
  const TString fileName = iFolder.File(u"watchlist.dat");
  TWorld world;
  if (!world.Load(fileName)) return;
  TWatchlistFileSaver saver(fileName);
  saver.SetSaveOnlyIfChanged(false);
  saver.SaveToFile(world.Root.RootCategories(), world.Reminders, world.Integrations);
  TWorld again;
  if (saver.LastSaveFailed() || !again.Load(fileName)) std::abort();
}

}  // namespace
}  // namespace kk

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  static const kk::TTempFolder folder;
  if (iSize == 0) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(iData) + 1, iSize - 1);
  const bool isFile = iData[0] % 2 == 0;
  folder.Write(u"watchlist.dat", isFile ? std::string(bytes) : kk::Archive(bytes));
  kk::LoadAndSave(folder);
  return 0;
}
