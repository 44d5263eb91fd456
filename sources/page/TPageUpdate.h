#pragma once

#include <map>
#include <memory>

#include "host/common/THttpClient.h"
#include "host/contract/ISearchResultUpdate.h"
#include "sources/page/THtmlTree.h"
#include "sources/page/TPageSearchResult.h"

namespace kk {

/// The end of a reading: the page as it reads now, and why it could not be read; no reason if it
/// could.
using TNotifyPageRead =
    TDelegate<void(const TIntf<ISearchResult>& iResult, const TString& iReason)>;

/// Refreshes pages: fetches and reads them on a thread of its own and calls back on the main
/// thread, once for each request, never before UpdateSearchResult has returned. A page that can't
/// be fetched, is gone or shows no product fails with a line in the log; its result keeps what is
/// known of it. Owned by the integration and the plug-in. Main thread.
class TPageUpdate : public TInterfaced<ISearchResultUpdate>, public TObject {
 public:
  explicit TPageUpdate(const THttpLimits& iLimits = {});

  void UpdateSearchResult(const TIntf<ISearchResult>& iSearchResult,
                          TNotifyEventSearchResult iOnFinished) override;

  /// The same for this source's own search, which tells the user itself why a page can't be read:
  /// no line in the log.
  void Read(const TIntf<ISearchResult>& iSearchResult, TNotifyPageRead iOnRead);
  /// Gives the readings for this callback up; it does not come for them.
  void Forget(const TNotifyPageRead& iOnRead);

  /// How many requests have not been called back yet.
  int Count() const { return static_cast<int>(FPending.size()); }
  /// Ends all requests at once; their failed callbacks come in the next turn of the loop. Requests
  /// from then on fail without trying.
  void Terminate();
  /// As Terminate, but calls back before it returns, and waits for the thread to end.
  void Close();

 protected:
  ~TPageUpdate() override;

 private:
  class TLink;
  struct TPending {
    TIntf<ISearchResult> Result;
    TNotifyEventSearchResult OnFinished;
    TNotifyPageRead OnRead;
    THttpClient::TRequestId Request = 0;  // 0 for one that is not sent
  };
  /// What the thread found.
  struct TOutcome {
    TString Failure;
    bool IsUnchanged = false;
    TProduct Product;
    std::string ETag;
    std::string LastModified;
  };

  static TOutcome Evaluate(const THttpResponse& iResponse, const TPageAddress& iAddress,
                           bool iConditional, const std::atomic<bool>& iStop);
  void Start(TPending iPending);
  THttpClient::TRequestId Fetch(int64_t iKey, const TPageData& iData);
  void Tell(const TPending& iPending, const TOutcome& iOutcome);
  void Post(int64_t iKey, TOutcome iOutcome);
  void Finish(int64_t iKey, const TOutcome& iOutcome);
  TIntf<ISearchResult> Refreshed(const TPageData& iData, const TOutcome& iOutcome) const;

  THttpLimits FLimits;
  TIntf<TLink> FLink;
  std::unique_ptr<THttpClient> FClient;
  std::map<int64_t, TPending> FPending;
  int64_t FLastKey = 0;
  bool FClosed = false;
};

}  // namespace kk
