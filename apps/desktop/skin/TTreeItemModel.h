#pragma once

#include <QAbstractItemModel>
#include <functional>

#include "host/controls/TVirtualStringTree.h"

namespace kk {

/// The nodes of any tree as Qt's views want them: one column, and an index for each node. It holds
/// nothing, asks the tree for each text, image and hint when a view wants it, and hands on each
/// change as exactly what it was, so that views keep their places. Main thread.
class TTreeItemModel final : public QAbstractItemModel, private ITreeObserver {
 public:
  /// Becomes the tree's observer. The tree is borrowed, and may die first: the model has no rows
  /// then.
  explicit TTreeItemModel(TVirtualStringTree& ioTree, QObject* iParent = nullptr);
  ~TTreeItemModel() override;
  TTreeItemModel(const TTreeItemModel&) = delete;
  TTreeItemModel& operator=(const TTreeItemModel&) = delete;

  /// Lets go: it has no rows from here on. No effect when it has none to let go.
  void Detach();

  /// Invalid for null, and while all nodes may become others.
  QModelIndex IndexOf(const TVirtualNode* iNode) const;
  /// Null for an invalid index.
  static TVirtualNode* NodeAt(const QModelIndex& iIndex);
  /// Between the beginning and the end of a change: what views do by themselves then is nothing
  /// that the user has done.
  bool IsChanging() const { return FChanges > 0; }
  /// The user wants the check box of a node to be the other way round.
  void SetOnCheck(std::function<void(const QModelIndex&)> iEvent) { FOnCheck = std::move(iEvent); }
  /// Told of nodes that are to be seen.
  void SetOnScrollIntoView(std::function<void(const QModelIndex&)> iEvent) {
    FOnScrollIntoView = std::move(iEvent);
  }

  QModelIndex index(int iRow, int iColumn, const QModelIndex& iParent = {}) const override;
  QModelIndex parent(const QModelIndex& iIndex) const override;
  int rowCount(const QModelIndex& iParent = {}) const override;
  int columnCount(const QModelIndex& iParent = {}) const override;
  Qt::ItemFlags flags(const QModelIndex& iIndex) const override;
  /// Nothing but check boxes, and those by their event alone.
  bool setData(const QModelIndex& iIndex, const QVariant& iValue, int iRole) override;
  QVariant data(const QModelIndex& iIndex, int iRole = Qt::DisplayRole) const override;

 private:
  void BeforeTreeChange(const TTreeChange& iChange) override;
  void AfterTreeChange(const TTreeChange& iChange) override;
  void NodeChanged(TVirtualNode& iNode) override;
  void ScrollIntoView(TVirtualNode& iNode) override;
  void TreeGone() override;

  /// False while the tree is rebuilt: what views still know of it may be dead.
  bool HasNodes() const { return FTree != nullptr && !FResetting; }
  const TVirtualNode* NodeOrRoot(const QModelIndex& iIndex) const;
  void KeepPersistentIndexes();
  QVariant Look(TVirtualNode& iNode, int iRole) const;

  TVirtualStringTree* FTree;
  int FChanges = 0;
  bool FResetting = false;
  std::function<void(const QModelIndex&)> FOnCheck;
  std::function<void(const QModelIndex&)> FOnScrollIntoView;
};

}  // namespace kk
