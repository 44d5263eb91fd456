#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/base/TGuid.h"
#include "tests/support/TRawZip.h"

namespace kk {

/// The source whose entries stand in the file.
constexpr TGuid cFuzzSource = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");

/// A file of the watch list's from what the fuzzer made, which is a byte at least. With an even
/// first byte the rest is the file as it lies on the disk; with an odd one it is the content of the
/// entries, between bytes FF, so that the fuzzer gets past the archive.
inline std::string WatchlistFileOf(const uint8_t* iData, size_t iSize) {
  std::string_view bytes(reinterpret_cast<const char*>(iData) + 1, iSize - 1);
  if (iData[0] % 2 == 0) return std::string(bytes);
  TRawZip zip;
  for (const char* name :
       {"version", "categories", "remind", "items{5E000000-0000-0000-0000-000000000001}",
        "{5E000000-0000-0000-0000-000000000001}"}) {
    const size_t end = bytes.find('\xFF');
    zip.AddStored(name, std::string(bytes.substr(0, end)));
    bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
  }
  return zip.ToBytes();
}

}  // namespace kk
