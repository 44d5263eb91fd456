#pragma once

#include "host/controls/TLabel.h"
#include "host/controls/TPanel.h"
#include "host/controls/TTabStrip.h"

namespace kk {

/// The section's centre pane: the strip of tabs above the container of the sources' lists, and in
/// their place a word on what to do here as long as the list holds no item at all. Hears of items
/// from the handler that there is now, if there is one. Main thread.
class TWatchlistCentrePane : public TPanel {
 public:
  explicit TWatchlistCentrePane(TControl* iParent);
  ~TWatchlistCentrePane() override;

  /// Looks whether there are items: other ones may have come without results.
  void ShowWhetherEmpty();

  TTabStrip tbcntrlWatchlist{this, u"tbcntrlWatchlist"};
  TPanel pnlWatchlistContainer{this, u"pnlWatchlistContainer"};
  TLabel lblNoItems;

 private:
  void SetEmpty(bool iEmpty);
  void DoItemAdd(TObject* Sender);
  void DoItemDelete(TObject* Sender);
};

}  // namespace kk
