#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace kk {

/// A server on loopback that answers every connection with the same bytes, whatever they are, and
/// hangs up; or that keeps silent for ever. For what no proper HTTP server would do.
class TRawTestServer {
 public:
  enum class TMode { moAnswer, moSilent };

  explicit TRawTestServer(std::string iAnswer, TMode iMode = TMode::moAnswer)
      : FAnswer(std::move(iAnswer)), FMode(iMode), FSocket(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    bind(FSocket, reinterpret_cast<sockaddr*>(&address), length);
    getsockname(FSocket, reinterpret_cast<sockaddr*>(&address), &length);
    FPort = ntohs(address.sin_port);
    listen(FSocket, 8);
    if (FMode == TMode::moAnswer) FThread = std::thread([this] { Run(); });
  }
  ~TRawTestServer() {
    shutdown(FSocket, SHUT_RDWR);
    if (FThread.joinable()) FThread.join();
    close(FSocket);
  }
  TRawTestServer(const TRawTestServer&) = delete;
  TRawTestServer& operator=(const TRawTestServer&) = delete;

  std::string Address(const std::string& iPath) const {
    return "http://127.0.0.1:" + std::to_string(FPort) + iPath;
  }
  /// What came first on each connection that was answered so far, up to 4096 bytes.
  std::vector<std::string> Received() const {
    const std::lock_guard lock(FMutex);
    return FReceived;
  }

 private:
  void Run() {
    for (;;) {
      const int connection = accept(FSocket, nullptr, nullptr);
      if (connection < 0) return;
      char request[4096];
      const ssize_t length = read(connection, request, sizeof request);
      if (length > 0) {
        const std::lock_guard lock(FMutex);
        FReceived.emplace_back(request, static_cast<size_t>(length));
      }
      for (size_t sent = 0; sent < FAnswer.size();) {
        const ssize_t count =
            send(connection, FAnswer.data() + sent, FAnswer.size() - sent, MSG_NOSIGNAL);
        if (count <= 0) break;
        sent += static_cast<size_t>(count);
      }
      close(connection);
    }
  }

  mutable std::mutex FMutex;
  std::vector<std::string> FReceived;
  std::string FAnswer;
  TMode FMode;
  int FSocket;
  int FPort = 0;
  std::thread FThread;
};

/// An address on loopback at which nobody listens.
inline std::string RefusedAddress() {
  std::string address;
  {
    const TRawTestServer server("", TRawTestServer::TMode::moSilent);
    address = server.Address("/");
  }
  return address;
}

}  // namespace kk
