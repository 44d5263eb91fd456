#include "apps/desktop/skin/TMessageBinder.h"

#include <QBoxLayout>
#include <QStyle>

#include "apps/desktop/skin/QtOwned.h"

namespace kk {

namespace {

QStyle::StandardPixmap PictureOf(TMsgDlgType iType) {
  switch (iType) {
    case TMsgDlgType::mtWarning:
      return QStyle::SP_MessageBoxWarning;
    case TMsgDlgType::mtError:
      return QStyle::SP_MessageBoxCritical;
    case TMsgDlgType::mtInformation:
      return QStyle::SP_MessageBoxInformation;
    case TMsgDlgType::mtConfirmation:
      break;
  }
  return QStyle::SP_MessageBoxQuestion;
}

}  // namespace

TMessageBinder::TMessageBinder(TSkin& ioSkin, TfrmMessageDlg& ioForm)
    : TFormBinder(ioSkin, ioForm), FBox(ioForm) {}

QLayout* TMessageBinder::MakeLayout() {
  if (FPicture) FPicture->deleteLater();
  FPicture = QtOwned<QLabel>(&View());
  const QStyle& style = *View().style();
  const int size = style.pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, &View());
  const QIcon icon = style.standardIcon(PictureOf(FBox.Type()), nullptr, &View());
  FPicture->setPixmap(icon.pixmap(QSize(size, size), View().devicePixelRatioF()));
  auto* const top = QtOwned<QHBoxLayout>();
  top->addWidget(FPicture, 0, Qt::AlignTop);
  top->addSpacing(style.pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, &View()));
  top->addWidget(Skin().WidgetOf(FBox.lblText), 1);
  auto* const column = QtOwned<QVBoxLayout>();
  column->addLayout(top, 1);
  column->addWidget(Skin().WidgetOf(FBox.pnlButtons));
  return column;
}

}  // namespace kk
