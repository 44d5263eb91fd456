#include "views/dialogs/TfrmKKWatchlistEditItemDescription.h"

namespace kk {

TfrmKKWatchlistEditItemDescription::TfrmKKWatchlistEditItemDescription(TForm* iOwner)
    : TfrmKKCommonBase(iOwner, u"TfrmKKWatchlistEditItemDescription", _resEditDescriptionCaption) {
  SetPosition(TPosition::poOwnerFormCenter);
  rchedtDescription.SetStretches(true);
  pnlButtons.SetArrangement(TArrangement::arRow);
  SetCancelButton(&btnCancel);
  SetFocusedControl(&rchedtDescription);
}

bool TfrmKKWatchlistEditItemDescription::Display(TForm* iOwner, TStringList& ioLines) {
  TfrmKKWatchlistEditItemDescription form(iOwner);
  form.rchedtDescription.SetLines(ioLines);
  if (form.ShowModal() != cModalOK) return false;
  ioLines.Assign(form.rchedtDescription.Lines());
  return true;
}

}  // namespace kk
