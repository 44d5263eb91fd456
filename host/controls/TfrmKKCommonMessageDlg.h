#pragma once

#include "host/controls/TLabel.h"
#include "host/controls/TfrmKKCommonBase.h"

namespace kk {

/// A question with two buttons, each with a line that says what it will do. Every confirmation goes
/// through it.
///
/// What is asked can't be undone as a rule. So "no" has the focus at the start and is what Return,
/// Escape and closing the window mean; "yes" takes a deliberate press.
class TfrmKKCommonMessageDlg final : public TfrmKKCommonBase {
 public:
  /// Modal; true for yes.
  static bool Display(TForm* iOwner, TStringView iText, TStringView iYesCaption,
                      TStringView iYesDescription, TStringView iNoCaption,
                      TStringView iNoDescription);

  TLabel lblText{this, u"lblText"};
  TButton btnYes{this, u"btnYes", {}, cModalYes};
  TButton btnNo{this, u"btnNo", {}, cModalNo};

 protected:
  void Loaded() override { SetWhiteBackground(true); }

 private:
  explicit TfrmKKCommonMessageDlg(TForm* iOwner);
};

}  // namespace kk
