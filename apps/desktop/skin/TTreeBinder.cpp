#include "apps/desktop/skin/TTreeBinder.h"

#include <QContextMenuEvent>
#include <QSignalBlocker>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/TPopupMenu.h"
#include "apps/desktop/skin/TRowDelegate.h"

namespace kk {

TTreeBinder::TTreeBinder(TSkin& ioSkin, TVirtualStringTree& ioTree)
    : TBinderOf(ioSkin, ioTree, QtOwned<TRowView>()),
      FItems(*QtOwned<TTreeItemModel>(ioTree, &View())) {
  QTreeView& view = View();
  view.setModel(&FItems);
  view.setItemDelegate(QtOwned<TRowDelegate>(&view));
  view.setHeaderHidden(true);
  view.setSelectionMode(QAbstractItemView::SingleSelection);
  view.setAnimated(false);
  view.viewport()->installEventFilter(this);

  OnUser(view.selectionModel(), &QItemSelectionModel::currentChanged,
         [this](auto&&...) { GoToCurrent(); });
  // A click beside the nodes takes the selection from the one that has it; rendering brings it
  // back.
  OnUser(view.selectionModel(), &QItemSelectionModel::selectionChanged,
         [this](auto&&...) { GoToCurrent(); });
  OnUser(&view, &QTreeView::expanded, [this](const QModelIndex& iIndex) {
    Control().ExpandNode(*TTreeItemModel::NodeAt(iIndex));
  });
  OnUser(&view, &QTreeView::collapsed, [this](const QModelIndex& iIndex) {
    Control().CollapseNode(*TTreeItemModel::NodeAt(iIndex));
  });
  connect(&FItems, &QAbstractItemModel::dataChanged, this, &TTreeBinder::ShowExpansion);
  connect(&FItems, &QAbstractItemModel::modelReset, this, [this] {
    if (FItems.rowCount() > 0) ShowExpansionBelow(Control().Root());
  });
  FItems.SetOnCheck([this](const QModelIndex& iIndex) {
    TVirtualNode* node = TTreeItemModel::NodeAt(iIndex);
    Enter([&] { Control().CheckNode(*node); });
  });
  FItems.SetOnScrollIntoView([this](const QModelIndex& iIndex) { View().scrollTo(iIndex); });
  ShowExpansionBelow(ioTree.Root());
}

TTreeBinder::~TTreeBinder() {
  if (BoundWidget() == nullptr) return;
  FItems.SetOnCheck(nullptr);
  FItems.SetOnScrollIntoView(nullptr);
  FItems.Detach();
}

void TTreeBinder::Render() {
  const QSize icon(View().fontMetrics().height(), View().fontMetrics().height());
  if (View().iconSize() != icon) View().setIconSize(icon);
  QItemSelectionModel& selection = *View().selectionModel();
  const QModelIndex focused = FItems.IndexOf(Control().FocusedNode());
  if (selection.currentIndex() != focused) {
    selection.setCurrentIndex(focused, QItemSelectionModel::NoUpdate);
  }
  const QModelIndex selected = FItems.IndexOf(Control().SelectedNode());
  if (selection.selectedIndexes() != QModelIndexList{selected}) {
    selection.select(selected, QItemSelectionModel::ClearAndSelect);
  }
  if (WasTold()) View().viewport()->update();
}

// Rows that come and go move the view's selection before the tree's own has moved.
void TTreeBinder::GoToCurrent() {
  if (FItems.IsChanging()) return;
  TVirtualNode* node = TTreeItemModel::NodeAt(View().currentIndex());
  if (node != nullptr) Control().FocusNode(*node);
}

bool TTreeBinder::OpenPopupMenu() { return Control().OpenPopupMenu(Control().FocusedNode()); }

bool TTreeBinder::eventFilter(QObject* iObject, QEvent* iEvent) {
  if (iEvent->type() == QEvent::ContextMenu) {
    OpenMenu(static_cast<const QContextMenuEvent&>(*iEvent));
    return true;
  }
  if (iEvent->type() == QEvent::MouseButtonDblClick && iObject == View().viewport()) {
    const auto& mouse = static_cast<const QMouseEvent&>(*iEvent);
    if (mouse.button() == Qt::LeftButton) DoubleClick(mouse.position().toPoint());
    return true;
  }
  return TBinder::eventFilter(iObject, iEvent);
}

void TTreeBinder::DoubleClick(const QPoint& iPos) {
  TVirtualNode* node = TTreeItemModel::NodeAt(View().indexAt(iPos));
  Enter([&] { Control().DoubleClick(node); });
}

void TTreeBinder::OpenMenu(const QContextMenuEvent& iEvent) {
  QPoint place = iEvent.globalPos();
  TVirtualNode* node = Control().FocusedNode();
  if (iEvent.reason() == QContextMenuEvent::Keyboard) {
    const QRect row = View().visualRect(FItems.IndexOf(node)) & View().viewport()->rect();
    place = View().viewport()->mapToGlobal(row.bottomLeft());
  } else {
    node = TTreeItemModel::NodeAt(View().indexAt(View().viewport()->mapFromGlobal(place)));
  }
  bool opens = false;
  if (!Enter([&] { opens = Control().OpenPopupMenu(node); }) || !opens) return;
  TPopupMenu::Open(View(), *Control().PopupMenu(), place);
}

void TTreeBinder::ShowExpansion(const QModelIndex& iIndex) {
  const QSignalBlocker quiet(View());
  View().setExpanded(iIndex, TTreeItemModel::NodeAt(iIndex)->Expanded());
}

void TTreeBinder::ShowExpansionBelow(const TVirtualNode& iNode) {
  for (int row = 0; row < iNode.GetCount(); ++row) {
    const TVirtualNode& child = iNode.GetItems(row);
    if (child.Expanded()) ShowExpansion(FItems.IndexOf(&child));
    ShowExpansionBelow(child);
  }
}

}  // namespace kk
