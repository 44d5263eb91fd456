#include "apps/desktop/skin/TSpinEditBinder.h"

#include <QEvent>
#include <limits>

#include "apps/desktop/skin/QtOwned.h"

namespace kk {

namespace {

// As wide as the numbers that people use, though it takes all.
class TNumberBox : public QSpinBox {
 public:
  TNumberBox() { setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max()); }

  QSize sizeHint() const override { return Narrowed(QSpinBox::sizeHint()); }
  QSize minimumSizeHint() const override { return Narrowed(QSpinBox::minimumSizeHint()); }

 private:
  QSize Narrowed(QSize iHint) const {
    const QFontMetrics metrics = fontMetrics();
    const int saved = metrics.horizontalAdvance(QString::number(minimum())) -
                      metrics.horizontalAdvance(QStringLiteral("-9999"));
    return iHint - QSize(saved, 0);
  }
};

}  // namespace

TSpinEditBinder::TSpinEditBinder(TSkin& ioSkin, TSpinEdit& ioEdit)
    : TBinderOf(ioSkin, ioEdit, QtOwned<TNumberBox>()) {
  View().setFocusPolicy(Qt::StrongFocus);
  OnUser(&View(), &QSpinBox::valueChanged, [this](int iValue) { Control().EnterValue(iValue); });
}

bool TSpinEditBinder::eventFilter(QObject* iObject, QEvent* iEvent) {
  if (iEvent->type() == QEvent::Wheel && !View().hasFocus()) {
    iEvent->ignore();
    return true;
  }
  return TBinder::eventFilter(iObject, iEvent);
}

void TSpinEditBinder::Render() { View().setValue(Control().Value()); }

}  // namespace kk
