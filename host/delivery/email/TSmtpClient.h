#pragma once

#include <stop_token>
#include <string>

#include "host/delivery/email/TMailMessage.h"
#include "host/delivery/email/TSmtpResult.h"

namespace kk {

/// What bounds one attempt. No limit lies on the speed beside it: a server may take its time to
/// look into a message, and a message that was given up meanwhile comes twice.
struct TSmtpOptions {
  /// Until the server is ready for the message: name, connection, encryption, log-in.
  int ConnectMs = 15000;
  /// From the start to the answer to the message; the farewell may take a second more.
  int TotalMs = 60000;
  /// A file of certificates (PEM) to trust instead of the machine's; empty for the machine's.
  std::string CaFile;
};

/// Hands messages to the user's mail server by SMTP: smtps://, or smtp:// with STARTTLS, which is
/// demanded but from a program on this machine that asks for no log-in (TSmtpServer::NeedsTls).
/// Certificates are verified. The settings are read at each attempt. Any thread.
class TSmtpClient {
 public:
  explicit TSmtpClient(TSmtpOptions iOptions = {});

  /// One attempt. It counts as sent if and only if the server's answer to the whole message is 2xx.
  /// A stop ends it at once, but while a name is looked up or a connection is made, where it takes
  /// up to a second.
  TSmtpResult Send(const TMailMessage& iMessage, std::stop_token iStop) const;

 private:
  TSmtpOptions FOptions;
};

}  // namespace kk
