#pragma once

#include "host/controls/TButton.h"
#include "host/controls/TLabel.h"
#include "host/controls/TPanel.h"

namespace kk {

/// What stands beside the button that tries a way.
inline constexpr TStringView cOptionsTrialNote =
    u"Zum Testen werden die Angaben dieser Seite gespeichert.";

/// The row at the end of a page by which a user tries what it sets up: a button, and what happens
/// to the page before (TframOptionsBase::SaveForTrial). Main thread.
class TOptionsTrial {
 public:
  TOptionsTrial(TPanel& ioFrame, TNotifyEvent iOnClick) : Row(&ioFrame, u"pnlTest") {
    Row.SetArrangement(TArrangement::arRow);
    Button.SetOnClick(iOnClick);
  }

  TPanel Row;
  TButton Button{&Row, u"btnTest", u"&Testen"};
  TLabel Note{&Row, u"lblTest", cOptionsTrialNote};
};

}  // namespace kk
