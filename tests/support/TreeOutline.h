#pragma once

#include <string>
#include <vector>

#include "host/controls/TVirtualStringTree.h"
#include "views/tree/WatchlistNodes.h"

namespace kk {

/// The texts of the section's nodes in display order, without counts and with two blanks for each
/// level.
inline std::vector<std::string> OutlineOf(const TVirtualStringTree& iTree) {
  std::vector<std::string> lines;
  for (const TVirtualNode* node = iTree.First(); node != nullptr; node = node->Next()) {
    std::string indent;
    for (const auto* up = node->Parent(); up != nullptr; up = up->Parent()) indent += "  ";
    lines.push_back(indent + ToUtf8(NodeText(*node, {})));
  }
  return lines;
}

}  // namespace kk
