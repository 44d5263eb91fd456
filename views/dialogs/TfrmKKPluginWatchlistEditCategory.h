#pragma once

#include "host/base/TStringList.h"
#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TMemo.h"
#include "host/controls/TfrmKKCommonBase.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

/// The editor of a category's name and description. It touches nothing but what it is given.
class TfrmKKPluginWatchlistEditCategory final : public TfrmKKCommonBase {
 public:
  /// Modal; true for OK. Only then are name, as it was typed, and description written back.
  static bool Display(TForm* iOwner, TStringView iCaption, TStringList& ioDescription,
                      TString& ioName);
  static bool DisplayEdit(TForm* iOwner, TStringList& ioDescription, TString& ioName) {
    return Display(iOwner, _resEditCategoryCaptionEdit, ioDescription, ioName);
  }
  /// Nothing calls it: a new category is edited with the other caption, as required.
  static bool DisplayNew(TForm* iOwner, TStringList& ioDescription, TString& ioName) {
    return Display(iOwner, _resEditCategoryCaptionNew, ioDescription, ioName);
  }

  TLabel lblName{this, u"lblName", _resEditCategoryName};
  TEdit edtName{this, u"edtName"};
  TLabel lblDescription{this, u"lblDescription", _resEditCategoryDescription};
  TMemo rchedtDescription{this, u"rchedtDescription"};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnOK{&pnlButtons, u"btnOK", _resEditOK, cModalOK};
  TButton btnCancel{&pnlButtons, u"btnCancel", _resEditCancel, cModalCancel};

 private:
  explicit TfrmKKPluginWatchlistEditCategory(TForm* iOwner);

  void FormShow(TObject* Sender);
  void FormCloseQuery(TObject* Sender, bool& ioCanClose);
  void edtNameChange(TObject* Sender);
  void edtNameKeyPress(TObject* Sender, char16_t& ioKey);

  TString FOldName;
};

}  // namespace kk
