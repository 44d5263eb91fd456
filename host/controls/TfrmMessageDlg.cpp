#include "host/controls/TfrmMessageDlg.h"

#include <array>

namespace kk {

namespace {

struct TKind {
  TStringView Name;
  TStringView Caption;
  int ModalResult;
};

// In the order of TMsgDlgBtn.
constexpr std::array<TKind, 4> cKinds = {{{u"btnYes", u"&Ja", cModalYes},
                                          {u"btnNo", u"&Nein", cModalNo},
                                          {u"btnOK", u"&OK", cModalOK},
                                          {u"btnCancel", u"&Abbrechen", cModalCancel}}};

// In the order of TMsgDlgType.
constexpr std::array<TStringView, 4> cCaptions = {u"Warnung", u"Fehler", u"Information",
                                                  u"Bestätigung"};

const TKind& KindOf(TMsgDlgBtn iButton) { return cKinds[static_cast<size_t>(iButton)]; }

}  // namespace

TfrmMessageDlg::TfrmMessageDlg(TStringView iText, TMsgDlgType iType,
                               std::initializer_list<TMsgDlgBtn> iButtons)
    : TfrmKKCommonBase(nullptr, u"TfrmMessageDlg", cCaptions[static_cast<size_t>(iType)]),
      FType(iType) {
  SetPosition(TPosition::poScreenCenter);
  lblText.SetCaption(iText);
  pnlButtons.SetArrangement(TArrangement::arRow);
  for (const TMsgDlgBtn button : iButtons) {
    const TKind& kind = KindOf(button);
    FButtons.push_back(
        std::make_unique<TButton>(&pnlButtons, kind.Name, kind.Caption, kind.ModalResult));
  }
  if (FButtons.empty()) return;
  SetDefaultButton(FButtons.front().get());
  SetFocusedControl(DefaultButton());
  TButton* const refusal =
      Button(TMsgDlgBtn::mbCancel) ? Button(TMsgDlgBtn::mbCancel) : Button(TMsgDlgBtn::mbNo);
  SetCancelButton(refusal == nullptr && FButtons.size() == 1 ? DefaultButton() : refusal);
}

TButton* TfrmMessageDlg::Button(TMsgDlgBtn iButton) const {
  for (const auto& button : FButtons) {
    if (button->ModalResult() == KindOf(iButton).ModalResult) return button.get();
  }
  return nullptr;
}

int MessageDlg(TStringView iText, TMsgDlgType iType, std::initializer_list<TMsgDlgBtn> iButtons,
               int /*iHelpContext*/) {
  return TfrmMessageDlg(iText, iType, iButtons).ShowModal();
}

void ShowMessage(TStringView iText) {
  MessageDlg(iText, TMsgDlgType::mtInformation, {TMsgDlgBtn::mbOK});
}

}  // namespace kk
