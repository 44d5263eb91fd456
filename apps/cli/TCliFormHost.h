#pragma once

#include <functional>

#include "host/controls/TForm.h"

namespace kk {

class ICliConsole;

/// Shows modal windows as questions in text. Where nobody can answer, a window is ended by its
/// default button. All answers come in by the user's door, so nothing is possible here that a
/// desktop would refuse.
class TCliFormHost : public IFormHost {
 public:
  /// Borrowed.
  explicit TCliFormHost(ICliConsole& ioConsole) : FConsole(ioConsole) {}

  void ShowModal(TForm& ioForm) override;
  /// Asks for the path; where nobody can answer, it is a cancel.
  bool ShowOpenDialog(TOpenDialog& ioDialog) override;

  /// Questions that have nothing to fill in are answered with yes.
  void SetYesToAll(bool iYes) { FYesToAll = iYes; }
  /// Asked first for each window; true if it has answered it. What it raises passes to the one who
  /// opened the window. Empty takes it back.
  using TAnswer = std::function<bool(TForm& ioForm)>;
  void SetAnswer(TAnswer iAnswer) { FAnswer = std::move(iAnswer); }

 private:
  void Wait(TForm& ioForm);
  void ShowTexts(const TForm& iForm);

  ICliConsole& FConsole;
  bool FYesToAll = false;
  TAnswer FAnswer;
};

}  // namespace kk
