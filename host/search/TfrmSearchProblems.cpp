#include "host/search/TfrmSearchProblems.h"

#include "host/search/SearchResourceStrings.h"

namespace kk {

TfrmSearchProblems::TfrmSearchProblems(TForm* iOwner, const std::vector<TString>& iProblems)
    : TfrmKKCommonBase(iOwner, u"TfrmSearchProblems", _resSearchProblemsCaption) {
  SetPosition(TPosition::poOwnerFormCenter);
  TStringList lines;
  lines.Assign(iProblems);
  mmProblems.SetLines(lines);
  mmProblems.SetReadOnly(true);
  mmProblems.SetStretches(true);
  pnlButtons.SetArrangement(TArrangement::arRow);
  btnClose.SetCaption(_resSearchClose);
  SetDefaultButton(&btnClose);
  SetCancelButton(&btnClose);
}

void TfrmSearchProblems::Display(TForm* iOwner, const std::vector<TString>& iProblems) {
  TfrmSearchProblems form(iOwner, iProblems);
  form.ShowModal();
}

}  // namespace kk
