#include "host/options/TframOptionsEmail.h"

#include "host/base/Exception.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TKKCommonEmail.h"
#include "host/controls/TForm.h"
#include "host/controls/TfrmMessageDlg.h"
#include "host/delivery/TDeliveryTrial.h"
#include "host/delivery/TEmailConfirmation.h"

namespace kk {

namespace {

constexpr TStringView cAnotherCode = u"Lassen Sie einen neuen schicken.";

TString Tries(int iLeft) {
  return iLeft == 1 ? TString(u"einen Versuch") : Format(u"%d Versuche", {iLeft});
}

// Empty for a code that was right.
TString Refusal(TEmailConfirmation::TOutcome iOutcome, int iTriesLeft) {
  using enum TEmailConfirmation::TOutcome;
  switch (iOutcome) {
    case eoConfirmed:
      return {};
    case eoNone:
      return u"Für diese Adresse gibt es keinen Code. Lassen Sie zuerst einen schicken.";
    case eoExpired:
      return Format(u"Der Code ist älter als %d Stunden und gilt nicht mehr. %s",
                    {TEmailConfirmation::cHours, cAnotherCode});
    case eoTooMany:
      return Format(
          u"Der Code stimmt nicht, oder es waren schon %d falsche davor. Er gilt nicht mehr. %s",
          {TEmailConfirmation::cMaxTries, cAnotherCode});
    case eoWrong:
      break;
  }
  return Format(u"Der Code stimmt nicht. Sie haben noch %s.", {Tries(iTriesLeft)});
}

bool IsConfirmed() {
  TString address;
  return TIniFileSectionCommunication().GetEMail(address);
}

}  // namespace

TframOptionsEmail::TframOptionsEmail() : TframOptionsBase(u"framOptionsEmail") {
  using TSelf = TframOptionsEmail;
  Hold({&EMail, &From, &Server, &User}, {&Password});
  pnlCode.SetArrangement(TArrangement::arRow);
  EMail.Edit.SetOnChange(TNotifyEvent::Of<&TSelf::edtEMailChange>(this));
  btnSendCode.SetOnClick(TNotifyEvent::Of<&TSelf::btnSendCodeClick>(this));
  btnConfirm.SetOnClick(TNotifyEvent::Of<&TSelf::btnConfirmClick>(this));
  edtCode.SetOnKeyPress(TKeyPressEvent::Of<&TSelf::edtCodeKeyPress>(this));
}

void TframOptionsEmail::LoadSettings() {
  TframOptionsBase::LoadSettings();
  ShowConfirmed();
}

void TframOptionsEmail::SaveSettings() {
  TframOptionsBase::SaveSettings();
  ShowConfirmed();
}

void TframOptionsEmail::ShowConfirmed() {
  const bool isStored = EMail.Entered() == EMail.Stored();
  const bool isConfirmed = isStored && IsConfirmed();
  if (EMail.Entered().empty()) {
    lblConfirmed.SetCaption(u"Ohne Adresse gibt es keine Erinnerungen per E-Mail.");
  } else if (isConfirmed) {
    lblConfirmed.SetCaption(u"Bestätigt: Erinnerungen gehen an diese Adresse.");
  } else {
    lblConfirmed.SetCaption(u"Noch nicht bestätigt: Vorher gehen keine Erinnerungen dorthin.");
  }
  btnSendCode.SetEnabled(!EMail.Entered().empty() && !isConfirmed);
  btnConfirm.SetEnabled(isStored && !EMail.Entered().empty() && !isConfirmed);
}

void TframOptionsEmail::edtEMailChange(TObject*) { ShowConfirmed(); }

void TframOptionsEmail::btnSendCodeClick(TObject*) {
  if (!SaveForTrial()) return;
  const TString address = TEmailConfirmation::Request(&TKKCommonEmail::SendNow);
  if (TForm* form = Form()) form->SetFocusedControl(&edtCode);
  ShowMessage(Format(u"Ein Code ist an %s unterwegs. Er gilt %d Stunden.",
                     {address, TEmailConfirmation::cHours}));
}

void TframOptionsEmail::btnConfirmClick(TObject*) {
  int triesLeft = 0;
  const TEmailConfirmation::TOutcome outcome = TEmailConfirmation::Check(edtCode.Text(), triesLeft);
  const TString refusal = Refusal(outcome, triesLeft);
  if (!refusal.empty()) throw Exception(refusal);
  edtCode.SetText({});
  IniFile().NotifyChanged();
  ShowConfirmed();
  ShowMessage(u"Die Adresse ist bestätigt. Erinnerungen per E-Mail gehen jetzt dorthin.");
}

void TframOptionsEmail::edtCodeKeyPress(TObject*, char16_t& ioKey) {
  if (ioKey != cKeyReturn) return;
  ioKey = 0;
  btnConfirm.Click();
}

void TframOptionsEmail::btnTestClick(TObject*) {
  if (!SaveForTrial()) return;
  const TString address = EMail.Stored();
  if (address.empty()) throw Exception(u"Es ist noch keine E-Mail-Adresse eingestellt.");
  TDeliveryTrial::SendMail(address);
  ShowMessage(Format(u"Der Postausgang hat die E-Mail an %s angenommen.", {address}));
}

}  // namespace kk
