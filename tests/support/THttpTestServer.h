#pragma once

#include <httplib.h>

#include <string>
#include <thread>

namespace kk {

/// A real HTTP server on loopback, at a port of its own choice. Routes are set before Start; the
/// destructor ends it.
class THttpTestServer {
 public:
  ~THttpTestServer() { Stop(); }

  httplib::Server& Routes() { return FServer; }
  void Start() {
    FServer.set_keep_alive_max_count(1);  // an idle connection would hold up the end
    FPort = FServer.bind_to_any_port("127.0.0.1");
    FThread = std::thread([this] { FServer.listen_after_bind(); });
  }
  void Stop() {
    if (!FThread.joinable()) return;
    while (!FServer.is_running())
      std::this_thread::yield();  // only a running server can be stopped
    FServer.stop();
    FThread.join();
  }
  int Port() const { return FPort; }
  std::string Address(const std::string& iPath) const {
    return "http://127.0.0.1:" + std::to_string(FPort) + iPath;
  }

 private:
  httplib::Server FServer;
  std::thread FThread;
  int FPort = 0;
};

}  // namespace kk
