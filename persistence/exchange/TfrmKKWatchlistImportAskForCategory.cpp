#include "persistence/exchange/TfrmKKWatchlistImportAskForCategory.h"

#include <algorithm>

#include "host/base/THashedStringList.h"
#include "persistence/TWatchlistHandler.h"

namespace kk {

TfrmKKWatchlistImportAskForCategory::TfrmKKWatchlistImportAskForCategory(TForm* iOwner)
    : TfrmKKCommonBase(iOwner, u"TfrmKKWatchlistImportAskForCategory",
                       _resImportAskForCategoryCaption) {
  using TSelf = TfrmKKWatchlistImportAskForCategory;
  SetPosition(TPosition::poOwnerFormCenter);
  pnlButtons.SetArrangement(TArrangement::arRow);
  cmbxCategoryChoice.SetOnChange(TNotifyEvent::Of<&TSelf::cmbxCategoryChoiceChange>(this));
  cmbxCategoryChoice.SetOnKeyPress(TKeyPressEvent::Of<&TSelf::cmbxCategoryChoiceKeyPress>(this));
  SetDefaultButton(&btnOK);
  SetCancelButton(&btnCancel);
  SetFocusedControl(&cmbxCategoryChoice);
}

bool TfrmKKWatchlistImportAskForCategory::Display(TForm* iOwner, TString& ioCategoryName) {
  TfrmKKWatchlistImportAskForCategory form(iOwner);
  form.ShowData();
  form.cmbxCategoryChoice.SetText(ioCategoryName);
  form.SwitchOKButton();
  if (form.ShowModal() != cModalOK) return false;
  ioCategoryName = Trim(form.cmbxCategoryChoice.Text());
  return true;
}

void TfrmKKWatchlistImportAskForCategory::ShowData() {
  TLstWatchlistCategory categories(false);
  Handler()->LstCategory().GetCategories(categories, true);
  THashedStringList names;
  std::vector<std::pair<std::string, TStringView>> sorted;  // by keys that are made once
  for (const TWatchlistCategory* category : categories) {
    if (names.IndexOf(category->Name()) >= 0) continue;
    names.Add(category->Name());
    sorted.emplace_back(LocaleSortKey(category->Name()), category->Name());
  }
  std::ranges::sort(sorted);
  for (const auto& [key, name] : sorted) cmbxCategoryChoice.AddItem(name);
}

void TfrmKKWatchlistImportAskForCategory::SwitchOKButton() {
  btnOK.SetEnabled(!Trim(cmbxCategoryChoice.Text()).empty());
}

void TfrmKKWatchlistImportAskForCategory::cmbxCategoryChoiceChange(TObject*) { SwitchOKButton(); }

void TfrmKKWatchlistImportAskForCategory::cmbxCategoryChoiceKeyPress(TObject*, char16_t& ioKey) {
  if (ioKey != cKeyReturn) return;
  ioKey = 0;
  SetModalResult(cModalOK);
}

}  // namespace kk
