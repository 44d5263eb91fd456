#include "reminders/RemindTemplates.h"

#include "host/base/TStringList.h"
#include "host/common/TVersionHelper.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

TString RemindEMailSubject(TStringView iCaption) {
  return Format(TVersionHelper::ReplaceVersionParams(_resRemindEMailSubject), {iCaption});
}

TString RemindEMailBody(TStringView iCaption, TStringView iText, TStringView iLink,
                        TDateTime iNow) {
  TStringList lines;
  lines.SetText(Format(TVersionHelper::ReplaceVersionParams(_resRemindEMailBody),
                       {iCaption, iText, iLink, DateTimeToStr(iNow)}));
  return Trim(lines.GetText());
}

TString RemindSmsMessage(TStringView iText) {
  return Format(TVersionHelper::ReplaceVersionParams(_resRemindSMS), {iText});
}

}  // namespace kk
