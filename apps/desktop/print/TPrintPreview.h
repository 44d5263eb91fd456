#pragma once

#include <QDialog>
#include <QPageLayout>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <functional>

#include "apps/desktop/print/TPrintLayout.h"

class QLabel;
class QPushButton;

namespace kk {

/// The pages as they will come out of the printer, to look at. Main thread.
class TPrintPreview : public QDialog {
 public:
  /// The layout is borrowed. iPaper: the paper that the user has chosen.
  TPrintPreview(const TPrintLayout& iLayout, const QPageLayout& iPaper, QWidget* iParent);

 private:
  void PaintAll(QPrinter& ioPrinter) const;
  void ShowPage(int iPage);
  QPushButton* AddButton(TStringView iCaption, std::function<void()> iClick);

  const TPrintLayout& FLayout;
  QPrinter FPrinter{QPrinter::ScreenResolution};
  QPrintPreviewWidget* FPages;
  QLabel* FNumber;
  QPushButton* FBefore;
  QPushButton* FNext;
};

}  // namespace kk
