#pragma once

#include <vector>

#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TLabel.h"
#include "host/controls/TfrmKKCommonBase.h"
#include "model/TLstWatchlistCategory.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

/// What becomes of the results that are to be added.
enum class TAddResult {
  arOnlyNew,  ///< add the new ones, leave those already watched
  arAll,      ///< add the new ones, move those already watched to the chosen category
  arCancel
};

/// Asks for the category that new results go to. It changes nothing by itself. Main thread.
class TfrmWatchlistAddSearchResults final : public TfrmKKCommonBase {
 public:
  /// Modal. iLstCategory: the flat list of all categories.
  /// ioPresetCategoryId: the category to select; the chosen one, unchanged if a name was typed.
  /// oCategoryName: the name typed, as it stands, if it is none of the list; empty otherwise.
  /// oDoNotShowAgain, ioPreset: the two boxes; they and the choice are told on a cancel, too.
  static TAddResult Display(const TLstWatchlistCategory& iLstCategory, TGuid& ioPresetCategoryId,
                            TString& oCategoryName, bool& oDoNotShowAgain, bool& ioPreset);

  void cmbxCategoryChange(TObject* Sender);
  /// Return is a click on the first button.
  void cmbxCategoryKeyPress(TObject* Sender, char16_t& ioKey);
  void btnAnyMouseEnter(TObject* Sender);
  void btnAnyMouseLeave(TObject* Sender);

  TLabel Label1{this, u"Label1", _resAddSearchResultsCategory};
  TComboBox cmbxCategory{this, u"cmbxCategory"};
  TCheckBox chckbxPreset{this, u"chckbxPreset", _resAddSearchResultsPreset};
  TCheckBox chckbxNotAgain{this, u"chckbxNotAgain", _resAddSearchResultsNotAgain};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnOnlyNew{&pnlButtons, u"btnOnlyNew", _resAddSearchResultsOnlyNew, cModalOK};
  TButton btnAll{&pnlButtons, u"btnAll", _resAddSearchResultsAll, cModalAll};
  TButton btnCancel{&pnlButtons, u"btnCancel", _resAddSearchResultsCancel, cModalCancel};

 protected:
  void Loaded() override { SetWhiteBackground(true); }

 private:
  TfrmWatchlistAddSearchResults();
  void SetCategories(const TLstWatchlistCategory& iLstCategory, const TGuid& iPresetCategoryId);
  void SetPresetUsed(bool iUsed);

  std::vector<TGuid> FCategoryIds;  // in the order of the box; the categories may go meanwhile
  int FPresetIndex = -1;
  bool FPresetUsed = false;
};

}  // namespace kk
