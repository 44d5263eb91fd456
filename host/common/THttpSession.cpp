#include "host/common/THttpSession.h"

#include <algorithm>
#include <future>

namespace kk {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

THttpResponse Failed(TStringView iFailure, bool THttpResponse::*iKind) {
  THttpResponse response;
  response.Failure = iFailure;
  response.*iKind = true;
  return response;
}

}  // namespace

THttpSession::THttpSession(THttpClient& ioClient, int iTotalMs, std::stop_token iStop,
                           std::stop_token iOtherStop)
    : FClient(ioClient),
      FEnd(steady_clock::now() + milliseconds(iTotalMs)),
      FStop(std::move(iStop)),
      FOtherStop(std::move(iOtherStop)) {}

THttpResponse THttpSession::Fetch(THttpRequest iRequest) {
  if (FStop.stop_requested() || FOtherStop.stop_requested()) {
    return Failed(u"Abgebrochen", &THttpResponse::Cancelled);
  }
  const auto left = std::chrono::ceil<milliseconds>(FEnd - steady_clock::now()).count();
  if (left <= 0) return Failed(u"Zeitüberschreitung", &THttpResponse::TimedOut);
  auto& limits = iRequest.Limits;
  limits.TotalMs = static_cast<int>(std::min<int64_t>(limits.TotalMs, left));
  // The client's thread may still be inside the promise when this one has its answer.
  const auto promise = std::make_shared<std::promise<THttpResponse>>();
  auto future = promise->get_future();
  const auto id = FClient.Send(std::move(iRequest), [promise](THttpResponse iResponse) {
    promise->set_value(std::move(iResponse));
  });
  const auto cancel = [this, id] { FClient.Cancel(id); };
  const std::stop_callback first(FStop, cancel);
  const std::stop_callback second(FOtherStop, cancel);
  return future.get();
}

THttpResponse THttpSession::FetchRepeatable(const THttpRequest& iRequest, bool* oRepeated) {
  THttpResponse response = Fetch(iRequest);
  if (oRepeated != nullptr) *oRepeated = response.Lost;
  return response.Lost ? Fetch(iRequest) : response;
}

}  // namespace kk
