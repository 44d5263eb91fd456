#pragma once

#include "host/controls/TButton.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TLabel.h"
#include "host/controls/TOpenDialog.h"
#include "host/controls/TVirtualStringTree.h"
#include "host/controls/TfrmKKCommonBase.h"
#include "model/TLstWatchlistCategory.h"
#include "model/TLstWatchlistIntegration.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

/// What the dialogs of export and import have in common: the user ticks which sources, reminders
/// and categories go. Main thread.
class TfrmKKWatchlistExchange : public TfrmKKCommonBase {
 public:
  TLabel lblQuestion{this, u"lblQuestion"};
  TVirtualStringTree vstIntegrations{this, u"vstIntegrations"};
  TCheckBox chckbxRemindItems{this, u"chckbxRemindItems"};
  TCheckBox chckbxCategories{this, u"chckbxCategories"};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnOK{&pnlButtons, u"btnOK", _resEditOK};
  TButton btnCancel{&pnlButtons, u"btnCancel", _resEditCancel, cModalCancel};

 protected:
  TfrmKKWatchlistExchange(TForm* iOwner, TStringView iName, TStringView iCaption,
                          TStringView iQuestion);
  void Loaded() override { SetWhiteBackground(true); }

  /// A ticked row for each registered source that has items in the tree.
  void ShowIntegrations(const TLstWatchlistCategory& iTree);
  /// Both boxes are ticked if there is something.
  void ShowRemindItems(int iCount);
  void ShowCategories(int iCount, bool iChecked);
  void SwitchOKButton();

  /// The records of the ticked rows.
  std::vector<TWatchlistIntegration*> CheckedIntegrations() const;
  /// A box that is ticked and disabled counts as not chosen.
  bool WantsRemindItems() const {
    return chckbxRemindItems.Checked() && chckbxRemindItems.Enabled();
  }
  bool WantsCategories() const { return chckbxCategories.Checked() && chckbxCategories.Enabled(); }

  virtual void btnOKClick(TObject* Sender) = 0;

  /// Where the last export or import was, else in the user's documents.
  TOpenDialog FileDialog() const;
  static void RememberFolderOf(TStringView iFileName);

 private:
  void DoChecked(TObject* Sender, TVirtualNode& iNode);
  void chckbxCategoriesClick(TObject* Sender);
  void vstIntegrationsGetText(TObject* Sender, TVirtualNode& iNode, TString& oText);

  struct TRow {
    TWatchlistIntegration* Record;
    int Count;
  };
  std::vector<TRow> FRows;
  int FRemindItems = 0;
};

}  // namespace kk
