#pragma once

#include "host/base/TString.h"

namespace kk {

/// One message of plain text.
struct TEmail {
  TString Subject;
  TString Body;       ///< lines end with CR LF or LF
  TString Recipient;  ///< one address
  TString SenderAddress;
  TString SenderName;
};

/// What sends mail; the host installs one. Any thread.
class IEmailSender {
 public:
  virtual ~IEmailSender() = default;
  /// Returns when the server has taken the message or will not: true, or false with the reason in
  /// German, one line or more.
  virtual bool Send(const TEmail& iEmail, TString& oError) = 0;
  /// The same for a message that is of no use later: what does not go out now is not kept.
  virtual bool SendNow(const TEmail& iEmail, TString& oError) { return Send(iEmail, oError); }
};
/// Installs a sender, which is borrowed, and answers the one before; null is none. Main thread.
IEmailSender* SetEmailSender(IEmailSender* iSender);

struct TKKCommonEmail {
  /// Sends a message. False on failure, with the reason in oError; without an installed sender it
  /// always fails. It waits for the server, within the sender's limits of time. Any thread.
  static bool Send(TStringView iSubject, TStringView iBody, TStringView iRecipient,
                   TStringView iSenderAddress, TStringView iSenderName, TString& oError);
  /// The same for a message that is of no use later.
  static bool SendNow(const TEmail& iEmail, TString& oError);
};

}  // namespace kk
