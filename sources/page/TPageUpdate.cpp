#include "sources/page/TPageUpdate.h"

#include "host/base/Guard.h"
#include "host/base/TClock.h"
#include "host/base/TMainLoop.h"
#include "sources/page/PageResourceStrings.h"
#include "sources/page/TPageReader.h"

namespace kk {

namespace {

constexpr char cAccept[] = "text/html,application/xhtml+xml;q=0.9,*/*;q=0.1";

// Empty for a status with which a page came.
TString ReasonOfStatus(int iStatus) {
  if (iStatus == 200 || iStatus == 203) return {};
  if (iStatus == 404 || iStatus == 410) return Format(_resPageReasonGone, {iStatus});
  if (iStatus == 401 || iStatus == 403) return Format(_resPageReasonForbidden, {iStatus});
  if (iStatus == 429) return Format(_resPageReasonTooOften, {iStatus});
  if (iStatus >= 500) return Format(_resPageReasonServer, {iStatus});
  return Format(_resPageReasonStatus, {iStatus});
}

}  // namespace

// What a posted function and the thread hold instead of the updater, which may be gone when they
// run. It counts as a live object: the package is not unloaded while a function of it is waiting.
class TPageUpdate::TLink : public TInterfaced<IInterface> {
 public:
  explicit TLink(TPageUpdate* iOwner) : FOwner(iOwner) {}

  // Main thread.
  void Finish(int64_t iKey, const TOutcome& iOutcome) {
    if (FOwner != nullptr) FOwner->Finish(iKey, iOutcome);
  }
  void Forget() { FOwner = nullptr; }

  // Ends what the thread is reading.
  std::atomic<bool> Stop{false};

 private:
  TPageUpdate* FOwner;
};

TPageUpdate::TPageUpdate(const THttpLimits& iLimits)
    : FLimits(iLimits), FLink(MakeIntf<TLink>(this)) {}

TPageUpdate::~TPageUpdate() {
  FLink->Stop = true;
  FLink->Forget();
}

void TPageUpdate::UpdateSearchResult(const TIntf<ISearchResult>& iSearchResult,
                                     TNotifyEventSearchResult iOnFinished) {
  TPending pending;
  pending.Result = iSearchResult;
  pending.OnFinished = iOnFinished;
  Start(std::move(pending));
}

void TPageUpdate::Read(const TIntf<ISearchResult>& iSearchResult, TNotifyPageRead iOnRead) {
  TPending pending;
  pending.Result = iSearchResult;
  pending.OnRead = iOnRead;
  Start(std::move(pending));
}

void TPageUpdate::Start(TPending iPending) {
  AssertMainThread();
  const int64_t key = ++FLastKey;
  const auto page = Supports<IPageSearchResult>(iPending.Result);
  TPending& pending = FPending.emplace(key, std::move(iPending)).first->second;
  if (FClosed || !page) {
    TOutcome outcome;
    outcome.Failure = page ? _resPageReasonClosing : _resPageReasonForeign;
    Post(key, std::move(outcome));
    return;
  }
  pending.Request = Fetch(key, page->Data());
}

THttpClient::TRequestId TPageUpdate::Fetch(int64_t iKey, const TPageData& iData) {
  const bool conditional = iData.ReaderVersion == cPageReaderVersion &&
                           !(iData.ETag.empty() && iData.LastModified.empty());
  THttpRequest request;
  request.Address = iData.Address.Text();
  request.Accept = cAccept;
  request.Limits = FLimits;
  if (conditional) {
    request.ETag = iData.ETag;
    request.LastModified = iData.LastModified;
  }
  if (!FClient) FClient = std::make_unique<THttpClient>();
  // The thread ends before this object does, but not the functions that it posts.
  return FClient->Send(std::move(request), [link = FLink, iKey, address = iData.Address,
                                            conditional](const THttpResponse& iResponse) {
    TOutcome outcome = Evaluate(iResponse, address, conditional, link->Stop);
    Guarded(u"TPageUpdate.Post", [&] {
      MainLoop().Post([link, iKey, result = std::move(outcome)] { link->Finish(iKey, result); });
    });
  });
}

TPageUpdate::TOutcome TPageUpdate::Evaluate(const THttpResponse& iResponse,
                                            const TPageAddress& iAddress, bool iConditional,
                                            const std::atomic<bool>& iStop) {
  TOutcome outcome;
  outcome.Failure = iResponse.Failure;
  if (!outcome.Failure.empty()) return outcome;
  outcome.IsUnchanged = iResponse.Status == 304 && iConditional;
  if (outcome.IsUnchanged) return outcome;
  outcome.Failure = ReasonOfStatus(iResponse.Status);
  if (!outcome.Failure.empty()) return outcome;
  THtmlLimits limits;
  limits.Stop = &iStop;
  const TPageAddress final = TPageAddress::Parse(iResponse.FinalAddress).value_or(iAddress);
  TPageReading reading = ReadPage({iResponse.Body, iResponse.ContentType, iAddress, final}, limits);
  outcome.Failure = std::move(reading.Reason);
  if (reading.Product) outcome.Product = std::move(*reading.Product);
  outcome.ETag = iResponse.ETag;
  outcome.LastModified = iResponse.LastModified;
  return outcome;
}

void TPageUpdate::Post(int64_t iKey, TOutcome iOutcome) {
  MainLoop().Post(
      [link = FLink, iKey, outcome = std::move(iOutcome)] { link->Finish(iKey, outcome); });
}

// A request that was ended before is not there any more; what comes late for it means nothing.
void TPageUpdate::Finish(int64_t iKey, const TOutcome& iOutcome) {
  const auto entry = FPending.find(iKey);
  if (entry == FPending.end()) return;
  const TIntf<TPageUpdate> self(this);  // the callback may drop the last reference from outside
  const TPending pending = std::move(entry->second);
  FPending.erase(entry);
  Tell(pending, iOutcome);
}

void TPageUpdate::Tell(const TPending& iPending, const TOutcome& iOutcome) {
  const auto page = Supports<IPageSearchResult>(iPending.Result);
  const bool succeeded = iOutcome.Failure.empty();
  // The end of the program is no news about a page.
  if (!succeeded && !FClosed && !iPending.OnRead) {
    const TString address = page ? FromUtf8(page->Data().Address.Text()) : TString();
    LogError(_resPageLogSender, _resPageLogUpdateFailed, {address, iOutcome.Failure});
  }
  const bool isNew = succeeded && !iOutcome.IsUnchanged;
  const auto result = isNew ? Refreshed(page->Data(), iOutcome) : iPending.Result;
  if (iPending.OnFinished) iPending.OnFinished(this, result, succeeded);
  if (iPending.OnRead) iPending.OnRead(result, iOutcome.Failure);
}

void TPageUpdate::Forget(const TNotifyPageRead& iOnRead) {
  std::erase_if(FPending, [&](const auto& iEntry) {
    const TPending& pending = iEntry.second;
    if (pending.OnRead != iOnRead) return false;
    if (FClient && pending.Request != 0) FClient->Cancel(pending.Request);
    return true;
  });
}

TIntf<ISearchResult> TPageUpdate::Refreshed(const TPageData& iData,
                                            const TOutcome& iOutcome) const {
  TPageData data = iData;
  if (data.Changed.IsZero() || data.Product != iOutcome.Product) data.Changed = Now();
  data.Product = iOutcome.Product;
  data.ETag = iOutcome.ETag;
  data.LastModified = iOutcome.LastModified;
  data.ReaderVersion = cPageReaderVersion;
  return MakeIntf<TPageSearchResult>(std::move(data));
}

void TPageUpdate::Terminate() {
  FClosed = true;
  FLink->Stop = true;
  if (FClient) FClient->CancelAll();
  for (const auto& [key, pending] : FPending) {
    TOutcome outcome;
    outcome.Failure = _resPageReasonClosing;
    Post(key, std::move(outcome));
  }
}

void TPageUpdate::Close() {
  FClosed = true;
  FLink->Stop = true;
  FClient.reset();
  TOutcome outcome;
  outcome.Failure = _resPageReasonClosing;
  // A callback may ask for the next refresh, which ends the same way.
  while (!FPending.empty()) Finish(FPending.begin()->first, outcome);
}

}  // namespace kk
