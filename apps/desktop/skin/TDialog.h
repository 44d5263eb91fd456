#pragma once

#include <QScrollArea>

#include "apps/desktop/skin/TSkin.h"
#include "host/controls/TForm.h"

namespace kk {

/// The window of a modal form: as large as its content needs and at least as large as the form
/// says, but never larger than the screen; what does not fit is reached by scroll bars. It grows
/// with its content. Main thread.
class TDialog : public QScrollArea {
 public:
  /// The form is borrowed. iOwner: the window that it stands before; null for none.
  TDialog(TForm& ioForm, QWidget* iOwner);
  ~TDialog() override;

  /// Where the form wants it.
  void Open();

  bool eventFilter(QObject* iObject, QEvent* iEvent) override;

 protected:
  void closeEvent(QCloseEvent* iEvent) override;

 private:
  QScreen& Screen() const;
  /// What the content needs, as far as the screen has it.
  QSize WantedSize() const;
  void Grow();
  void Place();

  TForm& FForm;
  QPointer<QWidget> FOwner;
  TSkin FSkin;
};

}  // namespace kk
