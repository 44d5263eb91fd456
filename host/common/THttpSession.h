#pragma once

#include <chrono>
#include <stop_token>

#include "host/common/THttpClient.h"

namespace kk {

/// The requests of one piece of work, one after the other: asked and waited for on a thread that
/// may wait, under one time limit for all of them, and ended at once by either of two stop tokens.
/// The client is borrowed. One thread.
class THttpSession {
 public:
  THttpSession(THttpClient& ioClient, int iTotalMs, std::stop_token iStop,
               std::stop_token iOtherStop = {});

  /// Never raises for what happens on the way: the answer tells. Its own TotalMs holds as well.
  THttpResponse Fetch(THttpRequest iRequest);

  /// The same for a request that may reach the server twice without harm: it goes out once more if
  /// the connection breaks before any answer. oRepeated, if given, tells whether it did.
  THttpResponse FetchRepeatable(const THttpRequest& iRequest, bool* oRepeated = nullptr);

 private:
  THttpClient& FClient;
  const std::chrono::steady_clock::time_point FEnd;
  const std::stop_token FStop;
  const std::stop_token FOtherStop;
};

}  // namespace kk
