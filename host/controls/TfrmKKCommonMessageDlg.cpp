#include "host/controls/TfrmKKCommonMessageDlg.h"

namespace kk {

TfrmKKCommonMessageDlg::TfrmKKCommonMessageDlg(TForm* iOwner)
    : TfrmKKCommonBase(iOwner, u"TfrmKKCommonMessageDlg") {
  SetPosition(TPosition::poOwnerFormCenter);
  SetDefaultButton(&btnNo);
  SetCancelButton(&btnNo);
  SetFocusedControl(&btnNo);
}

bool TfrmKKCommonMessageDlg::Display(TForm* iOwner, TStringView iText, TStringView iYesCaption,
                                     TStringView iYesDescription, TStringView iNoCaption,
                                     TStringView iNoDescription) {
  TfrmKKCommonMessageDlg form(iOwner);
  form.lblText.SetCaption(iText);
  form.btnYes.SetCaption(iYesCaption);
  form.btnYes.SetDescription(iYesDescription);
  form.btnNo.SetCaption(iNoCaption);
  form.btnNo.SetDescription(iNoDescription);
  return form.ShowModal() == cModalYes;
}

}  // namespace kk
