#pragma once

#include <initializer_list>
#include <memory>

#include "host/controls/TLabel.h"
#include "host/controls/TfrmKKCommonBase.h"

namespace kk {

/// What a message box is about; the skin shows a picture for it.
enum class TMsgDlgType { mtWarning, mtError, mtInformation, mtConfirmation };

/// The buttons of a message box, from left to right.
enum class TMsgDlgBtn { mbYes, mbNo, mbOK, mbCancel };

/// A message box: a text and buttons of the fixed sort.
class TfrmMessageDlg final : public TfrmKKCommonBase {
 public:
  /// Return presses the first button, Escape "Abbrechen", else "Nein", else the only one.
  TfrmMessageDlg(TStringView iText, TMsgDlgType iType, std::initializer_list<TMsgDlgBtn> iButtons);

  TMsgDlgType Type() const { return FType; }
  const TString& Text() const { return lblText.Caption(); }
  /// Null if the box has no such button.
  TButton* Button(TMsgDlgBtn iButton) const;

  TLabel lblText{this, u"lblText"};
  TPanel pnlButtons{this, u"pnlButtons"};

 private:
  TMsgDlgType FType;
  std::vector<std::unique_ptr<TButton>> FButtons;
};

/// Shows a message box and answers its modal result; 2 (cancel) if it was closed without a button.
/// The program has no help file: iHelpContext has no meaning here.
int MessageDlg(TStringView iText, TMsgDlgType iType, std::initializer_list<TMsgDlgBtn> iButtons,
               int iHelpContext = 0);

/// A message box of the information kind with an OK button.
void ShowMessage(TStringView iText);

}  // namespace kk
