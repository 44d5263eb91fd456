#include <cstdint>
#include <cstdlib>

#include "host/base/Exception.h"
#include "host/delivery/email/TMailFile.h"

// What is read can be written, and reads back as the same file.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  try {
    const auto file = kk::TMailFile::Read({reinterpret_cast<const char*>(iData), iSize});
    const std::string written = file.Write();
    if (kk::TMailFile::Read(written).Write() != written) std::abort();
  } catch (const kk::Exception&) {
  }
  return 0;
}
