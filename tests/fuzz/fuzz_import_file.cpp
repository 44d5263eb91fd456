#include "TExchangeFuzzWorld.h"
#include "WatchlistFileOf.h"
#include "persistence/exchange/TfrmKKWatchlistImport.h"

// A file that is imported. Whatever comes in, what was in the list stays there.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  if (iSize == 0) return 0;
  const kk::TExchangeFuzzWorld<kk::TFakeSource> world(kk::cFuzzSource);
  world.Folder.Write(u"Liste.wch", kk::WatchlistFileOf(iData, iSize));
  kk::TfrmKKWatchlistImport::ExecuteInBackground(world.Folder.File(u"Liste.wch"));
  world.Check();
  return 0;
}
