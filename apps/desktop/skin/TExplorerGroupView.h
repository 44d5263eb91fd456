#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "host/controls/TKK5SkinExplorerGroup.h"

class QGridLayout;
class QLabel;
class QToolButton;

namespace kk {

/// The widget of one group of the explorer bar: a title that folds, and below it the items. It is
/// shown anew very often, so it keeps what it shows, and touches only what has become another.
/// Neither group nor items are kept alive by it: an item is known by its address alone, until the
/// group says again what there is.
class TExplorerGroupView final : public QWidget {
 public:
  TExplorerGroupView(QWidget* iParent, std::function<void()> iOnTitle,
                     std::function<void(const IExplorerBarItem*)> iOnLink);

  void ShowGroup(const TKK5SkinExplorerGroup& iGroup);
  /// What the keyboard reaches, from top to bottom.
  std::vector<QWidget*> FocusParts() const;
  /// How often items came, went or changed their places; how often one changed its looks.
  int LayoutCount() const { return FLayouts; }
  int ItemCount() const { return FItemChanges; }

 private:
  /// An item as it is shown, and its one or two widgets.
  struct TRow {
    const IExplorerBarItem* Item = nullptr;
    TExplorerBarItemKind Kind = TExplorerBarItemKind::ikSeparator;
    TString Caption;
    TString Value;
    TBitmap Image;
    bool WordWrap = false;
    QWidget* First = nullptr;
    QLabel* Second = nullptr;

    bool IsSameItem(const TRow& iOther) const { return Item == iOther.Item && Kind == iOther.Kind; }
    bool LooksLike(const TRow& iOther) const;
  };

  static TRow RowOf(const IExplorerBarItem& iItem);
  void ShowRows(std::vector<TRow> iRows);
  void MakeWidgets(TRow& ioRow);
  void Place();
  void Fill(const TRow& iRow);
  QLabel* NewLabel();

  QToolButton* FTitle;
  QWidget* FBody;
  QGridLayout* FGrid;
  std::vector<TRow> FRows;
  std::function<void(const IExplorerBarItem*)> FOnLink;
  int FLayouts = 0;
  int FItemChanges = 0;
};

}  // namespace kk
