#include "apps/desktop/skin/AsUser.h"

#include "host/base/Guard.h"
#include "host/controls/TfrmMessageDlg.h"

namespace kk {

namespace {

bool showing = false;

// What others raise has a message for developers.
TString TextOf(const std::exception& iException) {
  const TString message = Trim(MessageOf(iException));
  if (dynamic_cast<const Exception*>(&iException) != nullptr && !message.empty()) return message;
  return Format(u"Es ist ein unerwarteter Fehler aufgetreten: %s", {message});
}

}  // namespace

void ShowFailure(const std::exception& iException) noexcept {
  Guarded(u"ShowFailure", [&] {
    LogException(u"Host", iException);
    if (showing) return;
    struct TShowing {
      TShowing() { showing = true; }
      ~TShowing() { showing = false; }
    } box;
    MessageDlg(TextOf(iException), TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
  });
}

}  // namespace kk
