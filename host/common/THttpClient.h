#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "host/base/TObject.h"
#include "host/base/TString.h"

namespace kk {

/// What bounds one request, so that nothing a server does can hold or fill the program.
struct THttpLimits {
  int ConnectMs = 15000;
  /// From the start to the last byte, redirects included.
  int TotalMs = 60000;
  /// Of the body after unpacking.
  size_t MaxBytes = size_t{10} << 20;
  int MaxRedirects = 10;
};

/// One GET. ETag and LastModified are those of an earlier answer; with one of them the server may
/// answer 304 without a body.
struct THttpRequest {
  std::string Address;
  std::string Accept = "*/*";
  std::string ETag;
  std::string LastModified;
  THttpLimits Limits;
};

/// How a request ended.
struct THttpResponse {
  /// Why there is no answer, in German; empty if the answer of a server came in whole, whatever its
  /// status.
  TString Failure;
  bool Cancelled = false;
  int Status = 0;
  /// Behind all redirects.
  std::string FinalAddress;
  std::string ContentType;
  std::string ETag;
  std::string LastModified;
  std::string Body;

  bool Received() const { return Failure.empty(); }
};

/// Gets things over http and https, also across redirects, and over nothing else. All transfers
/// run side by side on one thread of the client's own, which starts with the first of them.
///
/// Any thread may call it. The destructor cancels what is under way and waits for the thread.
class THttpClient : public TObject {
 public:
  using TRequestId = int64_t;
  /// Called once for each request, a cancelled one too, on the client's thread; other transfers
  /// wait meanwhile. It raises nothing and may not destroy the client.
  using TOnFinished = std::function<void(THttpResponse iResponse)>;

  THttpClient();
  ~THttpClient() override;

  TRequestId Get(THttpRequest iRequest, TOnFinished iOnFinished);
  /// Ends a request at once; no effect on one that has ended.
  void Cancel(TRequestId iRequest);
  void CancelAll();

 private:
  class TWorker;
  std::unique_ptr<TWorker> FWorker;
};

}  // namespace kk
