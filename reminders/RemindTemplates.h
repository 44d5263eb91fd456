#pragma once

#include "host/base/TDateTime.h"
#include "host/base/TString.h"

namespace kk {

/// The messages of reminders that leave the program, as texts. In each the version is filled in
/// first and then the arguments, which stay as they are: a "%s" in a caption is text. Any thread.

TString RemindEMailSubject(TStringView iCaption);
/// Lines end with CR LF; nothing but characters at both ends.
TString RemindEMailBody(TStringView iCaption, TStringView iText, TStringView iLink, TDateTime iNow);
/// The text goes in whole, however long.
TString RemindSmsMessage(TStringView iText);

}  // namespace kk
