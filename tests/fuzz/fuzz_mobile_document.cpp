#include <string>

#include "TExchangeFuzzWorld.h"
#include "host/common/TFileHelper.h"
#include "persistence/exchange/TfrmKKWatchlistImport.h"
#include "tests/support/TMobileWorld.h"

// The document of the program on the telephone. Whatever comes in, what was in the list stays
// there, and the list it makes can be handed over again.
namespace kk {
namespace {

constexpr TGuid cSource = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");

}  // namespace
}  // namespace kk

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  const kk::TExchangeFuzzWorld<kk::TMobileSource> world(kk::cSource);
  kk::TMemoryStream stream(std::string(reinterpret_cast<const char*>(iData), iSize));
  kk::TfrmKKWatchlistImport::ExecuteInBackgroundFromKKMobileStream(stream);
  world.Check();
  kk::Handler()->SaveAllForMobileExport(world.Folder.File(u"mobil.xml"));
  kk::TMemoryStream again(kk::ReadFileBytes(world.Folder.File(u"mobil.xml")));
  if (!kk::TfrmKKWatchlistImport::ExecuteInBackgroundFromKKMobileStream(again)) std::abort();
  return 0;
}
