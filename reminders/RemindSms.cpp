#include "reminders/RemindSms.h"

#include "host/base/Exception.h"
#include "host/base/Log.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TKKCommonSms.h"
#include "host/controls/TfrmMessageDlg.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "reminders/RemindTemplates.h"

namespace kk {

namespace {

// What an exception has in the place of the service's number.
constexpr int cResultOfException = -1;

// The log has one line for each failure, whatever the service says.
TString Failure(int iResult, TStringView iMessage) {
  return Format(_resLoggingRemindSMSFailed, {iResult, ToSingleLine(iMessage)});
}

// The failure as the user and the log read it; empty if the service has the message.
TString TrySend(TStringView iText, TDateTime iRemindTime) {
  try {
    const TString number = TIniFileSectionCommunication().GetSMS();
    TSMSResult result = TSMSResult::srOk;
    TString error;
    if (!TKKCommonSms::Send(RemindSmsMessage(iText), number, result, error, iRemindTime)) {
      return Failure(static_cast<int>(result), error);
    }
    LogInfo(_resLoggingSenderRemindSMS, _resLoggingRemindSMSAdded,
            {number, DateTimeToStr(iRemindTime)});
    return {};
  } catch (const std::exception& e) {
    return Failure(cResultOfException, MessageOf(e));
  }
}

}  // namespace

bool SendRemindSms(TStringView iText, TDateTime iRemindTime) {
  const TString failure = TrySend(iText, iRemindTime);
  if (failure.empty()) return true;
  LogError(_resLoggingSenderRemindSMS, failure);
  MessageDlg(failure, TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
  return false;
}

}  // namespace kk
