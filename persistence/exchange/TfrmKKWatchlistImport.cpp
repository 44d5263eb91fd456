#include "persistence/exchange/TfrmKKWatchlistImport.h"

#include <filesystem>

#include "host/base/TClock.h"
#include "host/controls/TfrmKKCommonWait.h"
#include "host/controls/TfrmMessageDlg.h"
#include "persistence/TWatchlistFileLoaderMobileImport.h"
#include "persistence/TWatchlistHandler.h"
#include "persistence/exchange/TWatchlistFileLoaderImport.h"
#include "persistence/exchange/TfrmKKWatchlistImportAskForCategory.h"
#include "persistence/exchange/TfrmWatchlistImportProgress.h"

namespace kk {

namespace {

// Smaller files are there before a window could be.
constexpr uintmax_t cReadAtOnce = 128 * 1024;

bool IsReadAtOnce(TStringView iFileName) {
  std::error_code error;
  const uintmax_t size = std::filesystem::file_size(ToUtf8(iFileName), error);
  return error || size < cReadAtOnce;
}

}  // namespace

TfrmKKWatchlistImport::TfrmKKWatchlistImport(TForm* iOwner)
    : TfrmKKWatchlistExchange(iOwner, u"TfrmKKWatchlistImport", _resImportCaption,
                              _resImportQuestion),
      FLstCategory(std::make_unique<TLstWatchlistCategory>(true)),
      FLstRemindItem(std::make_unique<TLstRemindItem>(true)) {}

bool TfrmKKWatchlistImport::Display(TForm* iOwner, TStringView iFileName) {
  TfrmKKWatchlistImport form(iOwner);
  if (!form.LoadData(iFileName)) {
    if (!iFileName.empty() && !form.FGivenUp) {
      MessageDlg(Format(_resImportUnreadable, {WithoutControlCharacters(iFileName)}),
                 TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
    }
    return false;
  }
  form.ShowData();
  return form.ShowModal() == cModalOK;
}

bool TfrmKKWatchlistImport::ExecuteInBackground(TStringView iFileName, TStringView iCategoryName) {
  TfrmKKWatchlistImport form(nullptr);
  form.FInBackground = true;
  form.FCategoryName = iCategoryName;
  return form.LoadData(iFileName) && form.TakeOver();
}

bool TfrmKKWatchlistImport::ExecuteInBackgroundFromKKMobileStream(TMemoryStream& iStream) {
  TfrmKKWatchlistImport form(nullptr);
  return form.LoadDataFromKKMobileStream(iStream) && form.TakeOver();
}

bool TfrmKKWatchlistImport::TakeOver() {
  ShowData();
  btnOKClick(nullptr);
  return ModalResult() == cModalOK;
}

bool TfrmKKWatchlistImport::LoadData(TStringView iFileName) {
  bool loaded = false;
  try {
    TString fileName(iFileName);
    if (fileName.empty()) {
      TOpenDialog dialog = FileDialog();
      dialog.FileMustExist = true;
      if (!dialog.Execute()) return false;
      fileName = dialog.FileName;
      RememberFolderOf(fileName);
    }
    FLstCategory = std::make_unique<TLstWatchlistCategory>(true);
    FLstRemindItem = std::make_unique<TLstRemindItem>(true);
    loaded = ReadFile(fileName);
  } catch (const std::exception& e) {
    MessageDlg(MessageOf(e), TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
  }
  return loaded;
}

bool TfrmKKWatchlistImport::ReadFile(TStringView iFileName) {
  TWatchlistFileLoaderImport loader(iFileName);
  bool loaded = false;
  const auto read = [&] {
    loaded = loader.LoadFromFile(*FLstCategory, *FLstRemindItem, Handler()->LstIntegration());
  };
  if (FInBackground || IsReadAtOnce(iFileName)) {
    read();
  } else {
    FGivenUp = !TfrmKKCommonWait::RunInSteps(_resImportReading, [&](TfrmKKCommonWait& ioWait) {
      loader.SetOnStep(TNotifyEvent::Of<&TfrmKKCommonWait::Step>(&ioWait));
      read();
    });
  }
  FIncludedCategories = loader.HasCategories();
  return loaded && !FGivenUp;
}

bool TfrmKKWatchlistImport::LoadDataFromKKMobileStream(TMemoryStream& iStream) {
  try {
    FLstCategory = std::make_unique<TLstWatchlistCategory>(true);
    TWatchlistFileLoaderMobileImport().LoadFromStream(iStream, Handler()->LstIntegration(),
                                                      *FLstCategory);
    FIncludedCategories = true;
    return true;
  } catch (const std::exception& e) {
    MessageDlg(MessageOf(e), TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
    return false;
  }
}

void TfrmKKWatchlistImport::ShowData() {
  ShowIntegrations(*FLstCategory);
  ShowRemindItems(FLstRemindItem->GetCount());
  TLstWatchlistCategory categories(false);
  if (FIncludedCategories) FLstCategory->GetCategories(categories, true);
  ShowCategories(categories.GetCount(), FIncludedCategories);
  chckbxCategories.SetEnabled(FIncludedCategories);
  SwitchOKButton();
}

void TfrmKKWatchlistImport::btnOKClick(TObject* Sender) {
  TImportData data;
  data.NewCategoryName = FCategoryName;
  if (FCategoryName.empty() && !WantsCategories()) {
    data.NewCategoryName = TString(_resImportCategoryName) + ShortDateToStr(Now());
    if (!TfrmKKWatchlistImportAskForCategory::Display(this, data.NewCategoryName)) return;
  }
  TLstWatchlistIntegration chosen(false);
  for (TWatchlistIntegration* record : CheckedIntegrations()) chosen.Add(*record);
  data.LstCategory = FLstCategory.get();
  data.LstRemindItem = WantsRemindItems() ? FLstRemindItem.get() : nullptr;
  data.LstIntegration = &chosen;
  const bool done = TfrmWatchlistImportProgress::Display(this, data, Sender == nullptr);
  SetModalResult(done ? cModalOK : cModalCancel);
}

}  // namespace kk
