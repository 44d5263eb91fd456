#pragma once

#include <curl/curl.h>

#include <chrono>
#include <mutex>
#include <stop_token>
#include <vector>

#include "host/delivery/email/TSmtpClient.h"
#include "host/delivery/email/TSmtpReplies.h"
#include "host/delivery/email/TSmtpServer.h"

namespace kk {

/// The open connections of a transfer, so that another thread can end it: libcurl itself looks
/// after a stop once a second only.
class TSmtpSockets {
 public:
  curl_socket_t Open(const curl_sockaddr& iAddress);
  int Close(curl_socket_t iSocket);
  /// Ends all connections, without closing them. Any thread.
  void Shutdown();

 private:
  std::mutex FMutex;
  std::vector<curl_socket_t> FOpen;
};

/// One conversation with a mail server about one message, which is borrowed. One thread; the stop
/// comes from any.
class TSmtpTransfer {
 public:
  TSmtpTransfer(const TSmtpServer& iServer, const TSmtpOptions& iOptions,
                const TMailMessage& iMessage, std::stop_token iStop);
  ~TSmtpTransfer();
  TSmtpTransfer(const TSmtpTransfer&) = delete;
  TSmtpTransfer& operator=(const TSmtpTransfer&) = delete;

  /// Has the conversation. The code alone does not tell whether the message went through.
  CURLcode Perform();
  /// The whole message went out, and the server's answer to it is a yes.
  bool IsAccepted() const { return FReplies.IsAccepted() && FRead == FMessage.Text.size(); }
  const TSmtpReplies& Replies() const { return FReplies; }
  /// The code of the last answer, but for the one to "QUIT"; 0 if there was none.
  int LastCode() const;

 private:
  template <class T>
  void Set(CURLoption iOption, T iValue) {
    curl_easy_setopt(FHandle, iOption, iValue);
  }
  void SetServer(const TSmtpServer& iServer);
  void SetMessage();
  void SetBounds(const TSmtpOptions& iOptions);

  static size_t OnReply(char* iBytes, size_t iSize, size_t iCount, void* ioTransfer);
  static size_t OnRead(char* oBytes, size_t iSize, size_t iCount, void* ioTransfer);
  static int OnProgress(void* ioTransfer, curl_off_t, curl_off_t, curl_off_t, curl_off_t);

  const TMailMessage& FMessage;
  const std::stop_token FStop;
  TSmtpSockets FSockets;
  CURL* FHandle;
  curl_slist* FRecipients = nullptr;
  size_t FRead = 0;
  size_t FReplyBytes = 0;
  TSmtpReplies FReplies;
  std::chrono::steady_clock::time_point FEnd;
};

}  // namespace kk
