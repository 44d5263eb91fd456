#pragma once

#include <stop_token>
#include <string>

#include "host/common/THttpClient.h"
#include "host/common/TKKCommonSms.h"

namespace kk {

struct TSmsMessage;

/// Hands text messages to a gateway on the web, which sends them at their time.
///
/// It posts to "SmsUrl" of the settings (TIniFileSectionCommunication), with the token as
/// "Authorization: Bearer", the object {"to": "+49170...", "text": "...", "sendAt":
/// "2026-11-20T17:30:00Z"}. The header "Idempotency-Key" is the same for the same number, text and
/// time, so that a message whose answer was lost can be handed over again and goes out once. Any
/// 2xx means that the gateway has it; otherwise its answer may be an object with "code" and
/// "message" (also within "error"), or problem details (RFC 9457), and its words are shown.
///
/// Any thread; on the main thread the wait window stands meanwhile.
class TSmsGateway : public ISmsSender {
 public:
  /// The time for all that one message takes.
  static constexpr int cTotalMs = 20000;
  explicit TSmsGateway(int iTotalMs = cTotalMs);

  /// The text goes whole. The number may be written with blanks, "-", "/", ".", "(0)" and brackets;
  /// one that is none is refused here.
  bool Send(TStringView iMessage, TStringView iNumber, TDateTime iWhen, TSMSResult& oResult,
            TString& oErrorText) override;

  /// Ends what is under way at once, and all that comes later (srCancelled). Any thread, for ever.
  void Stop() { FStop.request_stop(); }

 private:
  struct TOutcome {
    TSMSResult Result = TSMSResult::srCancelled;
    TString ErrorText;
  };
  TOutcome Cancelled() const;
  TOutcome Deliver(const TSmsMessage& iMessage, const std::stop_token& iStop);
  TOutcome OutcomeOf(const THttpResponse& iResponse) const;

  const int FTotalMs;
  std::stop_source FStop;
  THttpClient FClient;
};

}  // namespace kk
