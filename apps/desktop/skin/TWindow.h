#pragma once

#include "apps/desktop/skin/TPanelWidget.h"

namespace kk {

class TForm;

/// The widget of a form: a window of its own, or a part of one where it is embedded. Closing it by
/// its frame is the form's matter.
class TWindow : public TPanelWidget {
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
