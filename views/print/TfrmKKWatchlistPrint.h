#pragma once

#include "host/controls/TLabel.h"
#include "host/controls/TVirtualStringTree.h"
#include "host/controls/TfrmKKCommonBase.h"
#include "model/TWatchlistCategory.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

struct TPrintDialog;

/// Prints the items of categories that the user ticks: a list for each source of each category,
/// after a print dialog of its own. Columns and rows come from the sources' converters. Main
/// thread.
class TfrmKKWatchlistPrint final : public TfrmKKCommonBase {
 public:
  /// The whole command, modal. What a converter or the host's printing raises goes through.
  static void Display(TForm* iOwner);
  /// Prints one category without asking for it, with the print dialogs.
  static void PrintCategory(const TWatchlistCategory& iCategory);

  TLabel lblQuestion{this, u"lblQuestion", _resPrintQuestion};
  TVirtualStringTree vst{this, u"vst"};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnOK{&pnlButtons, u"btnOK", _resEditOK};
  TButton btnCancel{&pnlButtons, u"btnCancel", _resEditCancel, cModalCancel};

 private:
  explicit TfrmKKWatchlistPrint(TForm* iOwner);

  /// A node for each category with items at or below it.
  void LoadCategories();
  void AddCategoryToTree(TVirtualNode* iParent, TWatchlistCategory& iCategory);
  void vstGetText(TObject* Sender, TVirtualNode& iNode, TString& oText);
  void btnOKClick(TObject* Sender);
  bool HasCheckedNode() const;
  void PrintSelectedCategories() const;
  static void PrintGroups(const TWatchlistCategory& iCategory, TPrintDialog& ioDialog);

  // A node refers to its category, which is borrowed; with the node that reference goes.
};

}  // namespace kk
