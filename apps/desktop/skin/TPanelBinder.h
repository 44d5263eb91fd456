#pragma once

#include <QLabel>
#include <QPointer>
#include <vector>

#include "apps/desktop/skin/TBinder.h"
#include "apps/desktop/skin/TPanelWidget.h"
#include "host/controls/TPanel.h"

class QBoxLayout;
class QLayout;

namespace kk {

/// A column, a row or a stack of controls. The layout is built anew when what it depends on is
/// another: which children there are, which are shown, which stretch.
///
/// What the model leaves open is laid out so: a row of buttons stands at its right end; any other
/// row without something that grows stands at its left end; buttons and a status bar at the end of
/// a column stay at its foot. The labels with which the rows of a column begin are equally wide, as
/// in a form. A caption is the heading of a group.
class TPanelBinder : public TBinderOf<TPanel, TPanelWidget> {
 public:
  TPanelBinder(TSkin& ioSkin, TPanel& ioPanel);

  bool Grows(Qt::Orientation iDirection) const override;

 protected:
  TPanelBinder(TSkin& ioSkin, TPanel& ioPanel, TPanelWidget* iWidget);
  void Render() override;
  /// A new layout with the widgets of all children, whose binders are there.
  virtual QLayout* MakeLayout();
  /// The smallest that the panel may be.
  virtual QSize MinSize() const { return {Control().MinWidth(), Control().MinHeight()}; }
  /// The text above the children; empty for none.
  virtual TString Heading() const { return Control().Caption(); }

 private:
  struct TPlace {
    TControl* Child;
    bool Visible;
    bool Stretches;
    bool HasSplitter;
    friend bool operator==(const TPlace&, const TPlace&) = default;
  };
  struct TPlan {
    TArrangement Arrangement = TArrangement::arColumn;
    bool HasHeading = false;
    std::vector<TPlace> Places;
    friend bool operator==(const TPlan&, const TPlan&) = default;
  };

  TPlan MakePlan() const;
  void Arrange();
  QLayout* MakeStack();
  QBoxLayout* MakeBox();
  static void PutBeside(QBoxLayout& ioColumn, QWidget& ioWidget);
  void AddSplitter(QBoxLayout& ioRow, size_t iPlace);
  void SetSpaces(QBoxLayout& ioBox);
  QLayout* UnderHeading(QLayout& ioContent);
  void AlignLabels();

  TPlan FPlan;
  bool FArranged = false;
  bool FHadSplitter = false;
  QPointer<QLabel> FHeading;
  std::vector<QPointer<QWidget>> FSplitters;
};

}  // namespace kk
