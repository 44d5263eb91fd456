#pragma once

#include <functional>
#include <utility>

#include "host/controls/TForm.h"

namespace kk {

class ICliConsole;

/// Shows modal windows as questions in text. Where nobody can answer, a window is ended by its
/// default button. All answers come in by the user's door, so nothing is possible here that a
/// desktop would refuse. A window that only waits is a line of progress; Ctrl+C presses its cancel
/// button, if it has one.
class TCliFormHost : public IFormHost {
 public:
  /// Borrowed.
  explicit TCliFormHost(ICliConsole& ioConsole) : FConsole(ioConsole) {}

  void ShowModal(TForm& ioForm) override;
  /// Asks for the path; where nobody can answer, it is a cancel.
  bool ShowOpenDialog(TOpenDialog& ioDialog) override;

  /// Questions that have nothing to fill in are answered with yes.
  void SetYesToAll(bool iYes) { FYesToAll = iYes; }
  /// Asked first for each window that is not a mere wait; true if it has answered it. What it
  /// raises passes to the one who opened the window.
  using TAnswer = std::function<bool(TForm& ioForm)>;
  /// Answers windows for as long as it lives.
  class TAnswering {
   public:
    TAnswering(TCliFormHost& ioForms, TAnswer iAnswer)
        : FForms(ioForms), FBefore(std::exchange(ioForms.FAnswer, std::move(iAnswer))) {}
    ~TAnswering() { FForms.FAnswer = std::move(FBefore); }
    TAnswering(const TAnswering&) = delete;
    TAnswering& operator=(const TAnswering&) = delete;

   private:
    TCliFormHost& FForms;
    TAnswer FBefore;
  };

  /// The modal result of the window that has ended last since the last call; 0 if none has.
  int TakeLastResult() { return std::exchange(FLastResult, cModalNone); }

 private:
  void Answer(TForm& ioForm);
  bool MayReplace(TStringView iFileName);
  void Wait(TForm& ioForm);

  ICliConsole& FConsole;
  bool FYesToAll = false;
  int FLastResult = cModalNone;
  TAnswer FAnswer;
};

}  // namespace kk
