#pragma once

#include "host/base/TDateTime.h"
#include "host/base/TString.h"

namespace kk {

/// Hands the text of a reminder to the SMS service, which sends it to the user's number at that
/// local time. It goes when the reminder is set up, and nothing recalls it. False if that failed;
/// the log and an error box, which stays until it is closed, tell why. Main thread.
bool SendRemindSms(TStringView iText, TDateTime iRemindTime);

}  // namespace kk
