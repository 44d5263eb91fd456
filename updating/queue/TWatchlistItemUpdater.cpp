#include "updating/queue/TWatchlistItemUpdater.h"

#include "host/base/Guard.h"
#include "host/base/TMainLoop.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

namespace {

constexpr TStringView cPlace = u"TWatchlistItemUpdater";

void RunMainLoopOnce() {
  MainLoop().WaitForMessage(1);
  MainLoop().ProcessMessages();
}

}  // namespace

TWatchlistItemUpdater::TWatchlistItemUpdater(TIntf<IWatchlistIntegration> iIntegration)
    : FIntegration(std::move(iIntegration)), FQueue(std::make_unique<TLstWatchlistItemUpdate>()) {}

TWatchlistItemUpdater::~TWatchlistItemUpdater() {
  FFinishing = true;
  FCurrentItem = nullptr;
  FQueue->Clear();
  // The source holds a callback into this object. Without a loop no callback can arrive any more.
  while (FActive && HasMainLoop()) Guarded(cPlace, RunMainLoopOnce);
}

bool TWatchlistItemUpdater::Add(const TIntf<ISearchResult>& iSearchResult,
                                TNotifyEventSearchResult iOnUpdateFinished) {
  return Enqueue(iSearchResult, iOnUpdateFinished, false);
}

bool TWatchlistItemUpdater::AddPriorized(const TIntf<ISearchResult>& iSearchResult,
                                         TNotifyEventSearchResult iOnUpdateFinished) {
  return Enqueue(iSearchResult, iOnUpdateFinished, true);
}

int TWatchlistItemUpdater::Add(const IInterfaceList& iSearchResultList,
                               TNotifyEventSearchResult iOnUpdateFinished) {
  return EnqueueAll(iSearchResultList, iOnUpdateFinished, false);
}

// The entries end up in the reverse order of the list, each ahead of those before.
int TWatchlistItemUpdater::AddPriorized(const IInterfaceList& iSearchResultList,
                                        TNotifyEventSearchResult iOnUpdateFinished) {
  return EnqueueAll(iSearchResultList, iOnUpdateFinished, true);
}

bool TWatchlistItemUpdater::Enqueue(const TIntf<ISearchResult>& iSearchResult,
                                    TNotifyEventSearchResult iOnFinished, bool iPriorized) {
  AssertMainThread();
  if (!iSearchResult || FQueue->FindItemById(iSearchResult->GetId()) != nullptr) return false;
  const TAddBlock block(*this);
  // The running entry is always the one in front.
  const bool behindRunning =
      FCurrentItem != nullptr && FQueue->GetCount() > 0 && &FQueue->GetFirst() == FCurrentItem;
  TWatchlistItemUpdate& entry = iPriorized ? FQueue->Insert(behindRunning ? 1 : 0, iSearchResult)
                                           : FQueue->Add(iSearchResult);
  entry.SetOnUpdateFinished(iOnFinished);
  ++FInAddBlockAdded;
  return true;
}

int TWatchlistItemUpdater::EnqueueAll(const IInterfaceList& iSearchResultList,
                                      TNotifyEventSearchResult iOnFinished, bool iPriorized) {
  const TAddBlock block(*this);
  int added = 0;
  for (int i = 0; i < iSearchResultList.GetCount(); ++i) {
    const auto result = GetAs<ISearchResult>(iSearchResultList, i);
    if (Enqueue(result, iOnFinished, iPriorized)) ++added;
  }
  return added;
}

bool TWatchlistItemUpdater::Remove(const TIntf<ISearchResult>& iSearchResult) {
  AssertMainThread();
  if (!iSearchResult) return false;
  const int index = FQueue->IndexOfId(iSearchResult->GetId());
  if (index == 0) FCurrentItem = nullptr;
  if (index < 0) return false;
  FQueue->Delete(index);
  return true;
}

void TWatchlistItemUpdater::RemoveWaiting() {
  AssertMainThread();
  const int running = IsActiveWithItem() ? 1 : 0;
  while (FQueue->GetCount() > running) FQueue->Delete(FQueue->GetCount() - 1);
}

bool TWatchlistItemUpdater::HasSearchResult(const TIntf<ISearchResult>& iSearchResult) const {
  return std::any_of(FQueue->begin(), FQueue->end(), [&](const TWatchlistItemUpdate* iEntry) {
    return iEntry->SearchResult()->IsSame(iSearchResult);
  });
}

void TWatchlistItemUpdater::BeginAdd() {
  if (FAddBlockCount == 0) FInAddBlockAdded = 0;
  ++FAddBlockCount;
}

void TWatchlistItemUpdater::EndAdd() {
  if (FAddBlockCount > 0) --FAddBlockCount;
  if (FAddBlockCount > 0) return;
  const TNotifyEventAfterAdd event = FOnAfterAdd;
  if (event && !FFinishing) Guarded(cPlace, [&] { event(this, FInAddBlockAdded); });
  if (!FActive) StartUpdate();
}

// A source may answer before UpdateSearchResult returns. The next request then goes out from this
// loop and not from inside that answer, so that a long queue does not pile up on the stack.
void TWatchlistItemUpdater::StartUpdate() {
  if (FStarting) return;
  FStarting = true;
  while (MayStart()) StartFirst();
  FStarting = false;
}

bool TWatchlistItemUpdater::MayStart() const {
  return !FActive && !FFinishing && FAddBlockCount == 0 && FQueue->GetCount() > 0;
}

void TWatchlistItemUpdater::StartFirst() {
  FActive = true;
  RaiseProgress();
  // The listener may have taken the entry out, or ended it all.
  if (FFinishing || FQueue->GetCount() == 0) {
    FActive = false;
    return;
  }
  FCurrentItem = &FQueue->GetFirst();
  const TIntf<ISearchResult> result = FCurrentItem->SearchResult();
  LogUpdate(_resLoggingUpdaterStartUpdate, result);
  const bool sent = Guarded(cPlace, [&] {
    const auto source = Supports<ISearchResultUpdate>(FIntegration);
    if (!source) return DoUpdateFinished(this, result, true);
    source->UpdateSearchResult(
        result->Clone(),
        TNotifyEventSearchResult::Of<&TWatchlistItemUpdater::DoUpdateFinished>(this));
  });
  // A source that raised will not call back; if it answered before that, this is passed over.
  if (!sent) DoUpdateFinished(this, result, false);
}

void TWatchlistItemUpdater::DoUpdateFinished(TObject* /*iSender*/,
                                             const TIntf<ISearchResult>& iSearchResult,
                                             bool iSucceeded) {
  AssertMainThread();
  if (!FActive) return;  // a second answer to one request
  // A success without a result is none.
  const bool isEmpty = !iSearchResult;
  const TIntf<ISearchResult> result =
      isEmpty && FCurrentItem != nullptr ? FCurrentItem->SearchResult() : iSearchResult;
  bool succeeded = iSucceeded && !isEmpty;
  LogUpdate(succeeded ? _resLoggingUpdaterFinishedSuccess : _resLoggingUpdaterFinishedFailed,
            result);
  FActive = false;
  if (succeeded && FCurrentItem != nullptr) {
    succeeded = Guarded(cPlace, [&] {
      result->SetId(FCurrentItem->SearchResult()->GetId());
      FCurrentItem->SetSearchResult(result);
    });
  }
  // Its own from here on: listeners may change the queue or start the next request.
  std::unique_ptr<TWatchlistItemUpdate> entry;
  if (FCurrentItem != nullptr) entry = FQueue->Extract(*std::exchange(FCurrentItem, nullptr));
  RaiseFinished(FOnUpdateFinished, result, succeeded);
  if (entry) RaiseFinished(entry->OnUpdateFinished(), result, succeeded);
  entry.reset();
  RaiseProgress();
  if (FAddBlockCount == 0) StartUpdate();
}

void TWatchlistItemUpdater::RaiseProgress() {
  const TNotifyEvent event = FOnProgress;
  if (event && !FFinishing) Guarded(cPlace, [&] { event(this); });
}

void TWatchlistItemUpdater::RaiseFinished(TNotifyEventSearchResult iEvent,
                                          const TIntf<ISearchResult>& iSearchResult,
                                          bool iSucceeded) {
  if (!iEvent || !iSearchResult || FFinishing) return;
  Guarded(cPlace, [&] { iEvent(this, iSearchResult, iSucceeded); });
}

void TWatchlistItemUpdater::LogUpdate(TStringView iFormat,
                                      const TIntf<ISearchResult>& iSearchResult) const {
  Guarded(cPlace, [&] {
    const TGuid id = iSearchResult ? iSearchResult->GetId() : cEmptyGuid;
    LogInfo(Format(_resLoggingSenderUpdater, {FIntegration->GetName()}), iFormat,
            {GUIDToString(id)});
  });
}

// As its rule says, a running request whose entry was removed is not waited for here; the
// destructor does.
void TWatchlistItemUpdater::WaitFor() {
  FFinishing = true;
  while (IsActiveWithItem()) RunMainLoopOnce();
}

}  // namespace kk
