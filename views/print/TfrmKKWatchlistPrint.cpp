#include "views/print/TfrmKKWatchlistPrint.h"

#include "host/base/TClock.h"
#include "host/base/TLocale.h"
#include "host/contract/ISearchResultConverter.h"
#include "host/contract/TPlugins.h"
#include "host/controls/TKKPrint.h"
#include "host/controls/TPrintDialog.h"
#include "host/controls/TfrmMessageDlg.h"
#include "model/TLstWatchlistPlugin.h"
#include "persistence/TWatchlistHandler.h"

namespace kk {

namespace {

/// What the converters tell of a group's items.
struct TGroupLines {
  TStringList Headers;
  TStringList Rows;
  std::vector<int> RowLineCounts;
};

void Convert(ISearchResultConverter& iConverter, const TLstWatchlistItem& iItems,
             TGroupLines& ioLines) {
  iConverter.Convert(true, iItems.GetItems(0).SearchResult(), ioLines.Headers);
  for (const TWatchlistItem* item : iItems) {
    const int before = ioLines.Rows.GetCount();
    iConverter.Convert(false, item->SearchResult(), ioLines.Rows);
    ioLines.RowLineCounts.push_back(ioLines.Rows.GetCount() - before);
  }
}

// All plug-ins with the group's id are asked, not the first one alone.
void Convert(const TWatchlistPlugin& iGroup, TGroupLines& ioLines) {
  for (int i = 0; i < Plugins().GetCount(); ++i) {
    const TIntf<IPlugin> plugin = Plugins().GetItems(i);
    if (plugin->GetId() != iGroup.GetId()) continue;
    const auto converter = Supports<ISearchResultConverter>(plugin);
    if (converter) Convert(*converter, iGroup.LstItem(), ioLines);
  }
}

void PrintCopies(TKKPrint& ioPrint, const TPrintDialog& iDialog) {
  const bool all = iDialog.PrintRange == TPrintRange::prAllPages;
  const int from = all ? iDialog.MinPage : iDialog.FromPage;
  const int to = all ? iDialog.MaxPage : iDialog.ToPage;
  if (iDialog.Copies <= 1) return ioPrint.Print(from, to);
  if (iDialog.Collate) {
    for (int copy = 0; copy < iDialog.Copies; ++copy) ioPrint.Print(from, to);
    return;
  }
  for (int page = from; page <= to; ++page) {
    for (int copy = 0; copy < iDialog.Copies; ++copy) ioPrint.Print(page, page);
  }
}

// False if the user has cancelled.
bool ShowDialog(TPrintDialog& ioDialog, TKKPrint& ioPrint) {
  ioDialog.AllowsPageNums = true;
  ioDialog.FromPage = ioDialog.MinPage = 1;
  ioDialog.ToPage = ioDialog.MaxPage = ioPrint.CalculatePageCount();
  ioDialog.Job = &ioPrint.Job();
  const bool ok = ioDialog.Execute();
  ioDialog.Job = nullptr;
  return ok;
}

TWatchlistCategory& CategoryOf(const TVirtualNode& iNode) {
  return dynamic_cast<TWatchlistCategory&>(*iNode.Object());
}

}  // namespace

TfrmKKWatchlistPrint::TfrmKKWatchlistPrint(TForm* iOwner)
    : TfrmKKCommonBase(iOwner, u"TfrmKKWatchlistPrint", _resPrintCaption) {
  SetPosition(TPosition::poOwnerFormCenter);
  vst.SetStretches(true);
  pnlButtons.SetArrangement(TArrangement::arRow);
  SetDefaultButton(&btnOK);
  SetCancelButton(&btnCancel);
  SetFocusedControl(&vst);
  btnOK.SetOnClick(TNotifyEvent::Of<&TfrmKKWatchlistPrint::btnOKClick>(this));
}

void TfrmKKWatchlistPrint::Display(TForm* iOwner) {
  TfrmKKWatchlistPrint form(iOwner);
  form.vst.SetOnGetText(TNodeTextEvent::Of<&TfrmKKWatchlistPrint::vstGetText>(&form));
  form.LoadCategories();
  if (form.vst.First() == nullptr) {
    ShowMessage(_resPrintNothing);
    return;
  }
  if (form.ShowModal() != cModalOK) return;
  if (!form.HasCheckedNode()) return;
  form.PrintSelectedCategories();
}

void TfrmKKWatchlistPrint::LoadCategories() {
  vst.Clear();
  {
    const TVirtualStringTree::TUpdate update(vst);
    for (TWatchlistCategory* category : Handler()->LstCategory()) {
      AddCategoryToTree(nullptr, *category);
    }
  }
  if (vst.First() != nullptr) vst.ScrollIntoView(*vst.First());
}

void TfrmKKWatchlistPrint::AddCategoryToTree(TVirtualNode* iParent, TWatchlistCategory& iCategory) {
  if (iCategory.GetItemCount(true) == 0) return;
  TVirtualNode& node = vst.AddChild(iParent, &iCategory);
  // Without items of its own it only stands there to hold its children.
  if (iCategory.GetItemCount(false) > 0) vst.SetHasCheckBox(node, true);
  for (TWatchlistCategory* child : iCategory.LstCategory()) AddCategoryToTree(&node, *child);
  vst.SetExpanded(node, false);
}

// Looks like a mistake and is required: the count is that of all below, though only the category's
// own items will be printed.
void TfrmKKWatchlistPrint::vstGetText(TObject*, TVirtualNode& iNode, TString& oText) {
  const TWatchlistCategory& category = CategoryOf(iNode);
  oText = Format(_resPrintCategory, {category.Name(), category.GetItemCount(true)});
}

void TfrmKKWatchlistPrint::btnOKClick(TObject*) { SetModalResult(cModalOK); }

bool TfrmKKWatchlistPrint::HasCheckedNode() const {
  for (const TVirtualNode* node = vst.First(); node != nullptr; node = node->Next()) {
    if (node->Checked()) return true;
  }
  return false;
}

void TfrmKKWatchlistPrint::PrintSelectedCategories() const {
  TPrintDialog dialog;
  for (const TVirtualNode* node = vst.First(); node != nullptr; node = node->Next()) {
    if (node->Checked()) PrintGroups(CategoryOf(*node), dialog);
  }
}

void TfrmKKWatchlistPrint::PrintCategory(const TWatchlistCategory& iCategory) {
  TPrintDialog dialog;
  PrintGroups(iCategory, dialog);
}

void TfrmKKWatchlistPrint::PrintGroups(const TWatchlistCategory& iCategory,
                                       TPrintDialog& ioDialog) {
  // The work goes on behind a print dialog: an item that comes in then may bring a new group.
  for (int i = 0; i < iCategory.LstPlugin().GetCount(); ++i) {
    const TWatchlistPlugin& group = iCategory.LstPlugin().GetItems(i);
    if (group.LstItem().GetCount() == 0) continue;
    TGroupLines lines;
    Convert(group, lines);
    if (lines.Rows.GetCount() == 0) continue;
    const TStringList& headers = lines.Headers;
    TKKPrint print(Format(_resPrintTitle, {iCategory.Name()}),
                   Format(_resPrintDate, {FormatDateTime(u"dd.mm.yyyy hh:nn", Now())}),
                   group.GetName(), headers.Get(0), headers.Get(1), headers.Get(2), headers.Get(3),
                   lines.Rows, nullptr);
    print.SetRows(lines.RowLineCounts, headers);
    // A cancel leaves out this list alone.
    if (ShowDialog(ioDialog, print)) PrintCopies(print, ioDialog);
  }
}

}  // namespace kk
