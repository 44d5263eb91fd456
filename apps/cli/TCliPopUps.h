#pragma once

#include <memory>
#include <vector>

#include "host/controls/TfrmKKCommonNotifier.h"

namespace kk {

class ICliConsole;
class TForm;

/// Pop-ups and notifications where there is no screen: their texts and their link, line by line.
/// Main thread.
class TCliPopUps {
 public:
  /// Borrowed.
  explicit TCliPopUps(ICliConsole& ioConsole) : FConsole(ioConsole) {}

  /// Takes the window over: what its labels say is printed, and that was its life.
  void Show(std::unique_ptr<TForm> iForm);
  void Show(const TNotification& iNotification);

 private:
  /// The first line is what it is about.
  void Print(const std::vector<TString>& iLines, TStringView iLink);

  ICliConsole& FConsole;
};

}  // namespace kk
