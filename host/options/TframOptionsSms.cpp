#include "host/options/TframOptionsSms.h"

#include "host/base/Exception.h"
#include "host/controls/TfrmMessageDlg.h"
#include "host/delivery/TDeliveryTrial.h"

namespace kk {

TframOptionsSms::TframOptionsSms() : TframOptionsBase(u"framOptionsSms") {
  Hold({&Number, &Service}, {&Token});
}

void TframOptionsSms::btnTestClick(TObject*) {
  if (!SaveForTrial()) return;
  const TString number = Number.Stored();
  if (number.empty()) throw Exception(u"Es ist noch keine Rufnummer eingestellt.");
  if (!TDeliveryTrial::AskForSms(Form(), number)) return;
  TDeliveryTrial::SendSms(number);
  ShowMessage(Format(u"Der SMS-Dienst hat die SMS an %s angenommen.", {number}));
}

}  // namespace kk
