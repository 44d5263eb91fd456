#pragma once

#include "host/controls/TCommonExplorerBarItem.h"
#include "host/controls/TKK5SkinExplorerGroup.h"

namespace kk {

class TWatchlistCategory;

/// The group "Kategorie" of the explorer bar: what the selected category is called, how much it
/// holds, and the links to edit and to refresh it. Main thread.
class TExplorerBarGroupCategoryDetails : public TKK5SkinExplorerGroup {
 public:
  explicit TExplorerBarGroupCategoryDetails(TExplorerBar* iBar);
  ~TExplorerBarGroupCategoryDetails() override;

  /// Shows the category, borrowed until the next call; null for none. The tree calls it at each
  /// repaint of the selected node: what stays as it is costs no walk and tells the skin nothing.
  void SetSelection(TWatchlistCategory* iCategory, bool iCanUpdate);
  TWatchlistCategory* Selection() const { return FCategory; }

  TNotifyEvent GetOnClickEdit() const { return FOnClickEdit; }
  /// The sender of both is the category.
  void SetOnClickEdit(TNotifyEvent iEvent) { FOnClickEdit = iEvent; }
  TNotifyEvent GetOnClickUpdate() const { return FOnClickUpdate; }
  void SetOnClickUpdate(TNotifyEvent iEvent) { FOnClickUpdate = iEvent; }

 private:
  void ShowCategory(bool iCanUpdate);
  void DoClickEdit(TObject* Sender);
  void DoClickUpdate(TObject* Sender);

  TIntf<TCommonExplorerBarLink> FEdit;
  TIntf<TCommonExplorerBarLink> FUpdate;
  TIntf<TCommonExplorerBarCaptionAndValue> FName;
  TIntf<TCommonExplorerBarCaptionAndValue> FCount;
  TIntf<TCommonExplorerBarText> FDescriptionTitle;
  TIntf<TCommonExplorerBarText> FDescription;
  TWatchlistCategory* FCategory = nullptr;
  TNotifyEvent FOnClickEdit;
  TNotifyEvent FOnClickUpdate;
};

}  // namespace kk
