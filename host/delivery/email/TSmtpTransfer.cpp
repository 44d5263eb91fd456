#include "host/delivery/email/TSmtpTransfer.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "host/base/Exception.h"

namespace kk {

namespace {

// All that a server says in one conversation.
constexpr size_t cMaxReplyBytes = size_t{256} << 10;
// For the farewell, behind the answer to the message.
constexpr std::chrono::seconds cFarewell{1};

}  // namespace

curl_socket_t TSmtpSockets::Open(const curl_sockaddr& iAddress) {
  const curl_socket_t opened =
      socket(iAddress.family, iAddress.socktype | SOCK_CLOEXEC, iAddress.protocol);
  const std::lock_guard lock(FMutex);
  if (opened >= 0) FOpen.push_back(opened);
  return opened;
}

int TSmtpSockets::Close(curl_socket_t iSocket) {
  const std::lock_guard lock(FMutex);
  std::erase(FOpen, iSocket);
  return close(iSocket);
}

void TSmtpSockets::Shutdown() {
  const std::lock_guard lock(FMutex);
  for (const curl_socket_t open : FOpen) shutdown(open, SHUT_RDWR);
}

TSmtpTransfer::TSmtpTransfer(const TSmtpServer& iServer, const TSmtpOptions& iOptions,
                             const TMailMessage& iMessage, std::stop_token iStop)
    : FMessage(iMessage), FStop(std::move(iStop)) {
  static const CURLcode initialized = curl_global_init(CURL_GLOBAL_DEFAULT);
  FHandle = initialized == CURLE_OK ? curl_easy_init() : nullptr;
  if (FHandle == nullptr) throw Exception(u"Die Netzwerkbibliothek ist nicht verfügbar");
  SetServer(iServer);
  SetMessage();
  SetBounds(iOptions);
}

TSmtpTransfer::~TSmtpTransfer() {
  curl_easy_cleanup(FHandle);
  curl_slist_free_all(FRecipients);
}

void TSmtpTransfer::SetServer(const TSmtpServer& iServer) {
  Set(CURLOPT_URL, iServer.Url.c_str());
  Set(CURLOPT_PROTOCOLS_STR, "smtp,smtps");
  Set(CURLOPT_USE_SSL, static_cast<long>(iServer.NeedsTls() ? CURLUSESSL_ALL : CURLUSESSL_NONE));
  Set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
  // A proxy that the environment names would take what is meant for this machine elsewhere.
  if (iServer.IsLoopback) Set(CURLOPT_PROXY, "");
  if (iServer.User.empty()) return;
  Set(CURLOPT_USERNAME, iServer.User.c_str());
  Set(CURLOPT_PASSWORD, iServer.Password.c_str());
}

void TSmtpTransfer::SetMessage() {
  FRecipients = curl_slist_append(nullptr, FMessage.Recipient.c_str());
  if (FRecipients == nullptr) throw Exception(u"Der Speicher reicht nicht");
  Set(CURLOPT_MAIL_FROM, FMessage.Sender.c_str());
  Set(CURLOPT_MAIL_RCPT, FRecipients);
  Set(CURLOPT_UPLOAD, 1L);
  Set(CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(FMessage.Text.size()));
  Set(CURLOPT_READFUNCTION, &TSmtpTransfer::OnRead);
  Set(CURLOPT_READDATA, this);
  Set(CURLOPT_HEADERFUNCTION, &TSmtpTransfer::OnReply);
  Set(CURLOPT_HEADERDATA, this);
}

void TSmtpTransfer::SetBounds(const TSmtpOptions& iOptions) {
  Set(CURLOPT_NOSIGNAL, 1L);
  Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(iOptions.ConnectMs));
  Set(CURLOPT_TIMEOUT_MS, static_cast<long>(iOptions.TotalMs));
  // libcurl knows no limit for the farewell but two minutes without an answer.
  FEnd = std::chrono::steady_clock::now() + std::chrono::milliseconds(iOptions.TotalMs);
  // Else the end of the handle would wait for a look-up that hangs, without a limit.
  Set(CURLOPT_QUICK_EXIT, 1L);
  // The farewell is part of the transfer and of its limits.
  Set(CURLOPT_FORBID_REUSE, 1L);
  Set(CURLOPT_NOPROGRESS, 0L);
  Set(CURLOPT_XFERINFOFUNCTION, &TSmtpTransfer::OnProgress);
  Set(CURLOPT_XFERINFODATA, this);
  if (!iOptions.CaFile.empty()) Set(CURLOPT_CAINFO, iOptions.CaFile.c_str());
  using TOpen = curl_socket_t (*)(void*, curlsocktype, curl_sockaddr*);
  using TClose = int (*)(void*, curl_socket_t);
  const TOpen open = [](void* ioSockets, curlsocktype, curl_sockaddr* iAddress) {
    return static_cast<TSmtpSockets*>(ioSockets)->Open(*iAddress);
  };
  const TClose close = [](void* ioSockets, curl_socket_t iSocket) {
    return static_cast<TSmtpSockets*>(ioSockets)->Close(iSocket);
  };
  Set(CURLOPT_OPENSOCKETFUNCTION, open);
  Set(CURLOPT_OPENSOCKETDATA, &FSockets);
  Set(CURLOPT_CLOSESOCKETFUNCTION, close);
  Set(CURLOPT_CLOSESOCKETDATA, &FSockets);
}

CURLcode TSmtpTransfer::Perform() {
  const std::stop_callback shutdown(FStop, [this] { FSockets.Shutdown(); });
  return curl_easy_perform(FHandle);
}

int TSmtpTransfer::LastCode() const {
  long code = 0;
  curl_easy_getinfo(FHandle, CURLINFO_RESPONSE_CODE, &code);
  return static_cast<int>(code);
}

size_t TSmtpTransfer::OnReply(char* iBytes, size_t, size_t iCount, void* ioTransfer) {
  auto& transfer = *static_cast<TSmtpTransfer*>(ioTransfer);
  transfer.FReplyBytes += iCount;
  if (transfer.FReplyBytes > cMaxReplyBytes) return 0;  // ends the transfer
  transfer.FReplies.Add({iBytes, iCount});
  if (transfer.FReplies.IsFinal()) {
    transfer.FEnd = std::min(transfer.FEnd, std::chrono::steady_clock::now() + cFarewell);
  }
  return iCount;
}

size_t TSmtpTransfer::OnRead(char* oBytes, size_t, size_t iCount, void* ioTransfer) {
  auto& transfer = *static_cast<TSmtpTransfer*>(ioTransfer);
  const std::string& text = transfer.FMessage.Text;
  const size_t count = std::min(iCount, text.size() - transfer.FRead);
  std::memcpy(oBytes, text.data() + transfer.FRead, count);
  transfer.FRead += count;
  return count;
}

int TSmtpTransfer::OnProgress(void* ioTransfer, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  const auto& transfer = *static_cast<const TSmtpTransfer*>(ioTransfer);
  const bool ends =
      transfer.FStop.stop_requested() || std::chrono::steady_clock::now() > transfer.FEnd;
  return ends ? 1 : 0;
}

}  // namespace kk
