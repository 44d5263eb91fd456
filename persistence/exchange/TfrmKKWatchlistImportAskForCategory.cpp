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
  for (const TWatchlistCategory* category : categories) {
    if (names.IndexOf(category->Name()) < 0) names.Add(category->Name());
  }
  std::vector<TString> sorted;
  for (int i = 0; i < names.GetCount(); ++i) sorted.push_back(names.Get(i));
  std::ranges::sort(sorted, {}, LocaleSortKey);
  for (const TString& name : sorted) cmbxCategoryChoice.AddItem(name);
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
