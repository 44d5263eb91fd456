#pragma once

#include <string>
#include <vector>

#include "host/controls/TMenuItem.h"

namespace kk {

using TLines = std::vector<std::string>;

/// The entries of a menu and of its sub-menus, one line each, two blanks for each level.
inline TLines MenuLines(const TMenuItem& iMenu, const std::string& iIndent = {}) {
  TLines lines;
  for (int i = 0; i < iMenu.GetCount(); ++i) {
    const TMenuItem& entry = iMenu.GetItems(i);
    lines.push_back(iIndent + ToUtf8(entry.Caption()));
    const TLines below = MenuLines(entry, iIndent + "  ");
    lines.insert(lines.end(), below.begin(), below.end());
  }
  return lines;
}

}  // namespace kk
