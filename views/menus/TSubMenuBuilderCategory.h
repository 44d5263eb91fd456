#pragma once

#include "host/controls/TMenuItem.h"
#include "model/TLstWatchlistCategory.h"

namespace kk {

/// Makes menus of the tree of categories: one entry for each category, tagged with it, sorted by
/// name at each level. An entry with sub-entries can't be clicked, so its sub-menu starts with the
/// category itself. The entries borrow the categories: a menu is built anew before each opening.
/// Main thread.
class TSubMenuBuilderCategory {
 public:
  /// For things that go into a category: each of them is a target.
  static void BuildCategoryMenu(const TLstWatchlistCategory& iLstCategory,
                                TMenuItem& ioRootMenuItem, TNotifyEvent iOnClick, bool iRoot) {
    BuildCategoryMenuForCategory(iLstCategory, ioRootMenuItem, iOnClick, nullptr, iRoot);
  }

  /// For a category that moves, iCategoryToIgnore: the top level is a target, too, its entry tagged
  /// with null; the category itself with all below it and the one of unassigned items are not.
  /// Without such a category (null) all are targets. iOnClick gets the clicked entry as its sender.
  /// iRoot: ioRootMenuItem is the menu as a whole, and is emptied first; otherwise it is the entry
  /// of the category whose children the list holds.
  static void BuildCategoryMenuForCategory(const TLstWatchlistCategory& iLstCategory,
                                           TMenuItem& ioRootMenuItem, TNotifyEvent iOnClick,
                                           TWatchlistCategory* iCategoryToIgnore, bool iRoot);

  /// Whether the category that the entry stands for is still below the list: while a menu stands
  /// open, categories can go. The top level is always there.
  static bool HasTarget(const TLstWatchlistCategory& iLstCategory, const TMenuItem& iEntry);
};

}  // namespace kk
