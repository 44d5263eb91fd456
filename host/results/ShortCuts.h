#pragma once

#include <vector>

#include "host/controls/TMenuItem.h"

namespace kk {

/// Whether both mean the same keys, whatever the case and the order of "Shift", "Ctrl" and "Alt".
bool IsSameShortCut(TStringView iA, TStringView iB);

/// Whether one of the entries, sub-menus included, has these keys.
bool HasShortCut(const std::vector<TMenuItem*>& iEntries, TStringView iShortCut);

/// The first entry with these keys, sub-menus included, and that can be seen, in a sub-menu that
/// can be opened; null if there is none.
TMenuItem* FindByShortCut(const std::vector<TMenuItem*>& iEntries, TStringView iShortCut);

}  // namespace kk
