#include "updating/adding/TfrmWatchlistAddSearchResults.h"

namespace kk {

namespace {

TAddResult ToAddResult(int iModalResult) {
  switch (iModalResult) {
    case cModalOK:
      return TAddResult::arOnlyNew;
    case cModalAll:
      return TAddResult::arAll;
    default:
      return TAddResult::arCancel;
  }
}

}  // namespace

TfrmWatchlistAddSearchResults::TfrmWatchlistAddSearchResults()
    : TfrmKKCommonBase(nullptr, u"TfrmWatchlistAddSearchResults", _resAddSearchResultsCaption) {
  using TSelf = TfrmWatchlistAddSearchResults;
  SetPosition(TPosition::poScreenCenter);
  SetStaysOnTop(true);
  pnlButtons.SetArrangement(TArrangement::arRow);
  cmbxCategory.SetOnChange(TNotifyEvent::Of<&TSelf::cmbxCategoryChange>(this));
  cmbxCategory.SetOnKeyPress(TKeyPressEvent::Of<&TSelf::cmbxCategoryKeyPress>(this));
  for (TButton* button : {&btnOnlyNew, &btnAll, &btnCancel}) {
    button->SetOnMouseEnter(TNotifyEvent::Of<&TSelf::btnAnyMouseEnter>(this));
    button->SetOnMouseLeave(TNotifyEvent::Of<&TSelf::btnAnyMouseLeave>(this));
  }
  SetCancelButton(&btnCancel);
  SetFocusedControl(&cmbxCategory);
}

TAddResult TfrmWatchlistAddSearchResults::Display(const TLstWatchlistCategory& iLstCategory,
                                                  TGuid& ioPresetCategoryId, TString& oCategoryName,
                                                  bool& oDoNotShowAgain, bool& ioPreset) {
  TfrmWatchlistAddSearchResults form;
  form.SetCategories(iLstCategory, ioPresetCategoryId);
  form.SetPresetUsed(ioPreset);
  const TAddResult result = ToAddResult(form.ShowModal());
  oDoNotShowAgain = form.chckbxNotAgain.Checked();
  ioPreset = form.chckbxPreset.Checked();
  const int chosen = form.cmbxCategory.ItemIndex();
  if (chosen < 0) {
    oCategoryName = form.cmbxCategory.Text();
  } else {
    oCategoryName.clear();
    ioPresetCategoryId = form.FCategoryIds[static_cast<size_t>(chosen)];
  }
  return result;
}

void TfrmWatchlistAddSearchResults::SetCategories(const TLstWatchlistCategory& iLstCategory,
                                                  const TGuid& iPresetCategoryId) {
  for (const TWatchlistCategory* category : iLstCategory) {
    cmbxCategory.AddItem(category->Name());
    FCategoryIds.push_back(category->Id());
  }
  FPresetIndex = iLstCategory.IndexOfId(iPresetCategoryId);
  cmbxCategory.SetItemIndex(FPresetIndex >= 0 ? FPresetIndex : iLstCategory.IndexOfId(cEmptyGuid));
}

void TfrmWatchlistAddSearchResults::SetPresetUsed(bool iUsed) {
  FPresetUsed = iUsed;
  chckbxPreset.SetChecked(iUsed);
}

void TfrmWatchlistAddSearchResults::cmbxCategoryChange(TObject* /*Sender*/) {
  // Only on a change, as required: at the start both can be clicked, whatever the text.
  const bool named = !Trim(cmbxCategory.Text()).empty();
  btnOnlyNew.SetEnabled(named);
  btnAll.SetEnabled(named);
  chckbxPreset.SetChecked(FPresetUsed && cmbxCategory.ItemIndex() == FPresetIndex);
}

void TfrmWatchlistAddSearchResults::cmbxCategoryKeyPress(TObject* /*Sender*/, char16_t& ioKey) {
  if (ioKey != cKeyReturn) return;
  ioKey = 0;
  btnOnlyNew.Click();
}

void TfrmWatchlistAddSearchResults::btnAnyMouseEnter(TObject* Sender) {
  SetFocusedControl(static_cast<TButton*>(Sender));
}

void TfrmWatchlistAddSearchResults::btnAnyMouseLeave(TObject* /*Sender*/) {
  SetFocusedControl(&chckbxPreset);
}

}  // namespace kk
