#pragma once

#include "host/base/TDateTime.h"
#include "host/base/TString.h"

namespace kk {

/// How the hand-over of a text message to its service has ended. Log lines show the numbers.
enum class TSMSResult {
  srOk,             ///< the service has it
  srNotSetUp,       ///< no service is set up here
  srUnauthorized,   ///< the service does not know the account
  srInvalidNumber,  ///< the number is none that the service sends to
  srNoCredit,       ///< the account has no credit left
  srRejected,       ///< the service will not send this message
  srUnavailable,    ///< the service can't be reached, or not now
  srTimeout,        ///< the service did not answer in time
  srCancelled       ///< the user did not want to wait
};

/// What hands text messages to a service; the host installs one. Any thread.
class ISmsSender {
 public:
  virtual ~ISmsSender() = default;
  /// iWhen: when the service shall send it, local time. True and srOk, or false with the reason in
  /// German. On the main thread it keeps the main loop alive while it waits.
  virtual bool Send(TStringView iMessage, TStringView iNumber, TDateTime iWhen, TSMSResult& oResult,
                    TString& oErrorText) = 0;
};
/// Installs a sender, which is borrowed, and answers the one before; null is none. Main thread.
ISmsSender* SetSmsSender(ISmsSender* iSender);

struct TKKCommonSms {
  /// Hands a message to the service, which sends it at that time. False on failure; without an
  /// installed sender it always fails (srNotSetUp). Any thread.
  static bool Send(TStringView iMessage, TStringView iNumber, TSMSResult& oResult,
                   TString& oErrorText, TDateTime iWhen);
};

}  // namespace kk
