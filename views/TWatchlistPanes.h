#pragma once

#include <memory>

#include "views/TWatchlistCentrePane.h"
#include "views/explorerbar/TExplorerBarWatchlist.h"
#include "views/tabs/TTabSwitcher.h"
#include "views/tree/TWatchlistCategoryTree.h"

namespace kk {

/// The section's three panes side by side: the tree of categories, the tabs of the sources and the
/// explorer bar. Each reaches the others through here. The explorer bar stands from the start until
/// FreeExplorerBar, the tabs between MakeTabControl and FreeTabControl; what is told to one that is
/// not there is passed over. Main thread.
class TWatchlistPanes : public TObject, private IWatchlistPanes, private ITabFollower {
 public:
  explicit TWatchlistPanes(TControl* iParent);
  ~TWatchlistPanes() override;

  /// Makes it without tabs. The section's commands bind the other events.
  TTabControlKK& MakeTabControl();
  void FreeTabControl() { FTabControl.reset(); }
  /// Takes it out of its widget.
  void FreeExplorerBar();

  /// Null while there is none, here and below.
  TTabControlKK* TabControl() const { return FTabControl.get(); }
  TExplorerBarWatchlist* ExplorerBar() override { return FExplorerBar.Get(); }
  /// The selected tab.
  TTab* CurrentTab() const { return FTabControl ? FTabControl->GetCurrentTab() : nullptr; }
  TTab* FindTab(const TIntf<IWatchlistIntegration>& iIntegration) const;

  void HideAll() override;
  /// An empty result is none. What the result raises passes, here and below.
  void SetCurrentSearchResult(const TIntf<ISearchResult>& iSearchResult) override;
  void RefreshCurrentSearchResult();
  /// Behind a move: sorts the tree, and lets the explorer bar count its category anew; a failure of
  /// the latter is swallowed.
  void ShowMoved();

  TPanel pnlPanes;
  TWatchlistCategoryTree Tree{&pnlPanes, *this};
  TWatchlistCentrePane Centre{&pnlPanes};
  TPanel pnlExplorerBandBar{&pnlPanes, u"pnlExplorerBandBar"};
  TExplorerBar explrbr{&pnlExplorerBandBar, u"explrbr"};
  TMenuItem pmnTabsChevron;

 private:
  // IWatchlistPanes
  void SetSelectedCategory(TWatchlistCategory* iCategory, bool iCanUpdate) override;
  TWatchlistCategory* GetCurrentCategory() const override;
  /// Also of ITabFollower.
  void RestoreExplorerbarDefaultItems() override;
  void CategoryOnShow(const TWatchlistCategory* iCategory) override;
  void BeginAdd() override;
  void ShowIntegration(const TIntf<IWatchlistIntegration>& iIntegration) override;
  void EndAdd() override;
  void SelectIntegration(const TIntf<IWatchlistIntegration>& iIntegration) override;
  // ITabFollower
  void SelectNodeByIntegration(const TIntf<IWatchlistIntegration>& iIntegration) override;

  void pmnTabsChevronPopup(TObject* Sender);

  TIntf<TExplorerBarWatchlist> FExplorerBar;
  TTabSwitcher FSwitcher{*this};
  std::unique_ptr<TTabControlKK> FTabControl;
};

}  // namespace kk
