#include "apps/desktop/skin/TTextLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QToolTip>
#include <algorithm>

namespace kk {

namespace {

// In average characters: what is easily read on one line, and what a word may have unbroken.
constexpr int cLineLength = 64;
constexpr int cWordLength = 24;
constexpr int cNarrowest = 12;
constexpr int cAnyHeight = 1 << 20;

// With places at which a long word may be broken.
QString Breakable(const QString& iText) {
  QString text;
  int length = 0;
  for (const QChar letter : iText) {
    length = letter.isSpace() ? 0 : length + 1;
    if (length > cWordLength && !letter.isLowSurrogate()) {
      text += QChar(0x200B);
      length = 1;
    }
    text += letter;
  }
  return text;
}

}  // namespace

TTextLabel::TTextLabel() { setTextFormat(Qt::PlainText); }

void TTextLabel::SetLook(const TLook& iLook) {
  if (FLook == iLook) return;
  FLook = iLook;
  QFont ownFont;  // the rest of it comes from the desktop's
  if (FLook.Bold) ownFont.setBold(true);
  if (FLook.Underline || FLook.Link) ownFont.setUnderline(true);
  setFont(ownFont);
  setForegroundRole(FLook.Link ? QPalette::Link : QPalette::NoRole);
  setFocusPolicy(FLook.Link ? Qt::StrongFocus : Qt::NoFocus);
  if (FLook.Link) {
    setCursor(Qt::PointingHandCursor);
  } else {
    unsetCursor();
  }
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  policy.setHeightForWidth(FLook.Wrapped);
  setSizePolicy(policy);
  updateGeometry();
  update();
}

int TTextLabel::Flags() const {
  return static_cast<int>(FLook.Centered ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter |
         (FLook.Wrapped ? Qt::TextWordWrap : Qt::TextSingleLine) |
         (FLook.HasAccessKey ? Qt::TextShowMnemonic : 0);
}

QSize TTextLabel::SizeIn(int iWidth) const {
  const QString shown = FLook.Wrapped ? Breakable(text()) : text();
  const QSize size =
      fontMetrics().boundingRect(QRect(0, 0, iWidth, cAnyHeight), Flags(), shown).size();
  return size + QSize(1, 0);  // the metrics round down
}

QSize TTextLabel::sizeHint() const {
  if (!FLook.Wrapped) return SizeIn(cAnyHeight);
  return SizeIn(cLineLength * fontMetrics().averageCharWidth());
}

QSize TTextLabel::minimumSizeHint() const {
  const QSize hint = sizeHint();
  // A short text, such as a label before a field, is not cut off for others.
  const int narrowest = (FLook.Wrapped || FLook.Link ? cNarrowest : 2 * cNarrowest) *
                        fontMetrics().averageCharWidth();
  return {std::min(hint.width(), narrowest),
          FLook.Wrapped ? fontMetrics().height() : hint.height()};
}

int TTextLabel::heightForWidth(int iWidth) const {
  return FLook.Wrapped ? SizeIn(iWidth).height() : -1;
}

bool TTextLabel::event(QEvent* iEvent) {
  if (iEvent->type() == QEvent::ToolTip && !FLook.Wrapped && SizeIn(cAnyHeight).width() > width()) {
    QToolTip::showText(static_cast<QHelpEvent*>(iEvent)->globalPos(), text(), this);
    return true;
  }
  return QLabel::event(iEvent);
}

void TTextLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QString shown = FLook.Wrapped
                            ? Breakable(text())
                            : fontMetrics().elidedText(text(), Qt::ElideRight, width(), Flags());
  const QPalette::ColorRole role = FLook.Link ? QPalette::Link : foregroundRole();
  style()->drawItemText(&painter, rect(), Flags(), palette(), isEnabled(), shown, role);
  if (!hasFocus()) return;
  QStyleOptionFocusRect option;
  option.initFrom(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

}  // namespace kk
