#pragma once

#include "host/controls/IFormHost.h"

namespace kk {

/// Shows modal forms as windows, and lets the user choose files by the desktop's own dialog. A form
/// may show another one; the windows end in the reverse order. Main thread.
class TQtFormHost : public IFormHost {
 public:
  void ShowModal(TForm& ioForm) override;
  bool ShowOpenDialog(TOpenDialog& ioDialog) override;
};

}  // namespace kk
