#pragma once

#include "host/contract/IExplorerBar.h"
#include "host/controls/TCaptionControl.h"

namespace kk {

/// A group of the explorer bar: the caption is its title, by which the user folds it away and opens
/// it again, and below it stand items. It shares the items; they tell it of their changes.
class TKK5SkinExplorerGroup : public TCaptionControl, private IExplorerBarItemObserver {
 public:
  using TItem = TIntf<IExplorerBarItem>;

  /// iBar: at whose end it stands; null for a group that is in no bar yet.
  explicit TKK5SkinExplorerGroup(TExplorerBar* iBar, TStringView iName = {},
                                 TStringView iTitle = {});
  ~TKK5SkinExplorerGroup() override;

  /// Puts it into a bar, in front of another group there or at the end; null takes it out.
  void SetBar(TExplorerBar* iBar, const TKK5SkinExplorerGroup* iBefore = nullptr);

  /// By their sort orders; of equal ones the earlier one stands first.
  const std::vector<TItem>& Items() const { return FItems; }
  /// What there is to see: the visible items, and lines only where they part some.
  std::vector<TItem> VisibleItems() const;
  /// An item that is in it already stays where it is.
  void AddItem(const TItem& iItem);
  /// No effect for an item that is not in it.
  void DeleteItem(const TItem& iItem);
  void ClearItems();

  /// Whether its items stand below the title; so at first.
  bool Expanded() const { return FExpanded; }
  void SetExpanded(bool iExpanded) { SetValue(FExpanded, iExpanded); }

  /// The user clicks a link; false if it can't be seen here or is none.
  bool ClickItem(const TItem& iItem);
  /// The user clicks the title.
  bool ClickTitle();

 private:
  void ItemChanged(IExplorerBarItem& iItem) override;

  std::vector<TItem> FItems;
  bool FExpanded = true;
};

}  // namespace kk
