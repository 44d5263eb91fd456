#pragma once

#include <QTreeView>

namespace kk {

/// Rows of one height, in a tree or in a table, which nobody edits in place. Where the user is they
/// show as told: other than Qt's own views they go nowhere by themselves when the focus comes.
class TRowView : public QTreeView {
 public:
  TRowView();

  /// From now on it asks for as much width as its rows take to be shown whole, up to this; of very
  /// many the first ones count.
  void WidenUpTo(int iWidth);
  QSize sizeHint() const override;

 protected:
  void focusInEvent(QFocusEvent* iEvent) override;

 private:
  /// The frame included.
  int WidthOfRows() const;

  int FWidest = 0;  // 0: the same width whatever stands in it
};

}  // namespace kk
