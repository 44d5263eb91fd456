#pragma once

#include "host/controls/TLabel.h"
#include "host/controls/TPanel.h"
#include "host/controls/TTabStrip.h"

namespace kk {

class TWatchlistCategory;

/// The section's centre pane: the strip of tabs above the container of the sources' lists, and in
/// their place a word on what to do here as long as there is nothing to list: no item at all, or
/// none in the category on show. Hears of items from the handler that there is now, if there is
/// one. Main thread.
class TWatchlistCentrePane : public TPanel {
 public:
  explicit TWatchlistCentrePane(TControl* iParent);
  ~TWatchlistCentrePane() override;

  /// Looks whether there are items: other ones may have come without results.
  void ShowWhetherEmpty();
  /// This category is on show, null for none. It is looked at now alone: a list that becomes empty
  /// stays in sight.
  void ShowCategory(const TWatchlistCategory* iCategory);

  TTabStrip tbcntrlWatchlist{this, u"tbcntrlWatchlist"};
  TPanel pnlWatchlistContainer{this, u"pnlWatchlistContainer"};
  TLabel lblNoItems;

 private:
  void SetEmpty(bool iEmpty);
  void DoItemAdd(TObject* Sender);
  void DoItemDelete(TObject* Sender);

  TStringView FOfCategory;  // what to say where the list has items
};

}  // namespace kk
