#pragma once

#include <deque>
#include <functional>

#include "apps/cli/TCliContext.h"
#include "host/base/TObject.h"

namespace kk {

/// Follows the refreshes that a command has started, until nothing is under way any more. Main
/// thread.
class TCliUpdates : public TObject {
 public:
  explicit TCliUpdates(TCliContext& ioContext);
  ~TCliUpdates() override;
  TCliUpdates(const TCliUpdates&) = delete;
  TCliUpdates& operator=(const TCliUpdates&) = delete;

  struct TEnd {
    TIntf<ISearchResult> Result;
    bool Succeeded;
  };
  /// Runs the main loop and calls the function for each refresh that ends, those that ended before
  /// included. False if the user has interrupted: all work is told to end then.
  bool Wait(TStringView iProgress, const std::function<void(const TEnd&)>& iOnEnd);

 private:
  void DoUpdateFinished(TObject* Sender, const TIntf<ISearchResult>& iSearchResult,
                        bool iSucceeded);

  TCliContext& FContext;
  std::deque<TEnd> FEnds;
};

}  // namespace kk
