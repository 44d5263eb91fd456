#include <cstdint>
#include <cstdlib>

#include "host/base/Exception.h"
#include "sources/page/TPageStream.h"

namespace {

std::string Written(const std::vector<kk::TPageData>& iPages) {
  kk::TPageStreamWriter writer;
  for (const kk::TPageData& page : iPages) writer.Add(page);
  return writer.TakeBytes();
}

std::vector<kk::TPageData> Loaded(const std::string& iBytes) {
  kk::TMemoryStream stream(iBytes);
  return kk::ReadPageStream(stream);
}

}  // namespace

// What can be read is written in a form that reads back as the same.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  try {
    const std::string bytes(reinterpret_cast<const char*>(iData), iSize);
    const std::string once = Written(Loaded(bytes));
    if (Written(Loaded(once)) != once) std::abort();
  } catch (const kk::Exception&) {
    return 0;
  }
  return 0;
}
