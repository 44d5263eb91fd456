#pragma once

#include <deque>
#include <functional>
#include <string>

#include "host/controls/TOpenDialog.h"
#include "host/controls/TfrmKKCommonMessageDlg.h"
#include "host/controls/TfrmMessageDlg.h"

namespace kk {

/// Plays the user in front of modal windows, from a script: each step waits for the next window and
/// says what the user does in it. A window
/// that waits for work elsewhere is waited for without a step, unless the next step is for it. A
/// window that nobody expected fails the test and is cancelled; so does one that stays open behind
/// its step; at the end, a step whose window did not come fails.
class TScriptedFormHost : public IFormHost {
 public:
  TScriptedFormHost() : FBefore(SetFormHost(this)) {}
  ~TScriptedFormHost() override;

  void ShowModal(TForm& ioForm) override;

  /// The next window is of this class, and this is what the user does in it.
  template <class T>
  TScriptedFormHost& Expect(std::function<void(T&)> iStep) {
    return Add(typeid(T).name(), [step = std::move(iStep)](TForm& form) {
      auto* expected = dynamic_cast<T*>(&form);
      if (expected != nullptr) step(*expected);
      return expected != nullptr;
    });
  }
  /// The next window has this caption.
  TScriptedFormHost& ExpectCaption(TStringView iCaption, std::function<void(TForm&)> iStep);
  /// The next window is a message box with this text; the user presses this button.
  TScriptedFormHost& ExpectMessage(TStringView iText, TMsgDlgBtn iPress = TMsgDlgBtn::mbOK);
  /// The next window is the question with this text; the user presses yes or no.
  TScriptedFormHost& ExpectQuestion(TStringView iText, bool iYes);

  bool ShowOpenDialog(TOpenDialog& ioDialog) override;
  /// The next file dialog has this title; the user chooses this file, or cancels (empty).
  TScriptedFormHost& ExpectOpenDialog(TStringView iTitle, TStringView iFileName);
  /// What the last file dialog looked like when it came up.
  const TOpenDialog& LastOpenDialog() const { return FLastOpenDialog; }

  int ShownCount() const { return FShownCount; }

 private:
  /// False for a window of another kind.
  using TStep = std::function<bool(TForm&)>;
  struct TExpected {
    std::string What;
    TStep Step;
  };
  TScriptedFormHost& Add(std::string iWhat, TStep iStep);

  std::deque<TExpected> FScript;
  std::deque<std::pair<TString, TString>> FOpenDialogs;
  TOpenDialog FLastOpenDialog;
  int FShownCount = 0;
  IFormHost* FBefore;
};

}  // namespace kk
