#pragma once

#include "host/base/TDelegate.h"
#include "host/contract/INotifications.h"

namespace kk {

/// What a source's view tells its tab. It keeps the results that the view gives it. Main thread.
class TNotifications : public TInterfaced<INotifications> {
 public:
  using TCallback = TDelegate<void()>;

  /// Who receives the callbacks detaches this object before it dies.
  TNotifications(TCallback iOnSelectionChanged, TCallback iOnClose, TCallback iOnWaitFor)
      : FOnSelectionChanged(iOnSelectionChanged), FOnClose(iOnClose), FOnWaitFor(iOnWaitFor) {}

  /// Empty until the view has set them.
  TIntf<ISearchResults> GetSearchResults() const override { return FSearchResults; }
  void SetSearchResults(const TIntf<ISearchResults>& iSearchResults) override {
    FSearchResults = iSearchResults;
  }
  void SelectionChanged() override {
    if (FOnSelectionChanged) FOnSelectionChanged();
  }
  void Close() override {
    if (FOnClose) FOnClose();
  }
  void WaitFor() override {
    if (FOnWaitFor) FOnWaitFor();
  }

  /// Lets go of the results and calls nobody any more: the results may be the view itself, and a
  /// view may keep this object for longer than its tab lives.
  void Detach() {
    FOnSelectionChanged = FOnClose = FOnWaitFor = {};
    FSearchResults = nullptr;
  }

 private:
  TCallback FOnSelectionChanged;
  TCallback FOnClose;
  TCallback FOnWaitFor;
  TIntf<ISearchResults> FSearchResults;
};

}  // namespace kk
