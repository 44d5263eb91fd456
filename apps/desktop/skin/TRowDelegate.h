#pragma once

#include <QStyledItemDelegate>

namespace kk {

/// Rows of one height, which follows from the font alone: a view need not ask for a single text to
/// know where its rows stand.
class TRowDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  /// In device-independent pixels.
  static int RowHeight(const QFontMetrics& iFont);
  /// What the row would take to be shown whole, without its indentation.
  int RowWidth(const QStyleOptionViewItem& iOption, const QModelIndex& iIndex) const {
    return QStyledItemDelegate::sizeHint(iOption, iIndex).width();
  }
  QSize sizeHint(const QStyleOptionViewItem& iOption, const QModelIndex& iIndex) const override;
};

}  // namespace kk
