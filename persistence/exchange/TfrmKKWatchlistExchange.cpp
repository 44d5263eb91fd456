#include "persistence/exchange/TfrmKKWatchlistExchange.h"

#include <algorithm>
#include <filesystem>

#include "host/common/TFileHelper.h"
#include "host/common/TIniFileSectionBase.h"
#include "persistence/TWatchlistHandler.h"

namespace kk {

namespace {

namespace fs = std::filesystem;

}  // namespace

TfrmKKWatchlistExchange::TfrmKKWatchlistExchange(TForm* iOwner, TStringView iName,
                                                 TStringView iCaption, TStringView iQuestion)
    : TfrmKKCommonBase(iOwner, iName, iCaption) {
  using TSelf = TfrmKKWatchlistExchange;
  SetPosition(TPosition::poOwnerFormCenter);
  lblQuestion.SetCaption(iQuestion);
  vstIntegrations.SetStretches(true);
  vstIntegrations.SetOnGetText(TNodeTextEvent::Of<&TSelf::vstIntegrationsGetText>(this));
  vstIntegrations.SetOnChecked(TNodeEvent::Of<&TSelf::DoChecked>(this));
  chckbxCategories.SetChecked(true);
  chckbxCategories.SetOnClick(TNotifyEvent::Of<&TSelf::chckbxCategoriesClick>(this));
  pnlButtons.SetArrangement(TArrangement::arRow);
  btnOK.SetOnClick(TNotifyEvent::Of<&TSelf::btnOKClick>(this));
  SetDefaultButton(&btnOK);
  SetCancelButton(&btnCancel);
  SetFocusedControl(&vstIntegrations);
}

void TfrmKKWatchlistExchange::ShowIntegrations(const TLstWatchlistCategory& iTree) {
  vstIntegrations.Clear();
  FRows.clear();
  for (TWatchlistIntegration* record : Handler()->LstIntegration()) {
    TLstWatchlistItem items(false);
    iTree.GetItemsByPluginId(record->Integration()->GetId(), items, true);
    if (items.GetCount() == 0) continue;
    FRows.push_back({record, items.GetCount()});
    TVirtualNode& node = vstIntegrations.AddChild(nullptr, record);
    vstIntegrations.SetHasCheckBox(node, true);
    vstIntegrations.SetChecked(node, true);
  }
}

void TfrmKKWatchlistExchange::ShowRemindItems(int iCount) {
  FRemindItems = iCount;
  chckbxRemindItems.SetCaption(Format(_resExchangeRemindItems, {iCount}));
  chckbxRemindItems.SetChecked(iCount > 0);
  chckbxRemindItems.SetEnabled(iCount > 0);
}

void TfrmKKWatchlistExchange::ShowCategories(int iCount, bool iChecked) {
  chckbxCategories.SetCaption(Format(_resExchangeCategories, {iCount}));
  chckbxCategories.SetChecked(iChecked);
}

void TfrmKKWatchlistExchange::SwitchOKButton() {
  const bool any = !CheckedIntegrations().empty();
  // It keeps its tick.
  chckbxRemindItems.SetEnabled(any && FRemindItems > 0);
  btnOK.SetEnabled(any || chckbxCategories.Checked());
}

std::vector<TWatchlistIntegration*> TfrmKKWatchlistExchange::CheckedIntegrations() const {
  std::vector<TWatchlistIntegration*> checked;
  for (const TVirtualNode* node = vstIntegrations.First(); node != nullptr;
       node = node->NextSibling()) {
    auto* record = dynamic_cast<TWatchlistIntegration*>(node->Object());
    if (node->Checked() && record != nullptr) checked.push_back(record);
  }
  return checked;
}

TOpenDialog TfrmKKWatchlistExchange::FileDialog() const {
  TString folder = TIniFileSectionCommon().PathToLastImExport();
  if (folder.empty()) folder = GetSpecialFolder(cSpecialFolderDocuments, false);
  TOpenDialog dialog;
  dialog.Title = Caption();
  dialog.Filter = _resExchangeFilter;
  dialog.FileName = FromUtf8((fs::path(ToUtf8(folder)) / ToUtf8(_resExchangeFileName)).string());
  return dialog;
}

void TfrmKKWatchlistExchange::RememberFolderOf(TStringView iFileName) {
  TIniFileSectionCommon().SetPathToLastImExport(
      FromUtf8(fs::path(ToUtf8(iFileName)).parent_path().string()));
}

void TfrmKKWatchlistExchange::DoChecked(TObject*, TVirtualNode&) { SwitchOKButton(); }

void TfrmKKWatchlistExchange::chckbxCategoriesClick(TObject*) { SwitchOKButton(); }

void TfrmKKWatchlistExchange::vstIntegrationsGetText(TObject*, TVirtualNode& iNode,
                                                     TString& oText) {
  const auto row = std::ranges::find(FRows, iNode.Object(),
                                     [](const TRow& iRow) -> TObject* { return iRow.Record; });
  if (row == FRows.end()) return;
  oText = Format(_resExchangeIntegration, {row->Record->Integration()->GetName(), row->Count});
}

}  // namespace kk
