#pragma once

#include <memory>

#include "host/controls/TCommonExplorerBar.h"
#include "views/explorerbar/TExplorerBarGroupCategoryDetails.h"
#include "views/explorerbar/TExplorerBarGroupReminderDetails.h"
#include "views/explorerbar/TExplorerBarPanelItemDetails.h"
#include "views/explorerbar/TExplorerBarPanelItemMore.h"
#include "views/explorerbar/TExplorerbarPanelMoreConst.h"

namespace kk {

/// The right-hand column of the section: what it tells of the selected category and of the focused
/// result, and the commands on them. It is filled between Init and Clear; outside of that it shows
/// nothing, answers none and keeps no events. Main thread.
class TExplorerBarWatchlist : public TCommonExplorerBar {
 public:
  using TCommonExplorerBar::TCommonExplorerBar;

  void Init() override;
  void Clear() override;

  TWatchlistCategory* GetCurrentCategory() const;
  TIntf<ISearchResult> GetCurrentSearchResult() const;

  // The events of the links. The sender of the first two is the category, that of the others the
  // group or the panel. Receivers take theirs back before they die, or clear the bar.
  TNotifyEvent GetOnClickCategoryEdit() const;
  void SetOnClickCategoryEdit(TNotifyEvent iEvent);
  TNotifyEvent GetOnClickCategoryUpdate() const;
  void SetOnClickCategoryUpdate(TNotifyEvent iEvent);
  TNotifyEvent GetOnClickRemindAdd() const;
  void SetOnClickRemindAdd(TNotifyEvent iEvent);
  TNotifyEvent GetOnClickRemindEdit() const;
  void SetOnClickRemindEdit(TNotifyEvent iEvent);
  TNotifyEvent GetOnClickRemindDelete() const;
  void SetOnClickRemindDelete(TNotifyEvent iEvent);
  TNotifyEvent GetOnClickDetailsUpdate() const;
  void SetOnClickDetailsUpdate(TNotifyEvent iEvent);
  TNotifyEvent GetOnClickDetailsEditDescription() const;
  void SetOnClickDetailsEditDescription(TNotifyEvent iEvent);
  TNotifyEvent GetOnClickMoreExport() const;
  void SetOnClickMoreExport(TNotifyEvent iEvent);
  TNotifyEvent GetOnClickMoreImport() const;
  void SetOnClickMoreImport(TNotifyEvent iEvent);
  TNotifyEvent GetOnClickMorePrint() const;
  void SetOnClickMorePrint(TNotifyEvent iEvent);

  /// The panel that is never shown.
  TIntf<IExplorerBarPanel> GetPanelMoreConst() const { return FPanelMoreConst; }

  /// Borrowed until the next call; null for none. Raises nothing, so that a repaint may call it;
  /// see TExplorerBarGroupCategoryDetails.
  void SetSelectedCategory(TWatchlistCategory* iCategory, bool iCanUpdate);
  /// May be absent. What the result raises passes through, here and below.
  void SetCurrentSearchResult(const TIntf<ISearchResult>& iResult);
  void RefreshCurrentSearchResult();
  /// Only if the result is the one on show, by its id.
  void RefreshCurrentSearchResultIfEquals(const TIntf<ISearchResult>& iResult);

 private:
  std::unique_ptr<TExplorerBarGroupCategoryDetails> FGroupCategory;
  std::unique_ptr<TExplorerBarGroupReminderDetails> FGroupReminder;
  TIntf<TExplorerBarPanelItemDetails> FPanelDetails;
  TIntf<TExplorerBarPanelItemMore> FPanelMore;
  TIntf<TExplorerbarPanelMoreConst> FPanelMoreConst;
};

}  // namespace kk
