#include <string>
#include <string_view>

#include "TExchangeFuzzWorld.h"
#include "persistence/exchange/TfrmKKWatchlistImport.h"
#include "tests/support/TRawZip.h"

// A file that is imported. With an even first byte the rest is the file as it lies on the disk;
// with an odd one it is the content of the entries, between bytes FF. Whatever comes in, what was
// in the list stays there.
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

}  // namespace
}  // namespace kk

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  if (iSize == 0) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(iData) + 1, iSize - 1);
  const kk::TExchangeFuzzWorld<kk::TFakeSource> world(kk::cSource);
  world.Folder.Write(u"Liste.wch", iData[0] % 2 == 0 ? std::string(bytes) : kk::Archive(bytes));
  kk::TfrmKKWatchlistImport::ExecuteInBackground(world.Folder.File(u"Liste.wch"));
  world.Check();
  return 0;
}
