#include "apps/desktop/skin/TResultItemModel.h"

#include <unordered_map>

#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDrawings.h"
#include "apps/desktop/skin/ToHint.h"
#include "host/base/Guard.h"

namespace kk {

Qt::Alignment ToQtAlignment(TResultAlignment iAlignment) {
  switch (iAlignment) {
    case TResultAlignment::raCenter:
      return Qt::AlignHCenter | Qt::AlignVCenter;
    case TResultAlignment::raRight:
      return Qt::AlignRight | Qt::AlignVCenter;
    case TResultAlignment::raLeft:
      break;
  }
  return Qt::AlignLeft | Qt::AlignVCenter;
}

TResultItemModel::TResultItemModel(TResultTable& ioTable, QObject* iParent)
    : QAbstractTableModel(iParent), FTable(&ioTable) {
  FTable->SetTableObserver(this);
}

TResultItemModel::~TResultItemModel() {
  if (FTable != nullptr) FTable->SetTableObserver(nullptr);
}

void TResultItemModel::Detach() {
  if (FTable == nullptr) return;
  FTable->SetTableObserver(nullptr);
  TableGone();
}

void TResultItemModel::TableGone() {
  beginResetModel();
  FTable = nullptr;
  endResetModel();
}

int TResultItemModel::rowCount(const QModelIndex& iParent) const {
  return iParent.isValid() || FTable == nullptr || FResetting ? 0 : FTable->GetCount();
}

int TResultItemModel::columnCount(const QModelIndex& iParent) const {
  return iParent.isValid() || FTable == nullptr || FResetting ? 0 : FTable->ColumnCount();
}

TResultCell TResultItemModel::CellAt(const QModelIndex& iIndex) const {
  TResultCell cell;
  if (!checkIndex(iIndex, CheckIndexOption::IndexIsValid)) return cell;
  Guarded(u"TResultItemModel", [&] { cell = FTable->Cell(iIndex.row(), iIndex.column()); });
  return cell;
}

QVariant TResultItemModel::data(const QModelIndex& iIndex, int iRole) const {
  switch (iRole) {
    case Qt::DisplayRole:
      return ToQt(CellAt(iIndex).Text);
    case Qt::DecorationRole: {
      const TBitmap image = CellAt(iIndex).Image;
      return image.IsEmpty() ? QVariant() : TDrawings::Icon(image);
    }
    case Qt::ToolTipRole:
      return ToHint(CellAt(iIndex).Hint);
    default:
      return {};
  }
}

QVariant TResultItemModel::headerData(int iSection, Qt::Orientation iOrientation, int iRole) const {
  if (iOrientation != Qt::Horizontal || iSection < 0 || iSection >= columnCount()) return {};
  const TResultColumn& column = FTable->Columns(iSection);
  switch (iRole) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
      return ToQt(column.Caption);
    case Qt::TextAlignmentRole:
      return static_cast<int>(ToQtAlignment(column.Alignment));
    default:
      return {};
  }
}

void TResultItemModel::BeforeTableChange(const TResultTableChange& iChange) {
  ++FChanges;
  const int last = iChange.Row + iChange.Count - 1;
  using enum TResultTableChange::TKind;
  switch (iChange.Kind) {
    case rcInsert:
      beginInsertRows({}, iChange.Row, last);
      break;
    case rcRemove:
      beginRemoveRows({}, iChange.Row, last);
      break;
    case rcSort:
      BeginSort();
      break;
    case rcReset:
      beginResetModel();
      FResetting = true;
      break;
  }
}

void TResultItemModel::AfterTableChange(const TResultTableChange& iChange) {
  using enum TResultTableChange::TKind;
  switch (iChange.Kind) {
    case rcInsert:
      endInsertRows();
      break;
    case rcRemove:
      endRemoveRows();
      break;
    case rcSort:
      EndSort();
      break;
    case rcReset:
      FResetting = false;
      endResetModel();
      break;
  }
  --FChanges;
}

void TResultItemModel::BeginSort() {
  Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
  FIndexesBefore = persistentIndexList();
  for (const QModelIndex& index : FIndexesBefore) {
    FResultsBefore.push_back(FTable->Results(index.row()).Get());
  }
}

void TResultItemModel::EndSort() {
  std::unordered_map<const ISearchResult*, int> rows;
  if (!FIndexesBefore.isEmpty()) {
    for (int row = 0; row < FTable->GetCount(); ++row) rows[FTable->Results(row).Get()] = row;
  }
  QModelIndexList after;
  for (qsizetype i = 0; i < FIndexesBefore.size(); ++i) {
    const int row = rows.at(FResultsBefore[static_cast<size_t>(i)]);
    after.append(createIndex(row, FIndexesBefore[i].column()));
  }
  changePersistentIndexList(std::exchange(FIndexesBefore, {}), after);
  FResultsBefore.clear();
  Q_EMIT layoutChanged({}, VerticalSortHint);
}

void TResultItemModel::RowChanged(int iRow) {
  if (FResetting || columnCount() == 0) return;
  Q_EMIT dataChanged(index(iRow, 0), index(iRow, columnCount() - 1));
}

void TResultItemModel::ScrollIntoView(int iRow) {
  if (!IsChanging() && FOnScrollIntoView) FOnScrollIntoView(iRow);
}

}  // namespace kk
