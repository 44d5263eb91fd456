#include "host/base/TNotifyEventList.h"

#include <algorithm>

#include "host/base/Guard.h"

namespace kk {

TNotifyEventList::TNotifyEventList(bool iIgnoreDuplicates)
    : FEvents(std::make_shared<std::vector<TNotifyEvent>>()),
      FIgnoreDuplicates(iIgnoreDuplicates) {}

TNotifyEventList::~TNotifyEventList() { Clear(); }

void TNotifyEventList::Add(const TNotifyEvent& iEvent, int iPosition) {
  auto& events = *FEvents;
  if (!iEvent) return;
  if (FIgnoreDuplicates && std::find(events.begin(), events.end(), iEvent) != events.end()) return;
  const bool append = iPosition < 0 || iPosition >= GetCount();
  events.insert(append ? events.end() : events.begin() + iPosition, iEvent);
}

void TNotifyEventList::Remove(const TNotifyEvent& iEvent) {
  const auto hit = std::find(FEvents->begin(), FEvents->end(), iEvent);
  if (hit != FEvents->end()) FEvents->erase(hit);
}

void TNotifyEventList::Clear() { FEvents->clear(); }

int TNotifyEventList::GetCount() const { return static_cast<int>(FEvents->size()); }

void TNotifyEventList::Fire(TObject* iSender) {
  // The list may die in a call. It leaves no events behind, so that nothing of it is used then.
  const std::shared_ptr<const std::vector<TNotifyEvent>> events = FEvents;
  const std::vector<TNotifyEvent> inRound(events->begin(), events->end());
  for (const TNotifyEvent& event : inRound) {
    if (std::find(events->begin(), events->end(), event) != events->end()) Call(event, iSender);
  }
}

void TNotifyEventList::Call(const TNotifyEvent& iEvent, TObject* iSender) { iEvent(iSender); }

void TNotifyEventListSecure::Call(const TNotifyEvent& iEvent, TObject* iSender) {
  Guarded(u"TNotifyEventListSecure", [&] { iEvent(iSender); });
}

}  // namespace kk
