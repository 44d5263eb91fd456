#pragma once

#include "views/TWatchlistPanes.h"
#include "views/TWatchlistView.h"
#include "views/tree/TWatchlistStatus.h"

namespace kk {

/// What the commands tell, shown in the section's panes and its status bar. Main thread.
class TWatchlistPanesView final : public TWatchlistView {
 public:
  /// Both are borrowed.
  TWatchlistPanesView(TWatchlistPanes& ioPanes, TWatchlistStatus& ioStatus)
      : FPanes(ioPanes), FStatus(ioStatus) {}

  void BuildCategoriesTree(bool iKeepSelection) override;
  void AddCategoryToTree(TWatchlistCategory& iCategory) override;
  void CategoryChanged(TWatchlistCategory& iCategory) override;
  void AddPluginToTree(TWatchlistCategory& iCategory, TWatchlistPlugin& iGroup) override;
  void MoveNode(TObject& iObject, TObject* iNewParent) override;
  void DeleteNodeFromTree(TObject& iObject) override;
  void RefreshSelectedCategory(TWatchlistCategory& iCategory) override;
  void ShowFocusedResult(const TIntf<IWatchlistIntegration>& iIntegration) override;
  TIntf<ISearchResult> FocusedResult() const override;
  void RefreshSearchResult(const TIntf<ISearchResult>& iResult) override;
  void RefreshCurrentSearchResultIfEquals(const TIntf<ISearchResult>& iResult) override;
  void RepaintNode(TWatchlistItem& iItem) override;
  void RefreshRowOfReminder(const TGuid& iResultId) override;
  void RefreshDetailsOfReminder(const TGuid& iResultId) override;
  void ShowNoResult() override;
  void DoUpdaterProgress(TObject* Sender) override;
  void DoUpdaterAfterAdd(TObject* Sender, int iAddCount) override;
  void UpdateTakenOut() override;

 private:
  TWatchlistPanes& FPanes;
  TWatchlistStatus& FStatus;
};

}  // namespace kk
