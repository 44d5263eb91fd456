#include "TTestShop.h"

#include <httplib.h>

#include <atomic>
#include <chrono>

namespace kk {
namespace {

constexpr auto cDeadline = std::chrono::seconds(30);

}  // namespace

class TTestShop::TServer {
 public:
  explicit TServer(TTestShop& ioShop) {
    FServer.Get(".*", [&ioShop](const httplib::Request& iRequest, httplib::Response& ioResponse) {
      TPage page;
      ioShop.Serve(iRequest.path, page);
      ioResponse.status = page.Status;
      ioResponse.set_content(page.Html, "text/html; charset=utf-8");
    });
    FPort = FServer.bind_to_any_port("127.0.0.1");
    FThread = std::thread([this] {
      FServer.listen_after_bind();
      FEnded = true;
    });
  }
  ~TServer() {
    while (!FServer.is_running() && !FEnded) std::this_thread::yield();
    FServer.stop();
    FThread.join();
  }
  int Port() const { return FPort; }

 private:
  httplib::Server FServer;
  int FPort = 0;
  std::atomic<bool> FEnded{false};
  std::thread FThread;
};

TTestShop::TTestShop() : FServer(std::make_unique<TServer>(*this)) {}

TTestShop::~TTestShop() {
  {
    std::lock_guard lock(FMutex);
    FEnding = true;
  }
  FChanged.notify_all();
  FServer.reset();
}

std::string TTestShop::Address(const std::string& iPath) const {
  return "http://127.0.0.1:" + std::to_string(FServer->Port()) + iPath;
}

std::string TTestShop::Put(const std::string& iPath, const std::string& iName,
                           const std::string& iPrice) {
  return PutPage(iPath, "<html><head><title>" + iName +
                            "</title><meta property=\"og:type\" content=\"product\">"
                            "<meta property=\"og:title\" content=\"" +
                            iName + "\"><meta property=\"product:price:amount\" content=\"" +
                            iPrice +
                            "\"><meta property=\"product:price:currency\" content=\"EUR\">"
                            "</head><body></body></html>");
}

std::string TTestShop::PutPage(const std::string& iPath, const std::string& iHtml) {
  {
    std::lock_guard lock(FMutex);
    FPages[iPath] = {iHtml, 200, false};
  }
  FChanged.notify_all();
  return Address(iPath);
}

void TTestShop::SetStatus(const std::string& iPath, int iStatus) {
  std::lock_guard lock(FMutex);
  FPages[iPath].Status = iStatus;
}

void TTestShop::Hang(const std::string& iPath) {
  std::lock_guard lock(FMutex);
  FPages[iPath].Hangs = true;
}

int TTestShop::Requests(const std::string& iPath) {
  std::lock_guard lock(FMutex);
  return FRequests[iPath];
}

bool TTestShop::WaitForRequests(const std::string& iPath, int iCount) {
  std::unique_lock lock(FMutex);
  return FChanged.wait_for(lock, cDeadline, [&] { return FRequests[iPath] >= iCount; });
}

void TTestShop::Serve(const std::string& iPath, TPage& oPage) {
  std::unique_lock lock(FMutex);
  ++FRequests[iPath];
  FChanged.notify_all();
  FChanged.wait(lock, [&] { return FEnding || !FPages[iPath].Hangs; });
  const auto page = FPages.find(iPath);
  oPage = page->second;
  if (page->second.Html.empty() && page->second.Status == 200) oPage.Status = 404;
}

}  // namespace kk
