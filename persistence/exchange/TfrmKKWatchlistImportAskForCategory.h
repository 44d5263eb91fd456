#pragma once

#include "host/controls/TButton.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TLabel.h"
#include "host/controls/TfrmKKCommonBase.h"
#include "model/TLstWatchlistCategory.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

/// Asks for the category that all imported items go to: one of the tree, or a new one. Main thread.
class TfrmKKWatchlistImportAskForCategory final : public TfrmKKCommonBase {
 public:
  /// Modal; true for OK. ioCategoryName: the proposal, and after OK the name as typed, trimmed.
  /// Looks like a mistake and is required: Return closes with OK even on an empty name.
  static bool Display(TForm* iOwner, TString& ioCategoryName);

  TLabel lblQuestion{this, u"lblQuestion", _resImportAskForCategory};
  TComboBox cmbxCategoryChoice{this, u"cmbxCategoryChoice"};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnOK{&pnlButtons, u"btnOK", _resEditOK, cModalOK};
  TButton btnCancel{&pnlButtons, u"btnCancel", _resEditCancel, cModalCancel};

 protected:
  void Loaded() override { SetWhiteBackground(true); }

 private:
  explicit TfrmKKWatchlistImportAskForCategory(TForm* iOwner);
  void ShowData();
  void SwitchOKButton();
  void cmbxCategoryChoiceChange(TObject* Sender);
  void cmbxCategoryChoiceKeyPress(TObject* Sender, char16_t& ioKey);
};

}  // namespace kk
