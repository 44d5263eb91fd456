#include "host/options/TframOptionsSms.h"

#include "host/base/Exception.h"
#include "host/base/TClock.h"
#include "host/common/TKKCommonSms.h"
#include "host/common/TVersionHelper.h"
#include "host/controls/TfrmKKCommonMessageDlg.h"
#include "host/controls/TfrmMessageDlg.h"

namespace kk {

TframOptionsSms::TframOptionsSms() : TframOptionsBase(u"framOptionsSms") {
  Hold({&Number, &Service}, {&Token});
  pnlTest.SetArrangement(TArrangement::arRow);
  btnTest.SetOnClick(TNotifyEvent::Of<&TframOptionsSms::btnTestClick>(this));
}

void TframOptionsSms::btnTestClick(TObject*) {
  if (!SaveForTrial()) return;
  const TString number = Number.Stored();
  if (number.empty()) throw Exception(u"Es ist noch keine Rufnummer eingestellt.");
  const TString question =
      Format(u"Jetzt eine SMS an %s schicken? Das kann Geld kosten.", {number});
  if (!TfrmKKCommonMessageDlg::Display(Form(), question, u"&Ja, schicken",
                                       u"Die SMS wird verschickt.", u"&Nein, abbrechen",
                                       u"Es wird nichts verschickt.")) {
    return;
  }
  TSMSResult result = TSMSResult::srOk;
  TString error;
  if (!TKKCommonSms::Send(TVersionHelper::ReplaceVersionParams(u"Kaufkobolde %MV%SV - Test"),
                          number, result, error, Now())) {
    throw Exception(
        Format(u"Die SMS wurde nicht verschickt: (%d) %s", {static_cast<int>(result), error}));
  }
  ShowMessage(Format(u"Der SMS-Dienst hat die SMS an %s angenommen.", {number}));
}

}  // namespace kk
