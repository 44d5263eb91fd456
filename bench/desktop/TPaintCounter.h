#pragma once

#include <QObject>
#include <QTreeView>

namespace kk {

/// Counts what a view of rows paints.
class TPaintCounter : public QObject {
 public:
  explicit TPaintCounter(QTreeView& ioView);
  void Restart() { FPaints = FRows = FMostRows = 0; }
  /// How often it was painted, wholly or in part.
  int Paints() const { return FPaints; }
  /// Rows in what was painted, one after the other, and the most of them at once.
  int Rows() const { return FRows; }
  int MostRows() const { return FMostRows; }

 protected:
  bool eventFilter(QObject* iObject, QEvent* iEvent) override;

 private:
  QTreeView& FView;
  int FPaints = 0;
  int FRows = 0;
  int FMostRows = 0;
};

}  // namespace kk
