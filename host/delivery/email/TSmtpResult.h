#pragma once

#include "host/base/TString.h"

namespace kk {

/// How one attempt to hand a message to the mail server ended.
enum class TSmtpOutcome {
  soSent,      ///< the server has taken it
  soForNow,    ///< it did not go through this time: 4xx, no connection, no answer in time
  soForGood,   ///< it can't go through like this: 5xx, no server set up, no safe connection
  soCancelled  ///< nobody waits for it any more; whether the server has it is open
};

struct TSmtpResult {
  TSmtpOutcome Outcome = TSmtpOutcome::soForNow;
  /// Why it was not sent, in German, without a full stop; empty for soSent.
  TString Reason;
};

}  // namespace kk
