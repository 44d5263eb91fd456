#pragma once

#include "host/contract/ISearchResult.h"
#include "host/contract/IWatchlistIntegration.h"
#include "model/TLstWatchlistCategory.h"

namespace kk {

/// The section's tree, tabs and side bar as its commands reach them: each operation tells what has
/// happened to the model, in the order in which the views must hear it. Main thread.
class TWatchlistView {
 public:
  virtual ~TWatchlistView() = default;

  /// The whole tree may be another one.
  virtual void BuildCategoriesTree(bool iKeepSelection) = 0;
  /// A new category, with nothing below it yet; it gets the selection.
  virtual void AddCategoryToTree(TWatchlistCategory& iCategory) = 0;
  /// Name or description.
  virtual void CategoryChanged(TWatchlistCategory& iCategory) = 0;
  virtual void AddPluginToTree(TWatchlistCategory& iCategory, TWatchlistPlugin& iGroup) = 0;
  /// A category or an item stands at the end of the new parent now; no parent is the top level.
  virtual void MoveNode(TObject& iObject, TObject* iNewParent) = 0;
  /// A category, group or item is on its way out of the model, or just out of it; what is below its
  /// node goes, too. The object is still whole.
  virtual void DeleteNodeFromTree(TObject& iObject) = 0;
  /// Something below the category has been deleted. A failure here is swallowed.
  virtual void RefreshSelectedCategory(TWatchlistCategory& iCategory) = 0;
  /// The side bar follows the focused result of this source's tab, or for no source of the one on
  /// show; it shows none where that fails. Does not raise.
  virtual void ShowFocusedResult(const TIntf<IWatchlistIntegration>& iIntegration) = 0;
  /// The focused result of the tab on show; empty if there is none. What the tab raises passes.
  virtual TIntf<ISearchResult> FocusedResult() const = 0;

  /// A result has been refreshed: its row, its details, its node. One that fails does not keep the
  /// others from being told.
  virtual void RefreshSearchResult(const TIntf<ISearchResult>& iResult) = 0;
  virtual void RefreshCurrentSearchResultIfEquals(const TIntf<ISearchResult>& iResult) = 0;
  virtual void RepaintNode(TWatchlistItem& iItem) = 0;

  /// A reminder is being delivered and has left the list. Its mark goes from the row of the result
  /// with this id, if that stands in the tab on show (the other tabs paint theirs when they are
  /// next filled), and from the side bar, if it shows that result. Failures are swallowed; after
  /// one of the side bar, this shows no result.
  virtual void RefreshRowOfReminder(const TGuid& iResultId) = 0;
  virtual void RefreshDetailsOfReminder(const TGuid& iResultId) = 0;
  virtual void ShowNoResult() = 0;

  /// The queues of the sources: Sender is the updater, or none.
  virtual void DoUpdaterProgress(TObject* Sender) = 0;
  virtual void DoUpdaterAfterAdd(TObject* Sender, int iAddCount) = 0;
  /// A waiting entry was taken out: there is one less to do.
  virtual void UpdateTakenOut() = 0;
};

}  // namespace kk
