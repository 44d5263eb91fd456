#pragma once

#include <string>

#include "host/delivery/email/TSmtpResult.h"

namespace kk {

/// The mail server that the user has set up in the section "Communication": "SmtpUrl", "SmtpUser",
/// "SmtpPassword".
struct TSmtpServer {
  /// "smtp://host[:port]" or "smtps://host[:port]", without user and password.
  std::string Url;
  /// Both empty: no log-in.
  std::string User;
  std::string Password;
  /// The host is "localhost", 127.x.x.x or ::1.
  bool IsLoopback = false;

  /// Reads the settings as they are now; that may take some seconds (ISecretStore). False with the
  /// reason in oFailure if they don't name a server that may be used: no address, another protocol,
  /// a user or a password in the address, a user without a password.
  static bool FromSettings(TSmtpServer& oServer, TSmtpResult& oFailure);

  /// Nothing is said in clear text, neither a password nor a message, but to a program on this very
  /// machine that asks for no log-in. smtps:// is encrypted in any case.
  bool NeedsTls() const { return !IsLoopback || !User.empty(); }
};

}  // namespace kk
