#include "apps/desktop/skin/TExplorerGroupView.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QToolButton>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDrawings.h"
#include "apps/desktop/skin/TLinkButton.h"
#include "apps/desktop/skin/ToHint.h"

namespace kk {

TExplorerGroupView::TExplorerGroupView(QWidget* iParent, std::function<void()> iOnTitle,
                                       std::function<void(const IExplorerBarItem*)> iOnLink)
    : QWidget(iParent),
      FTitle(QtOwned<QToolButton>(this)),
      FBody(QtOwned<QWidget>(this)),
      FGrid(QtOwned<QGridLayout>(FBody)),
      FOnLink(std::move(iOnLink)) {
  FTitle->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  FTitle->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  FTitle->setFocusPolicy(Qt::StrongFocus);
  QFont font = FTitle->font();
  font.setBold(true);
  FTitle->setFont(font);
  connect(FTitle, &QToolButton::clicked, this, std::move(iOnTitle));
  FGrid->setColumnStretch(1, 1);
  const int space = fontMetrics().height() / 4;
  FGrid->setContentsMargins(2 * space, space, space, 2 * space);
  FGrid->setHorizontalSpacing(2 * space);
  FGrid->setVerticalSpacing(space);
  auto* column = QtOwned<QVBoxLayout>(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(FTitle);
  column->addWidget(FBody);
}

bool TExplorerGroupView::TRow::LooksLike(const TRow& iOther) const {
  return Caption == iOther.Caption && Value == iOther.Value && Image == iOther.Image &&
         WordWrap == iOther.WordWrap;
}

TExplorerGroupView::TRow TExplorerGroupView::RowOf(const IExplorerBarItem& iItem) {
  return {&iItem,           iItem.GetKind(),  iItem.GetCaption(),
          iItem.GetValue(), iItem.GetImage(), iItem.GetWordWrap(),
          nullptr,          nullptr};
}

void TExplorerGroupView::ShowGroup(const TKK5SkinExplorerGroup& iGroup) {
  const QString title = ToQtVerbatim(iGroup.Caption());
  if (FTitle->text() != title) {
    FTitle->setText(title);
    FTitle->setAccessibleName(ToQt(iGroup.Caption()));
    FBody->setAccessibleName(FTitle->accessibleName());
  }
  const bool isExpanded = iGroup.Expanded();
  FTitle->setArrowType(isExpanded ? Qt::DownArrow : Qt::RightArrow);
  FTitle->setAccessibleDescription(isExpanded ? QStringLiteral("aufgeklappt")
                                              : QStringLiteral("zugeklappt"));
  std::vector<TRow> rows;
  for (const auto& item : iGroup.VisibleItems()) rows.push_back(RowOf(*item));
  ShowRows(std::move(rows));
  FBody->setVisible(isExpanded && !FRows.empty());
  setVisible(iGroup.Visible());
  setEnabled(iGroup.Enabled());
}

void TExplorerGroupView::ShowRows(std::vector<TRow> iRows) {
  bool isSameOrder = iRows.size() == FRows.size();
  std::vector<TRow> before = std::exchange(FRows, {});
  for (size_t i = 0; i < iRows.size(); ++i) {
    TRow& row = iRows[i];
    const auto shown = std::find_if(before.begin(), before.end(), [&](const TRow& iShown) {
      return iShown.First != nullptr && iShown.IsSameItem(row);
    });
    isSameOrder &= shown - before.begin() == static_cast<std::ptrdiff_t>(i);
    const bool isNew = shown == before.end();
    const bool isOther = isNew || !shown->LooksLike(row);
    if (isNew) {
      MakeWidgets(row);
    } else {
      row.First = std::exchange(shown->First, nullptr);
      row.Second = shown->Second;
    }
    if (isOther) Fill(row);
    FRows.push_back(row);
  }
  for (const TRow& gone : before) {
    if (gone.First == nullptr) continue;
    // It may be in the middle of its own click.
    for (QWidget* widget : {gone.First, static_cast<QWidget*>(gone.Second)}) {
      if (widget == nullptr) continue;
      widget->hide();
      widget->deleteLater();
    }
  }
  if (!isSameOrder) Place();
}

void TExplorerGroupView::MakeWidgets(TRow& ioRow) {
  using enum TExplorerBarItemKind;
  switch (ioRow.Kind) {
    case ikLink: {
      auto* link = QtOwned<TLinkButton>(FBody);
      connect(link, &QAbstractButton::clicked, this, [this, item = ioRow.Item] { FOnLink(item); });
      ioRow.First = link;
      return;
    }
    case ikCaptionAndValue:
      ioRow.First = NewLabel();
      ioRow.Second = NewLabel();
      ioRow.Second->setWordWrap(true);
      return;
    case ikText:
      ioRow.First = NewLabel();
      return;
    case ikSeparator: {
      auto* line = QtOwned<QFrame>(FBody);
      line->setFrameShape(QFrame::HLine);
      line->setFrameShadow(QFrame::Sunken);
      ioRow.First = line;
      return;
    }
  }
}

QLabel* TExplorerGroupView::NewLabel() {
  auto* label = QtOwned<QLabel>(FBody);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  label->setContentsMargins(TLinkButton::cMargin, 0, 0, 0);
  return label;
}

void TExplorerGroupView::Fill(const TRow& iRow) {
  ++FItemChanges;
  const QString caption = ToQt(iRow.Caption);
  if (auto* link = dynamic_cast<TLinkButton*>(iRow.First)) {
    link->setText(caption);
    link->setAccessibleName(caption);
    link->setIcon(TDrawings::Icon(iRow.Image));
    link->SetWordWrap(iRow.WordWrap);
    link->setToolTip(iRow.WordWrap ? QString() : ToHint(iRow.Caption));
    link->updateGeometry();
  } else if (auto* text = dynamic_cast<QLabel*>(iRow.First)) {
    text->setText(caption);
    // A caption beside a value breaks before the bar gets too wide for its pane.
    text->setWordWrap(iRow.WordWrap || iRow.Second != nullptr);
  }
  if (iRow.Second != nullptr) iRow.Second->setText(ToQt(iRow.Value));
}

void TExplorerGroupView::Place() {
  ++FLayouts;
  while (const std::unique_ptr<QLayoutItem> item{FGrid->takeAt(0)}) {
  }
  int row = 0;
  for (const TRow& shown : FRows) {
    FGrid->addWidget(shown.First, row, 0, 1, shown.Second != nullptr ? 1 : 2);
    if (shown.Second != nullptr) FGrid->addWidget(shown.Second, row, 1);
    shown.First->show();
    if (shown.Second != nullptr) shown.Second->show();
    ++row;
  }
}

std::vector<QWidget*> TExplorerGroupView::FocusParts() const {
  std::vector<QWidget*> parts{FTitle};
  for (const TRow& row : FRows) {
    if (row.Kind == TExplorerBarItemKind::ikLink) parts.push_back(row.First);
  }
  return parts;
}

}  // namespace kk
