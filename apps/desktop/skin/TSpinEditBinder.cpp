#include "apps/desktop/skin/TSpinEditBinder.h"

#include <algorithm>

#include "apps/desktop/skin/PassWheelOn.h"
#include "apps/desktop/skin/QtOwned.h"

namespace kk {

namespace {

// As wide as the numbers that people use, whichever it takes.
class TNumberBox : public QSpinBox {
 public:
  QSize sizeHint() const override { return Narrowed(QSpinBox::sizeHint()); }
  QSize minimumSizeHint() const override { return Narrowed(QSpinBox::minimumSizeHint()); }

 private:
  QSize Narrowed(QSize iHint) const {
    const QFontMetrics metrics = fontMetrics();
    // The lowest number of all is shown with separators.
    const auto widthOf = [this, &metrics](int iNumber) {
      return metrics.horizontalAdvance(textFromValue(iNumber));
    };
    const int saved = std::max(widthOf(minimum()), widthOf(maximum())) - widthOf(-9999);
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
  return PassWheelOn(View(), *iEvent) || TBinder::eventFilter(iObject, iEvent);
}

void TSpinEditBinder::Render() {
  View().setRange(Control().MinValue(), Control().MaxValue());
  // Else what the user has begun to type would go, such as the sign of a number.
  if (View().value() != Control().Value()) View().setValue(Control().Value());
}

}  // namespace kk
