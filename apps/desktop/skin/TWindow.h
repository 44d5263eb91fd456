#pragma once

#include <QWidget>

namespace kk {

class TForm;
class TBinder;

/// The widget of a form: a window, or a part of one where the form is embedded. Closing it by its
/// frame is the form's matter.
class TWindow : public QWidget {
 public:
  /// The form is borrowed; its binder takes it back.
  explicit TWindow(TForm& ioForm) : FForm(&ioForm) {}
  void Forget() { FForm = nullptr; }

 protected:
  void closeEvent(QCloseEvent* iEvent) override;

 private:
  TForm* FForm;
};

}  // namespace kk
