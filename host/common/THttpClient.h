#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

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

enum class THttpMethod { hmGet, hmPost, hmPut, hmDelete };

/// A header of the caller's own. A name that is none (RFC 9110, 5.1) and a value with control
/// characters fail the request before anything is sent.
struct THttpHeader {
  std::string Name;
  std::string Value;
};

/// One request. ETag and LastModified are those of an earlier answer; with one of them the server
/// may answer 304 without a body.
struct THttpRequest {
  std::string Address;
  THttpMethod Method = THttpMethod::hmGet;
  std::string Accept = "*/*";
  std::string ETag;
  std::string LastModified;
  std::vector<THttpHeader> Headers;
  /// Of POST and PUT alone.
  std::string Body;
  std::string ContentType;
  /// Sent at once (basic authentication) if there is one of them, and never to another host.
  std::string User;
  std::string Password;
  THttpLimits Limits;
};

/// How a request ended.
struct THttpResponse {
  /// Why there is no answer, in German; empty if the answer of a server came in whole, whatever its
  /// status.
  TString Failure;
  /// Which failures are told apart: a request that was cancelled, one whose time was over, and one
  /// whose connection broke before any answer. The last two may or may not have had their effect.
  bool Cancelled = false;
  bool TimedOut = false;
  bool Lost = false;
  /// 0 without an answer; it is there, too, if the answer broke off behind its first line.
  int Status = 0;
  /// Behind all redirects.
  std::string FinalAddress;
  std::string ContentType;
  std::string ETag;
  std::string LastModified;
  /// Where a redirect points that wasn't followed, or where the new thing lies.
  std::string Location;
  std::string Body;

  bool Received() const { return Failure.empty(); }
};

/// Speaks http and https, and nothing else. Redirects of a GET are followed, those of other methods
/// are the answer. What goes to this machine itself goes through no proxy. All transfers run side
/// by side on one thread of the client's own, which starts with the first of them.
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

  TRequestId Send(THttpRequest iRequest, TOnFinished iOnFinished);
  /// Ends a request at once; no effect on one that has ended.
  void Cancel(TRequestId iRequest);
  void CancelAll();

 private:
  class TWorker;
  std::unique_ptr<TWorker> FWorker;
};

}  // namespace kk
