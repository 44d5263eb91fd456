#include "views/dialogs/TfrmKKPluginWatchlistEditCategory.h"

#include "host/controls/TfrmMessageDlg.h"
#include "persistence/TWatchlistHandler.h"

namespace kk {

TfrmKKPluginWatchlistEditCategory::TfrmKKPluginWatchlistEditCategory(TForm* iOwner)
    : TfrmKKCommonBase(iOwner, u"TfrmKKPluginWatchlistEditCategory") {
  using TSelf = TfrmKKPluginWatchlistEditCategory;
  SetPosition(TPosition::poOwnerFormCenter);
  rchedtDescription.SetStretches(true);
  pnlButtons.SetArrangement(TArrangement::arRow);
  SetCancelButton(&btnCancel);
  SetOnShow(TNotifyEvent::Of<&TSelf::FormShow>(this));
  SetOnCloseQuery(TCloseQueryEvent::Of<&TSelf::FormCloseQuery>(this));
  edtName.SetOnChange(TNotifyEvent::Of<&TSelf::edtNameChange>(this));
  edtName.SetOnKeyPress(TKeyPressEvent::Of<&TSelf::edtNameKeyPress>(this));
}

bool TfrmKKPluginWatchlistEditCategory::Display(TForm* iOwner, TStringView iCaption,
                                                TStringList& ioDescription, TString& ioName) {
  TfrmKKPluginWatchlistEditCategory form(iOwner);
  form.SetCaption(iCaption);
  form.FOldName = ioName;
  form.edtName.SetText(ioName);
  form.edtNameChange(nullptr);
  form.rchedtDescription.SetLines(ioDescription);
  if (form.ShowModal() != cModalOK) return false;
  ioName = form.edtName.Text();
  ioDescription.Assign(form.rchedtDescription.Lines());
  return true;
}

void TfrmKKPluginWatchlistEditCategory::FormShow(TObject*) { SetFocusedControl(&edtName); }

void TfrmKKPluginWatchlistEditCategory::edtNameChange(TObject*) {
  btnOK.SetEnabled(!Trim(edtName.Text()).empty());
}

void TfrmKKPluginWatchlistEditCategory::edtNameKeyPress(TObject*, char16_t& ioKey) {
  if (ioKey != cKeyReturn || !btnOK.Enabled()) return;
  ioKey = 0;
  btnOK.Click();
}

void TfrmKKPluginWatchlistEditCategory::FormCloseQuery(TObject*, bool& ioCanClose) {
  const TString& name = edtName.Text();
  if (ModalResult() != cModalOK || name == FOldName) return;
  // Looks like a mistake and is required: the top level alone counts, at whatever depth the
  // category stands, and a change of case alone finds the category itself there.
  if (Handler()->LstCategory().IndexOfName(name) < 0) return;
  MessageDlg(Format(_resCategoryNameExists, {name}), TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
  ioCanClose = false;
  edtName.SelectAll();
  SetFocusedControl(&edtName);
}

}  // namespace kk
