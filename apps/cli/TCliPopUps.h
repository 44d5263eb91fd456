#pragma once

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

  /// What the labels of the window say.
  void Show(const TForm& iForm);
  void Show(const TNotification& iNotification);

 private:
  /// The first line is what it is about.
  void Print(const std::vector<TString>& iLines, TStringView iLink);

  ICliConsole& FConsole;
};

}  // namespace kk
