#include "host/base/TNotifyEventList.h"

#include <algorithm>

#include "host/base/Guard.h"

namespace kk {

// Shared with the rounds under way, so that they outlive the list. A removed event is emptied and
// swept when no round runs.
struct TNotifyEventList::TEntries {
  std::vector<TNotifyEvent> Events;
  int Rounds = 0;
  bool Alive = true;

  void Sweep() {
    if (Rounds == 0) std::erase(Events, TNotifyEvent());
  }
};

TNotifyEventList::TNotifyEventList(bool iIgnoreDuplicates)
    : FEntries(std::make_shared<TEntries>()), FIgnoreDuplicates(iIgnoreDuplicates) {}

TNotifyEventList::~TNotifyEventList() {
  Clear();
  FEntries->Alive = false;
}

void TNotifyEventList::Add(const TNotifyEvent& iEvent, int iPosition) {
  auto& events = FEntries->Events;
  if (!iEvent) return;
  if (FIgnoreDuplicates && std::find(events.begin(), events.end(), iEvent) != events.end()) return;
  const bool append = iPosition < 0 || iPosition >= static_cast<int>(events.size());
  events.insert(append ? events.end() : events.begin() + iPosition, iEvent);
}

void TNotifyEventList::Remove(const TNotifyEvent& iEvent) {
  auto& events = FEntries->Events;
  const auto hit = std::find(events.begin(), events.end(), iEvent);
  if (!iEvent || hit == events.end()) return;
  *hit = TNotifyEvent();
  FEntries->Sweep();
}

void TNotifyEventList::Clear() {
  std::fill(FEntries->Events.begin(), FEntries->Events.end(), TNotifyEvent());
  FEntries->Sweep();
}

int TNotifyEventList::GetCount() const {
  const auto& events = FEntries->Events;
  return static_cast<int>(events.size() - static_cast<size_t>(std::count(
                                              events.begin(), events.end(), TNotifyEvent())));
}

void TNotifyEventList::Fire(TObject* iSender) {
  struct TRound {
    std::shared_ptr<TEntries> Entries;
    explicit TRound(std::shared_ptr<TEntries> iEntries) : Entries(std::move(iEntries)) {
      ++Entries->Rounds;
    }
    ~TRound() {
      --Entries->Rounds;
      Entries->Sweep();
    }
  } round(FEntries);
  const std::vector<TNotifyEvent> inRound = round.Entries->Events;
  for (const TNotifyEvent& event : inRound) {
    const auto& now = round.Entries->Events;
    if (std::find(now.begin(), now.end(), event) == now.end() || !event) continue;
    Call(event, iSender);
    if (!round.Entries->Alive) return;
  }
}

void TNotifyEventList::Call(const TNotifyEvent& iEvent, TObject* iSender) { iEvent(iSender); }

void TNotifyEventListSecure::Call(const TNotifyEvent& iEvent, TObject* iSender) {
  Guarded(u"TNotifyEventListSecure", [&] { iEvent(iSender); });
}

}  // namespace kk
