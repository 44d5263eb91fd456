#pragma once

#include <memory>

#include "host/controls/IFormHost.h"
#include "host/controls/TButton.h"
#include "host/controls/TPanel.h"

namespace kk {

/// Whether a window may close; a handler refuses by setting it to false.
using TCloseQueryEvent = TDelegate<void(TObject* Sender, bool& ioCanClose)>;

/// A window. It is invisible until it is shown, and ends with a modal result if it was shown
/// modally. Closing it without a button is a cancel.
class TForm : public TPanel {
 public:
  /// iOwner: the window that it belongs to and is centred on, borrowed; it may be absent.
  explicit TForm(TForm* iOwner, TStringView iName, TStringView iCaption = {});
  ~TForm() override;

  TForm* Owner() const { return FOwner; }
  /// Keeps in front of other windows.
  bool StaysOnTop() const { return FStaysOnTop; }
  void SetStaysOnTop(bool iStaysOnTop) { SetValue(FStaysOnTop, iStaysOnTop); }

  /// Pressed by Return; null for none. Borrowed, as the other two: who dies is forgotten.
  TButton* DefaultButton() const { return FDefaultButton; }
  void SetDefaultButton(TButton* iButton) { SetValue(FDefaultButton, iButton); }
  /// Pressed by Escape.
  TButton* CancelButton() const { return FCancelButton; }
  void SetCancelButton(TButton* iButton) { SetValue(FCancelButton, iButton); }
  TControl* FocusedControl() const { return FFocusedControl; }
  /// False, and nothing, for a control that can't have the focus: of a kind without, not in this
  /// window, disabled or hidden in it.
  bool SetFocusedControl(TControl* iControl);

  /// Shows it through the form host and returns its modal result when it has ended.
  int ShowModal();
  /// True from the start of ShowModal to its end. While it shows another modal window, from its
  /// close check for example, no input reaches it.
  bool IsModal() const { return FModal; }
  int ModalResult() const { return FModalResult; }
  /// A modal window with a result ends when the running action of the user, or turn of the loop, is
  /// over. 0 takes it back.
  void SetModalResult(int iResult) { FModalResult = iResult; }
  /// Asked by the form host: with a result, runs the close check, and if that allows it, makes the
  /// window disappear. A check that refuses or fails takes the result back. True if the window is
  /// not modal (any more).
  bool EndModalIfDone();

  /// Modal: sets the result cancel. Otherwise runs the close check and disappears.
  void Close() override;
  /// The user closes it by its frame.
  bool CloseByUser();
  void SetOnCloseQuery(TCloseQueryEvent iEvent) { FOnCloseQuery = iEvent; }

  /// Sends the window a message through the main loop: UserMessage runs in a later turn, unless the
  /// window has died by then.
  void PostUserMessage(int iMessage);

 protected:
  bool TakesInput() const override;
  /// A message of PostUserMessage has come.
  virtual void UserMessage(int /*iMessage*/) {}

 private:
  friend class TControl;

  /// Nothing ends the window while it is asked.
  bool CloseQuery();
  bool PressDialogKey(char16_t iKey);
  /// A control leaves the window.
  void Forget(TControl& iControl);

  TForm* FOwner;
  bool FStaysOnTop = false;
  TButton* FDefaultButton = nullptr;
  TButton* FCancelButton = nullptr;
  TControl* FFocusedControl = nullptr;
  bool FModal = false;
  int FModalResult = cModalNone;
  int FUserActions = 0;
  TCloseQueryEvent FOnCloseQuery;
  std::shared_ptr<TForm*> FSelf;
};

}  // namespace kk
