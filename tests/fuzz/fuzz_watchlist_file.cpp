#include <cstdlib>

#include "WatchlistFileOf.h"
#include "model/TLstWatchlistIntegration.h"
#include "persistence/TWatchlistFileLoader.h"
#include "persistence/TWatchlistFileSaver.h"
#include "reminders/TLstRemindItem.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestModelRoot.h"

// The watch list file. Whatever loads can be saved, and what was saved loads.
namespace kk {
namespace {

struct TWorld {
  TTestModelRoot Root;
  TLstWatchlistIntegration Integrations{true};
  TLstRemindItem Reminders{true};

  TWorld() { Integrations.Add(MakeIntf<TFakeSource>(u"Quelle", cFuzzSource)); }
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
  folder.Write(u"watchlist.dat", kk::WatchlistFileOf(iData, iSize));
  kk::LoadAndSave(folder);
  return 0;
}
