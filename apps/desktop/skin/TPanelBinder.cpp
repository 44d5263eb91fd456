#include "apps/desktop/skin/TPanelBinder.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QStyle>
#include <algorithm>
#include <memory>
#include <utility>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TSplitterBar.h"
#include "host/controls/TButton.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TForm.h"
#include "host/controls/TLabel.h"
#include "host/controls/TRadioButton.h"
#include "host/controls/TStatusBar.h"
#include "host/controls/TfrmKKCommonSectionBase.h"

namespace kk {

namespace {

bool IsRow(const TControl* iControl) {
  const auto* const panel = dynamic_cast<const TPanel*>(iControl);
  return panel != nullptr && panel->Arrangement() == TArrangement::arRow;
}

bool HasButtonsAlone(const TControl& iControl) {
  const auto& children = iControl.Children();
  return !children.empty() && std::all_of(children.begin(), children.end(), [](TControl* iChild) {
    return dynamic_cast<TButton*>(iChild) != nullptr;
  });
}

// What stays at the foot of a window that is higher than it has to be.
bool StandsAtFoot(const TControl* iControl) {
  return dynamic_cast<const TStatusBar*>(iControl) != nullptr ||
         (IsRow(iControl) && HasButtonsAlone(*iControl));
}

// A box or a radio button without words chooses what stands behind it.
bool IsBareChoice(const TControl& iControl) {
  const auto* const choice = dynamic_cast<const TClickControl*>(&iControl);
  return choice != nullptr && choice->Caption().empty() &&
         (dynamic_cast<const TCheckBox*>(choice) != nullptr ||
          dynamic_cast<const TRadioButton*>(choice) != nullptr);
}

// Takes the room that nothing else wants, and does not say that it wants it.
void InsertSpace(QBoxLayout& ioBox, int iPlace) {
  ioBox.insertSpacerItem(iPlace,
                         QtOwned<QSpacerItem>(0, 0, QSizePolicy::Minimum, QSizePolicy::Minimum));
  ioBox.setStretch(iPlace, 1);
}

// The label with which a row begins that has more than it; null for none.
TLabel* LabelOfRow(const TControl& iRow) {
  if (!IsRow(&iRow) || !iRow.Visible()) return nullptr;
  const auto& children = iRow.Children();
  const auto isShown = [](const TControl* iChild) { return iChild->Visible(); };
  if (std::count_if(children.begin(), children.end(), isShown) < 2) return nullptr;
  auto* const label =
      dynamic_cast<TLabel*>(*std::find_if(children.begin(), children.end(), isShown));
  return label != nullptr && !label->Stretches() ? label : nullptr;
}

}  // namespace

TPanelBinder::TPanelBinder(TSkin& ioSkin, TPanel& ioPanel)
    : TPanelBinder(ioSkin, ioPanel, QtOwned<TPanelWidget>()) {}

TPanelBinder::TPanelBinder(TSkin& ioSkin, TPanel& ioPanel, TPanelWidget* iWidget)
    : TBinderOf(ioSkin, ioPanel, iWidget) {}

bool TPanelBinder::Grows(Qt::Orientation iDirection) const {
  if (TBinder::Grows(iDirection)) return true;
  if (iDirection == Qt::Horizontal && Control().Width() > 0) return false;
  const auto& children = Control().Children();
  return std::any_of(children.begin(), children.end(), [&](TControl* iChild) {
    const TBinder* const binder = Skin().BinderOf(*iChild);
    return binder != nullptr && binder->Grows(iDirection);
  });
}

void TPanelBinder::Render() {
  View().SetWantedWidth(Control().Width());
  View().setMinimumSize(MinSize());
  TPlan plan = MakePlan();
  if (!FArranged || plan != FPlan) {
    FPlan = std::move(plan);
    FArranged = true;
    Arrange();
  }
  if (FHeading) FHeading->setText(ToQt(Heading()));
  for (size_t i = 0; i < FSplitters.size(); ++i) {
    if (FSplitters[i]) FSplitters[i]->setVisible(FPlan.Places[i].Visible);
  }
  if (Control().Arrangement() == TArrangement::arColumn) AlignLabels();
  if (std::exchange(FHadSplitter, Control().HasSplitter()) != FHadSplitter) TellLayout();
}

TPanelBinder::TPlan TPanelBinder::MakePlan() const {
  TPlan plan{Control().Arrangement(), !Heading().empty(), {}};
  for (TControl* child : Control().Children()) {
    const auto* const panel = dynamic_cast<TPanel*>(child);
    plan.Places.push_back(
        {child, child->Visible(), child->Stretches(), panel != nullptr && panel->HasSplitter()});
  }
  return plan;
}

void TPanelBinder::Arrange() {
  for (const QPointer<QWidget>& bar : FSplitters) {
    if (bar) bar->deleteLater();
  }
  FSplitters.assign(FPlan.Places.size(), {});
  if (FHeading) FHeading->deleteLater();
  FHeading.clear();
  for (const TPlace& place : FPlan.Places) Skin().BinderOf(*place.Child);
  // A layout owns no widgets: they stay where they are, with all that Qt alone knows of them.
  std::unique_ptr<QLayout>(View().layout()).reset();
  QLayout* const layout = MakeLayout();
  View().setLayout(FPlan.HasHeading ? UnderHeading(*layout) : layout);
}

QLayout* TPanelBinder::MakeLayout() {
  return FPlan.Arrangement == TArrangement::arStack ? MakeStack() : MakeBox();
}

QLayout* TPanelBinder::MakeStack() {
  auto* const stack = QtOwned<QGridLayout>();
  stack->setContentsMargins(0, 0, 0, 0);
  for (const TPlace& place : FPlan.Places) {
    QWidget* const widget = Skin().WidgetOf(*place.Child);
    if (widget == nullptr) continue;
    // Its place is as large as the largest asks for, on show or not, and stays as it is.
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    stack->addWidget(widget, 0, 0);
    widget->raise();
  }
  return stack;
}

QBoxLayout* TPanelBinder::MakeBox() {
  const bool isRow = FPlan.Arrangement == TArrangement::arRow;
  auto* const box = QtOwned<QBoxLayout>(isRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  bool grows = false;
  int foot = 0;  // the place at which room that nothing wants comes in
  for (size_t i = 0; i < FPlan.Places.size(); ++i) {
    const TPlace& place = FPlan.Places[i];
    TBinder* const binder = Skin().BinderOf(*place.Child);
    if (binder == nullptr || binder->BoundWidget() == nullptr) continue;
    if (!isRow && i > 0 && IsBareChoice(*FPlan.Places[i - 1].Child)) {
      PutBeside(*box, *binder->BoundWidget());
    } else {
      box->addWidget(binder->BoundWidget(), place.Stretches ? 1 : 0);
    }
    if (place.HasSplitter && isRow) AddSplitter(*box, i);
    if (!place.Visible) continue;
    grows = grows || binder->Grows(isRow ? Qt::Horizontal : Qt::Vertical);
    if (isRow || !StandsAtFoot(place.Child)) foot = box->count();
  }
  if (!grows) InsertSpace(*box, isRow && HasButtonsAlone(Control()) ? 0 : foot);
  SetSpaces(*box);
  return box;
}

// The column's last widget and this one become a row.
void TPanelBinder::PutBeside(QBoxLayout& ioColumn, QWidget& ioWidget) {
  const std::unique_ptr<QLayoutItem> last(ioColumn.takeAt(ioColumn.count() - 1));
  auto* const row = QtOwned<QHBoxLayout>();
  if (last && last->widget() != nullptr) row->addWidget(last->widget());
  row->addWidget(&ioWidget, 1);
  ioColumn.addLayout(row);
}

// At the side of the panel where its neighbour takes what it gives.
void TPanelBinder::AddSplitter(QBoxLayout& ioRow, size_t iPlace) {
  auto& panel = static_cast<TPanel&>(*FPlan.Places[iPlace].Child);
  const bool isLeft = iPlace + 1 < FPlan.Places.size();
  QWidget* const widget = Skin().WidgetOf(panel);
  auto* const bar = QtOwned<TSplitterBar>(panel, *widget, isLeft);
  ioRow.insertWidget(isLeft ? ioRow.count() : ioRow.count() - 1, bar);
  FSplitters[iPlace] = bar;
}

// Windows have the desktop's spaces. In the section of a main window what grows fills its place to
// the edge, and rows of small controls keep some air.
void TPanelBinder::SetSpaces(QBoxLayout& ioBox) {
  TForm* const form = Control().Form();
  const bool isForm = form == &Control();
  const auto isSection = [](TControl* iForm) {
    return dynamic_cast<TfrmKKCommonSectionBase*>(iForm) != nullptr;
  };
  const bool isFlush = FPlan.Arrangement == TArrangement::arRow
                           ? std::any_of(FPlan.Places.begin(), FPlan.Places.end(),
                                         [](const TPlace& iPlace) { return iPlace.HasSplitter; })
                           : isSection(form) && Grows(Qt::Vertical);
  if (isFlush) ioBox.setSpacing(0);
  const bool standsInFlush = isSection(form) && !isForm && !Grows(Qt::Vertical);
  if (isForm ? isSection(form) : !standsInFlush) ioBox.setContentsMargins(0, 0, 0, 0);
}

QLayout* TPanelBinder::UnderHeading(QLayout& ioContent) {
  auto* const group = QtOwned<QVBoxLayout>();
  group->setContentsMargins(0, 0, 0, 0);
  auto* const heading = QtOwned<QLabel>();
  QFont font = heading->font();
  font.setBold(true);
  heading->setFont(font);
  heading->setTextFormat(Qt::PlainText);
  FHeading = heading;
  group->addWidget(heading);
  const int indent = View().style()->pixelMetric(QStyle::PM_LayoutLeftMargin, nullptr, &View());
  const bool isFlush =
      dynamic_cast<TfrmKKCommonSectionBase*>(Control().Form()) != nullptr && Grows(Qt::Vertical);
  if (isFlush) {
    const int above =
        View().style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing, nullptr, &View());
    group->setSpacing(0);
    heading->setContentsMargins(indent, std::max(above, 0), 0, std::max(above, 0));
  } else {
    ioContent.setContentsMargins(indent, 0, 0, 0);
  }
  group->addLayout(&ioContent, 1);
  return group;
}

void TPanelBinder::AlignLabels() {
  std::vector<QWidget*> labels;
  int width = 0;
  for (const TPlace& place : FPlan.Places) {
    TLabel* const label = LabelOfRow(*place.Child);
    QWidget* const widget = label != nullptr ? Skin().WidgetOf(*label) : nullptr;
    if (widget == nullptr) continue;
    labels.push_back(widget);
    width = std::max(width, widget->sizeHint().width());
  }
  for (QWidget* label : labels) label->setMinimumWidth(width);
}

}  // namespace kk
