#pragma once

#include "apps/desktop/skin/TBinder.h"
#include "apps/desktop/skin/TRowView.h"
#include "apps/desktop/skin/TTreeItemModel.h"

namespace kk {

/// A tree of nodes. The view asks for a node's text, image and hint when it paints it, and for
/// nothing before that; a node that changes alone is painted alone.
class TTreeBinder final : public TBinderOf<TVirtualStringTree, TRowView> {
 public:
  TTreeBinder(TSkin& ioSkin, TVirtualStringTree& ioTree);
  ~TTreeBinder() override;

  TMenuItem* PopupMenu() const override { return Control().PopupMenu(); }
  bool OpenPopupMenu() override;
  bool eventFilter(QObject* iObject, QEvent* iEvent) override;

 protected:
  void Render() override;

 private:
  void GoToCurrent();
  void DoubleClick(const QPoint& iPos);
  void OpenMenu(const QContextMenuEvent& iEvent);
  /// The view shows what the tree says, and tells nobody.
  void ShowExpansion(const QModelIndex& iIndex);
  void ShowExpansionBelow(const TVirtualNode& iNode);

  /// The view's, which may be in the middle of an event when the binder dies.
  TTreeItemModel& FItems;
};

}  // namespace kk
