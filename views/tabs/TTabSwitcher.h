#pragma once

#include "host/contract/IExplorerBarExtender.h"
#include "views/tabs/TTabControlKK.h"

namespace kk {

/// What of the section follows its tabs. Main thread.
class ITabFollower {
 public:
  virtual ~ITabFollower() = default;

  /// The side bar; null if there is none.
  virtual IExplorerBar* ExplorerBar() = 0;
  /// The side bar shows this result; an empty one is none.
  virtual void SetCurrentSearchResult(const TIntf<ISearchResult>& iSearchResult) = 0;
  /// Puts what stands in the side bar on every tab back into it.
  virtual void RestoreExplorerbarDefaultItems() = 0;
  /// The tree follows the tab. A failure here is swallowed.
  virtual void SelectNodeByIntegration(const TIntf<IWatchlistIntegration>& iIntegration) = 0;
};

/// Keeps side bar and tree with the tabs: what the view of a tab adds to the side bar comes and
/// goes with the tab. Its two operations are handlers of TTabControlKK's events. Main thread.
class TTabSwitcher {
 public:
  explicit TTabSwitcher(ITabFollower& iFollower) : FFollower(iFollower) {}

  void DoTabControlSwitchTab(TObject* Sender, TTab* iFrom, TTab* iTo);
  /// A failure leaves the side bar without a result.
  void DoTabSelectionChanged(TObject* Sender, TTab& iTab);

 private:
  void Bind(IExplorerBar& ioBar, const TTab* iFrom, const TTab* iTo);

  ITabFollower& FFollower;
};

}  // namespace kk
