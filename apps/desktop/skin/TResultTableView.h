#pragma once

#include <functional>

#include "apps/desktop/skin/TRowView.h"

namespace kk {

/// The widget of a result table: rows without branches and grid, and a text in the middle where
/// there are none. Keys and mouse move focus and selection in several steps; it tells of both
/// together, once, when the event is through.
class TResultTableView final : public TRowView {
 public:
  TResultTableView();

  const QString& EmptyText() const { return FEmptyText; }
  void SetEmptyText(const QString& iText);
  /// May be the end of whoever set it, but not of the view.
  void SetOnSelectionMoved(std::function<void()> iEvent) { FOnSelectionMoved = std::move(iEvent); }
  /// Focus or selection are others in the selection model.
  void SelectionMoved();

 protected:
  bool event(QEvent* iEvent) override;
  bool viewportEvent(QEvent* iEvent) override;
  void paintEvent(QPaintEvent* iEvent) override;

 private:
  void EndEvent();

  QString FEmptyText;
  int FEvents = 0;
  bool FHasMoved = false;
  std::function<void()> FOnSelectionMoved;
};

}  // namespace kk
