#pragma once

#include <vector>

#include "host/base/TStream.h"
#include "sources/page/TPageData.h"

namespace kk {

/// The stream in which this source keeps its results; docs/format-page.md tells its bytes. It is
/// versioned: a newer version's stream is read as far as it is known, and its unknown fields go
/// through a load and a save unharmed.
inline constexpr uint64_t cPageStreamVersion = 1;

/// Takes the pages one after the other, in memory; GetBytes ends the stream.
class TPageStreamWriter {
 public:
  TPageStreamWriter();

  void Add(const TPageData& iData);
  /// The whole stream. Once, after the last page.
  std::string TakeBytes();

 private:
  std::string FBytes;
};

/// Reads from the position to the end. Raises Exception for a stream that is damaged: cut off,
/// not of this format, or with a page that lacks its id or address. Memory stays within a small
/// multiple of the stream's size.
std::vector<TPageData> ReadPageStream(TStream& iStream);

}  // namespace kk
