#pragma once

#include "host/base/IInterfaceList.h"
#include "host/contract/IWatchlistIntegration.h"
#include "updating/queue/TLstWatchlistItemUpdate.h"

namespace kk {

/// How many entries went into a queue in one block of adds.
using TNotifyEventAfterAdd = TDelegate<void(TObject* Sender, int iAddCount)>;

/// The refresh queue of one source. It sends one request at a time and reports each end to the
/// listener of the updater and then to the entry's own. It knows search results only: what becomes
/// of a refreshed one is the listeners' business. Listeners may call it from inside an event.
///
/// Idle, running, finishing: WaitFor and Uninitialize lead to the last for good; entries stay in
/// the queue then and are never served. What a listener or a source raises goes to the log and does
/// not stop the queue; a source that raises instead of taking a request has failed it. Main thread,
/// without locks.
class TWatchlistItemUpdater : public TObject {
 public:
  explicit TWatchlistItemUpdater(TIntf<IWatchlistIntegration> iIntegration);
  /// Frees the queue; a request under way is waited for with the message loop alive.
  ~TWatchlistItemUpdater() override;

  /// Queues at the end. False if a result with this id is in the queue, or for an empty one.
  bool Add(const TIntf<ISearchResult>& iSearchResult, TNotifyEventSearchResult iOnUpdateFinished);
  /// Queues right behind the running entry. False as above.
  bool AddPriorized(const TIntf<ISearchResult>& iSearchResult,
                    TNotifyEventSearchResult iOnUpdateFinished);
  /// The same for each entry of the list, in one block; how many went in.
  int Add(const IInterfaceList& iSearchResultList, TNotifyEventSearchResult iOnUpdateFinished);
  int AddPriorized(const IInterfaceList& iSearchResultList,
                   TNotifyEventSearchResult iOnUpdateFinished);
  /// Takes the entry with this result's id out; true if there was one.
  bool Remove(const TIntf<ISearchResult>& iSearchResult);
  /// Takes out all entries but the one that is under way; nobody is told.
  void RemoveWaiting();
  /// True if a queued result says that it is the same; not a test of ids, unlike Add.
  bool HasSearchResult(const TIntf<ISearchResult>& iSearchResult) const;

  /// While a block is open nothing is started. Blocks nest.
  void BeginAdd();
  void EndAdd();

  bool IsActive() const { return FActive; }
  bool IsActiveWithItem() const { return FActive && FCurrentItem != nullptr; }
  /// Stops the updater and waits while a request with its entry is under way, the message loop
  /// alive. There is no time limit here: the source has one.
  void WaitFor();
  /// Stops the updater without waiting.
  void Uninitialize() { FFinishing = true; }

  const TIntf<IWatchlistIntegration>& Integration() const { return FIntegration; }
  /// The running entry included.
  int GetCount() const { return FQueue->GetCount(); }

  /// Raised when a request starts and when it has ended.
  void SetOnProgress(TNotifyEvent iEvent) { FOnProgress = iEvent; }
  void SetOnAfterAdd(TNotifyEventAfterAdd iEvent) { FOnAfterAdd = iEvent; }
  /// Raised before the entry's own callback.
  void SetOnUpdateFinished(TNotifyEventSearchResult iEvent) { FOnUpdateFinished = iEvent; }

 private:
  // Closed with its scope, also when a result raises.
  struct TAddBlock {
    TWatchlistItemUpdater& Updater;
    explicit TAddBlock(TWatchlistItemUpdater& iUpdater) : Updater(iUpdater) { Updater.BeginAdd(); }
    ~TAddBlock() { Updater.EndAdd(); }
    TAddBlock(const TAddBlock&) = delete;
    TAddBlock& operator=(const TAddBlock&) = delete;
  };

  bool Enqueue(const TIntf<ISearchResult>& iSearchResult, TNotifyEventSearchResult iOnFinished,
               bool iPriorized);
  int EnqueueAll(const IInterfaceList& iSearchResultList, TNotifyEventSearchResult iOnFinished,
                 bool iPriorized);
  void StartUpdate();
  bool MayStart() const;
  void StartFirst();
  void DoUpdateFinished(TObject* iSender, const TIntf<ISearchResult>& iSearchResult,
                        bool iSucceeded);
  void RaiseProgress();
  void RaiseFinished(TNotifyEventSearchResult iEvent, const TIntf<ISearchResult>& iSearchResult,
                     bool iSucceeded);
  void LogUpdate(TStringView iFormat, const TIntf<ISearchResult>& iSearchResult) const;

  TIntf<IWatchlistIntegration> FIntegration;
  std::unique_ptr<TLstWatchlistItemUpdate> FQueue;
  bool FActive = false;
  int FAddBlockCount = 0;
  int FInAddBlockAdded = 0;
  TWatchlistItemUpdate* FCurrentItem = nullptr;
  TNotifyEvent FOnProgress;
  TNotifyEventAfterAdd FOnAfterAdd;
  TNotifyEventSearchResult FOnUpdateFinished;
  bool FFinishing = false;
  bool FStarting = false;
};

}  // namespace kk
