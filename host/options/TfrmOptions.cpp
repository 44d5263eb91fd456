#include "host/options/TfrmOptions.h"

#include "host/base/Exception.h"
#include "host/base/Guard.h"
#include "host/common/TKKIniFile.h"
#include "host/controls/TUpdating.h"
#include "host/controls/TfrmMessageDlg.h"
#include "host/options/SettingsNodes.h"

namespace kk {

namespace {

constexpr int cListWidth = 180;
constexpr int cPageMinWidth = 460;
constexpr int cPageMinHeight = 420;

}  // namespace

bool TfrmOptions::Display(TForm* iOwner, const std::vector<TIntf<ISettingsExtender>>& iExtenders,
                          const TIntf<IApplication>& iApplication) {
  TfrmOptions form(iOwner, OrderedSettingsNodes(HostSettingsNodes(iApplication), iExtenders));
  return form.ShowModal() == cModalOK;
}

TfrmOptions::TfrmOptions(TForm* iOwner, const std::vector<TIntf<ISettingsNode>>& iNodes)
    : TfrmKKCommonBase(iOwner, u"TfrmOptions", u"Einstellungen") {
  using TSelf = TfrmOptions;
  SetPosition(TPosition::poOwnerFormCenter);
  pnlMain.SetArrangement(TArrangement::arRow);
  pnlMain.SetStretches(true);
  pnlList.SetWidth(cListWidth);
  vstPages.SetStretches(true);
  pnlRight.SetStretches(true);
  lblCaption.SetBold(true);
  pnlPages.SetArrangement(TArrangement::arStack);
  pnlPages.SetStretches(true);
  pnlPages.SetMinSize(cPageMinWidth, cPageMinHeight);
  pnlButtons.SetArrangement(TArrangement::arRow);
  SetDefaultButton(&btnOK);
  SetCancelButton(&btnCancel);
  btnOK.SetOnClick(TNotifyEvent::Of<&TSelf::btnOKClick>(this));
  btnApply.SetOnClick(TNotifyEvent::Of<&TSelf::btnApplyClick>(this));
  vstPages.SetOnGetText(TNodeTextEvent::Of<&TSelf::vstPagesGetText>(this));
  vstPages.SetOnFocusChanged(TNotifyEvent::Of<&TSelf::vstPagesFocusChanged>(this));
  for (const TIntf<ISettingsNode>& node : iNodes) {
    FPages.push_back(std::make_unique<TOptionsPage>(node, pnlPages));
    vstPages.AddChild(nullptr, FPages.back().get());
  }
  if (!FPages.empty()) Select(*FPages.front());
  SetFocusedControl(&vstPages);
}

TfrmOptions::~TfrmOptions() {
  vstPages.SetOnFocusChanged({});
  vstPages.Clear();
}

bool TfrmOptions::SelectPage(const TGuid& iId) {
  for (const auto& page : FPages) {
    if (page->Node()->GetId() != iId) continue;
    Select(*page);
    return true;
  }
  return false;
}

void TfrmOptions::Select(TOptionsPage& ioPage) {
  TVirtualNode* node = vstPages.FindByObject(&ioPage);
  vstPages.SetSelectedNode(node);
  vstPages.SetFocusedNode(node);
}

void TfrmOptions::vstPagesGetText(TObject*, TVirtualNode& iNode, TString& oText) {
  oText = dynamic_cast<TOptionsPage&>(*iNode.Object()).Caption();
}

void TfrmOptions::vstPagesFocusChanged(TObject*) {
  if (vstPages.FocusedNode() == nullptr) return;
  const TUpdating updating(*this);
  if (FSelected != nullptr) FSelected->SetVisible(false);
  FSelected = dynamic_cast<TOptionsPage*>(vstPages.FocusedNode()->Object());
  FSelected->SetVisible(true);
  lblCaption.SetCaption(FSelected->Caption());
}

bool TfrmOptions::Apply() {
  if (!Validate() || !Save()) return false;
  IniFile().NotifyChanged();
  for (const auto& page : FPages) {
    Guarded(u"SettingsChanged", [&] { page->Node()->SettingsChanged(); });
  }
  return true;
}

bool TfrmOptions::Validate() {
  for (const auto& page : FPages) {
    TString message;
    TControl* control = nullptr;
    if (!page->IsLoaded() || page->Node()->ValidateSettings(message, control)) continue;
    Complain(*page, message, control);
    return false;
  }
  return true;
}

// What is saved before a failure stays so; the user may try the rest again.
bool TfrmOptions::Save() {
  for (const auto& page : FPages) {
    if (!page->IsLoaded()) continue;
    try {
      page->Node()->SaveSettings();
    } catch (const std::exception& e) {
      Complain(*page,
               Format(u"Die Seite \"%s\" konnte nicht gespeichert werden: %s",
                      {page->Caption(), MessageOf(e)}),
               nullptr);
      return false;
    }
  }
  return true;
}

void TfrmOptions::Complain(TOptionsPage& ioPage, TStringView iMessage, TControl* iControl) {
  Select(ioPage);
  MessageDlg(iMessage, TMsgDlgType::mtWarning, {TMsgDlgBtn::mbOK});
  SetFocusedControl(iControl);
}

void TfrmOptions::btnOKClick(TObject*) {
  if (!Apply()) SetModalResult(cModalNone);
}

void TfrmOptions::btnApplyClick(TObject*) { Apply(); }

}  // namespace kk
