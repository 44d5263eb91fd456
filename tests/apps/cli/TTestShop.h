#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace kk {

class THttpTestServer;

/// Pages on the loopback address that the test writes: what they say, which status they have, and
/// some that never answer. Its thread ends with it.
class TTestShop {
 public:
  TTestShop();
  ~TTestShop();
  TTestShop(const TTestShop&) = delete;
  TTestShop& operator=(const TTestShop&) = delete;

  std::string Address(const std::string& iPath) const;
  /// An article at a path; a price such as "10.00". Answers the address.
  std::string Put(const std::string& iPath, const std::string& iName, const std::string& iPrice);
  /// Any page.
  std::string PutPage(const std::string& iPath, const std::string& iHtml);
  void SetStatus(const std::string& iPath, int iStatus);
  /// The page is not answered any more, until it is put again.
  void Hang(const std::string& iPath);

  int Requests(const std::string& iPath);
  /// Returns when so many requests for the page have come in. False if they don't.
  bool WaitForRequests(const std::string& iPath, int iCount);

 private:
  struct TPage {
    std::string Html;
    int Status = 200;
    bool Hangs = false;
  };

  void Serve(const std::string& iPath, TPage& oPage);

  std::mutex FMutex;
  std::condition_variable FChanged;
  bool FEnding = false;
  std::map<std::string, TPage> FPages;
  std::map<std::string, int> FRequests;
  std::unique_ptr<THttpTestServer> FServer;
};

}  // namespace kk
