#include "persistence/exchange/TfrmKKWatchlistExport.h"

#include "host/controls/TfrmMessageDlg.h"
#include "persistence/TWatchlistHandler.h"
#include "persistence/exchange/TWatchlistFileSaverExport.h"
#include "reminders/TLstRemindItemSync.h"

namespace kk {

TfrmKKWatchlistExport::TfrmKKWatchlistExport(TForm* iOwner)
    : TfrmKKWatchlistExchange(iOwner, u"TfrmKKWatchlistExport", _resExportCaption,
                              _resExportQuestion) {}

bool TfrmKKWatchlistExport::Display(TForm* iOwner) {
  TfrmKKWatchlistExport form(iOwner);
  form.ShowData();
  if (form.vstIntegrations.First() == nullptr) {
    MessageDlg(_resExportNothing, TMsgDlgType::mtInformation, {TMsgDlgBtn::mbOK});
    return false;
  }
  return form.ShowModal() == cModalOK;
}

void TfrmKKWatchlistExport::ShowData() {
  const TLstWatchlistCategory& tree = Handler()->LstCategory();
  ShowIntegrations(tree);
  ShowRemindItems(Handler()->GetLstRemind().GetCount());
  TLstWatchlistCategory categories(false);
  tree.GetCategories(categories, true);
  ShowCategories(categories.GetCount(), true);
  SwitchOKButton();
}

void TfrmKKWatchlistExport::btnOKClick(TObject*) {
  TOpenDialog dialog = FileDialog();
  dialog.ForSaving = true;
  if (!dialog.Execute()) return;
  try {
    RememberFolderOf(dialog.FileName);
    ExportTo(dialog.FileName);
    SetModalResult(cModalOK);
  } catch (const std::exception& e) {
    MessageDlg(MessageOf(e), TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
  }
}

void TfrmKKWatchlistExport::ExportTo(TStringView iFileName) const {
  TWatchlistFileSaverExport saver(iFileName);
  saver.SetIncludeCategories(WantsCategories());
  saver.SetIncludeRemindItems(WantsRemindItems());
  for (TWatchlistIntegration* record : CheckedIntegrations()) {
    saver.IncludeIntegrations().Add(*record);
  }
  const TLstRemindItemSync& reminders = Handler()->GetLstRemind();
  const TLstRemindItemSync::TReading reading(reminders);
  saver.SaveToFile(Handler()->LstCategory(), reminders, Handler()->LstIntegration());
}

}  // namespace kk
