#include <cstdint>
#include <cstdlib>

#include "sources/page/TPageReader.h"

// Every page gives a product or a reason, whatever its bytes are.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  static const kk::TPageAddress address =
      kk::TPageAddress::Parse("https://shop.example/p/1?x=1").value();
  const std::string_view body(reinterpret_cast<const char*>(iData), iSize);
  const kk::TPageReading reading = kk::ReadPage({body, "text/html", address, address});
  if (reading.Product.has_value() == !reading.Reason.empty()) std::abort();
  if (reading.Product && reading.Product->Name.empty()) std::abort();
  return 0;
}
