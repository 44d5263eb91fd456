#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "host/results/TResultTable.h"

namespace kk {

Qt::Alignment ToQtAlignment(TResultAlignment iAlignment);

/// The rows of any result table as Qt's views want them. It holds nothing and asks the table for
/// each cell when a view wants it. Main thread.
class TResultItemModel final : public QAbstractTableModel, private IResultTableObserver {
 public:
  /// Becomes the table's observer. The table is borrowed, and may die first: the model has no rows
  /// then.
  explicit TResultItemModel(TResultTable& ioTable, QObject* iParent = nullptr);
  ~TResultItemModel() override;
  TResultItemModel(const TResultItemModel&) = delete;
  TResultItemModel& operator=(const TResultItemModel&) = delete;

  /// Lets go: it has no rows from here on. No effect when it has none to let go.
  void Detach();

  /// Between the beginning and the end of a change: what views do by themselves then is nothing
  /// that the user has done.
  bool IsChanging() const { return FChanges > 0; }
  /// Told of rows that are to be seen.
  void SetOnScrollIntoView(std::function<void(int iRow)> iEvent) {
    FOnScrollIntoView = std::move(iEvent);
  }
  /// What the cell shows; empty if that can't be told.
  TResultCell CellAt(const QModelIndex& iIndex) const;

  int rowCount(const QModelIndex& iParent = {}) const override;
  int columnCount(const QModelIndex& iParent = {}) const override;
  QVariant data(const QModelIndex& iIndex, int iRole = Qt::DisplayRole) const override;
  QVariant headerData(int iSection, Qt::Orientation iOrientation, int iRole) const override;

 private:
  void BeforeTableChange(const TResultTableChange& iChange) override;
  void AfterTableChange(const TResultTableChange& iChange) override;
  void RowChanged(int iRow) override;
  void ScrollIntoView(int iRow) override;
  void TableGone() override;

  void BeginSort();
  void EndSort();

  TResultTable* FTable;
  int FChanges = 0;
  bool FResetting = false;
  QModelIndexList FIndexesBefore;                    // while it is sorted
  std::vector<const ISearchResult*> FResultsBefore;  // beside them
  std::function<void(int)> FOnScrollIntoView;
};

}  // namespace kk
