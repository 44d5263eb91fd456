#pragma once

#include <cstdint>
#include <memory>

#include "host/contract/IWatchlistIntegration.h"
#include "updating/queue/TWatchlistItemUpdater.h"

namespace kk {

/// A registered source: its interface, its refresh queue, and what of it the file does not hold
/// yet. Owned by the handler's list. Main thread.
class TWatchlistIntegration : public TObject {
 public:
  explicit TWatchlistIntegration(TIntf<IWatchlistIntegration> iIntegration);

  /// The search results differ from what is in the file.
  bool ChangedSearchResults() const { return FChangedSearchResults; }
  void SetChangedSearchResults(bool iChanged) { Set(FChangedSearchResults, iChanged); }
  /// The item records (category, note, last update) differ from what is in the file.
  bool ChangedItems() const { return FChangedItems; }
  void SetChangedItems(bool iChanged) { Set(FChangedItems, iChanged); }
  bool IsChanged() const { return FChangedSearchResults || FChangedItems; }
  void SetUnchanged() { FChangedSearchResults = FChangedItems = false; }
  /// Grows with every change that is told by the two above.
  uint64_t ChangeCount() const { return FChangeCount; }

  const TIntf<IWatchlistIntegration>& Integration() const { return FIntegration; }
  TWatchlistItemUpdater& Updater() const { return *FUpdater; }

 private:
  void Set(bool& oFlag, bool iChanged) {
    oFlag = iChanged;
    if (iChanged) ++FChangeCount;
  }

  bool FChangedSearchResults = false;
  bool FChangedItems = false;
  uint64_t FChangeCount = 0;
  TIntf<IWatchlistIntegration> FIntegration;
  std::unique_ptr<TWatchlistItemUpdater> FUpdater;  // goes before the integration
};

}  // namespace kk
