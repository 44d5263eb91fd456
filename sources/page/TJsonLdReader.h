#pragma once

#include <string_view>

#include "sources/page/TSchemaGraph.h"

namespace kk {

/// Adds the items of one script of JSON-LD to the graph. A script that isn't JSON is mended first;
/// where that doesn't help, or it is nested too deeply, nothing is added. The items of a "@graph"
/// and of lists at the top are top-level; lists within lists are one list; null is no value.
///
/// Not followed: contexts, which in pages name schema.org and nothing else.
class TJsonLdReader {
 public:
  static constexpr int cMaxDepth = 64;

  explicit TJsonLdReader(TSchemaGraph& ioGraph) : FGraph(ioGraph) {}

  /// UTF-8. False if nothing could be read.
  bool Read(std::string_view iScript);

 private:
  bool Parse(std::string_view iJson);

  TSchemaGraph& FGraph;
};

}  // namespace kk
