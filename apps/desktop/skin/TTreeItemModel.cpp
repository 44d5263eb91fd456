#include "apps/desktop/skin/TTreeItemModel.h"

#include <QIcon>

#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDrawings.h"
#include "apps/desktop/skin/ToHint.h"
#include "host/base/Guard.h"

namespace kk {

TTreeItemModel::TTreeItemModel(TVirtualStringTree& ioTree, QObject* iParent)
    : QAbstractItemModel(iParent), FTree(&ioTree) {
  FTree->SetTreeObserver(this);
}

TTreeItemModel::~TTreeItemModel() {
  if (FTree != nullptr) FTree->SetTreeObserver(nullptr);
}

void TTreeItemModel::Detach() {
  if (FTree == nullptr) return;
  FTree->SetTreeObserver(nullptr);
  TreeGone();
}

void TTreeItemModel::TreeGone() {
  beginResetModel();
  FTree = nullptr;
  endResetModel();
}

QModelIndex TTreeItemModel::IndexOf(const TVirtualNode* iNode) const {
  if (!HasNodes() || iNode == nullptr) return {};
  return createIndex(iNode->Row(), 0, iNode);
}

TVirtualNode* TTreeItemModel::NodeAt(const QModelIndex& iIndex) {
  return static_cast<TVirtualNode*>(iIndex.internalPointer());
}

const TVirtualNode* TTreeItemModel::NodeOrRoot(const QModelIndex& iIndex) const {
  if (!HasNodes()) return nullptr;
  return iIndex.isValid() ? NodeAt(iIndex) : &FTree->Root();
}

QModelIndex TTreeItemModel::index(int iRow, int iColumn, const QModelIndex& iParent) const {
  const TVirtualNode* parent = NodeOrRoot(iParent);
  if (parent == nullptr || iColumn != 0 || iRow < 0 || iRow >= parent->GetCount()) return {};
  return createIndex(iRow, 0, &parent->GetItems(iRow));
}

QModelIndex TTreeItemModel::parent(const QModelIndex& iIndex) const {
  if (!HasNodes() || !iIndex.isValid()) return {};
  const TVirtualNode* parent = NodeAt(iIndex)->Parent();
  return parent != nullptr ? createIndex(parent->Row(), 0, parent) : QModelIndex();
}

int TTreeItemModel::rowCount(const QModelIndex& iParent) const {
  const TVirtualNode* node = NodeOrRoot(iParent);
  return node != nullptr ? node->GetCount() : 0;
}

int TTreeItemModel::columnCount(const QModelIndex& /*iParent*/) const { return 1; }

QVariant TTreeItemModel::data(const QModelIndex& iIndex, int iRole) const {
  if (!HasNodes() || !iIndex.isValid()) return {};
  QVariant look;
  // A node whose text can't be told is painted empty, and the others are painted all the same.
  Guarded(u"TTreeItemModel", [&] { look = Look(*NodeAt(iIndex), iRole); });
  return look;
}

QVariant TTreeItemModel::Look(TVirtualNode& iNode, int iRole) const {
  switch (iRole) {
    case Qt::DisplayRole:
      return ToQt(FTree->Text(iNode));
    case Qt::ToolTipRole:
      return ToHint(FTree->Hint(iNode));
    case Qt::CheckStateRole:
      if (!iNode.HasCheckBox()) return {};
      return static_cast<int>(iNode.Checked() ? Qt::Checked : Qt::Unchecked);
    case Qt::DecorationRole: {
      const int image = FTree->ImageIndex(iNode);
      if (image < 0 || image >= static_cast<int>(FTree->Images().size())) return {};
      return TDrawings::Icon(FTree->Images()[static_cast<size_t>(image)]);
    }
    default:
      return {};
  }
}

Qt::ItemFlags TTreeItemModel::flags(const QModelIndex& iIndex) const {
  Qt::ItemFlags result = QAbstractItemModel::flags(iIndex);
  result.setFlag(Qt::ItemIsUserCheckable,
                 HasNodes() && iIndex.isValid() && NodeAt(iIndex)->HasCheckBox());
  return result;
}

bool TTreeItemModel::setData(const QModelIndex& iIndex, const QVariant& /*iValue*/, int iRole) {
  if (iRole != Qt::CheckStateRole || !HasNodes() || !iIndex.isValid() || !FOnCheck) return false;
  FOnCheck(iIndex);
  return true;
}

void TTreeItemModel::BeforeTreeChange(const TTreeChange& iChange) {
  const QModelIndex parent = IndexOf(iChange.Parent);
  const QModelIndex newParent = IndexOf(iChange.NewParent);
  const int row = iChange.Row;
  ++FChanges;
  using enum TTreeChange::TKind;
  switch (iChange.Kind) {
    case tcInsert:
      return beginInsertRows(parent, row, row);
    case tcRemove:
      return beginRemoveRows(parent, row, row);
    case tcMove:
      beginMoveRows(parent, row, row, newParent, iChange.NewRow);
      return;
    case tcSort:
      Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
      return;
    case tcReset:
      beginResetModel();
      FResetting = true;
      return;
  }
}

void TTreeItemModel::AfterTreeChange(const TTreeChange& iChange) {
  using enum TTreeChange::TKind;
  if (iChange.Kind == tcSort) KeepPersistentIndexes();
  switch (iChange.Kind) {
    case tcInsert:
      endInsertRows();
      break;
    case tcRemove:
      endRemoveRows();
      break;
    case tcMove:
      endMoveRows();
      break;
    case tcSort:
      Q_EMIT layoutChanged({}, VerticalSortHint);
      break;
    case tcReset:
      FResetting = false;
      endResetModel();
      break;
  }
  --FChanges;
}

// Each node has got another row under the same parent.
void TTreeItemModel::KeepPersistentIndexes() {
  const QModelIndexList before = persistentIndexList();
  QModelIndexList after;
  after.reserve(before.size());
  for (const QModelIndex& index : before) {
    const TVirtualNode* node = NodeAt(index);
    after.append(createIndex(node->Row(), index.column(), node));
  }
  changePersistentIndexList(before, after);
}

void TTreeItemModel::NodeChanged(TVirtualNode& iNode) {
  const QModelIndex index = IndexOf(&iNode);
  if (index.isValid()) Q_EMIT dataChanged(index, index);
}

void TTreeItemModel::ScrollIntoView(TVirtualNode& iNode) {
  const QModelIndex index = IndexOf(&iNode);
  if (index.isValid() && FOnScrollIntoView) FOnScrollIntoView(index);
}

}  // namespace kk
