#pragma once

#include "apps/cli/ICliConsole.h"

namespace kk {

/// "settings confirm-email": how the user's address becomes one that reminders go to. What goes
/// wrong raises Exception with what to do next. Main thread.
class TCliConfirm {
 public:
  /// Borrowed.
  explicit TCliConfirm(ICliConsole& ioConsole) : FConsole(ioConsole) {}

  /// Mails a code to the address of the settings.
  void Request();
  /// Confirms the address if it is that code.
  void Check(TStringView iCode);

 private:
  ICliConsole& FConsole;
};

}  // namespace kk
