#include "TTestShop.h"

#include <chrono>

#include "tests/support/THttpTestServer.h"

namespace kk {
namespace {

constexpr auto cDeadline = std::chrono::seconds(30);

}  // namespace

TTestShop::TTestShop() : FServer(std::make_unique<THttpTestServer>()) {
  FServer->Routes().Get(".*",
                        [this](const httplib::Request& iRequest, httplib::Response& oResponse) {
                          TPage page;
                          Serve(iRequest.path, page);
                          oResponse.status = page.Status;
                          oResponse.set_content(page.Html, "text/html; charset=utf-8");
                        });
  FServer->Start();
}

TTestShop::~TTestShop() {
  {
    std::lock_guard lock(FMutex);
    FEnding = true;
  }
  FChanged.notify_all();
  FServer.reset();
}

std::string TTestShop::Address(const std::string& iPath) const { return FServer->Address(iPath); }

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
