#pragma once

#include <QDialog>
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
  /// The layout is borrowed.
  TPrintPreview(const TPrintLayout& iLayout, QWidget* iParent);

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
