#pragma once

#include <memory>
#include <vector>

#include "host/base/TDelegate.h"
#include "host/base/TObject.h"

namespace kk {

/// A list of callbacks that are told of one thing. Main thread.
///
/// Firing survives what a callback does to the list: one that is removed is not called any more,
/// one that is added is not called in this round, and the list itself may die.
class TNotifyEventList : public TObject {
 public:
  /// With the flag set, an event is kept once: adding it again does nothing.
  explicit TNotifyEventList(bool iIgnoreDuplicates = false);
  ~TNotifyEventList() override;

  /// Inserts before the position; -1 and every position behind the end append.
  void Add(const TNotifyEvent& iEvent, int iPosition = -1);
  /// Takes the first such event out; no effect if there is none.
  void Remove(const TNotifyEvent& iEvent);
  void Clear();
  int GetCount() const;

  /// Calls every event, in order, with the sender. An exception ends the round and passes on.
  virtual void Fire(TObject* iSender);

 protected:
  /// One call of a round.
  virtual void Call(const TNotifyEvent& iEvent, TObject* iSender);

 private:
  // Shared with the rounds under way, which outlive the list that way.
  std::shared_ptr<std::vector<TNotifyEvent>> FEvents;
  bool FIgnoreDuplicates;
};

/// As its base, but one callback that fails does not keep the others from being called.
class TNotifyEventListSecure : public TNotifyEventList {
 public:
  using TNotifyEventList::TNotifyEventList;

 protected:
  void Call(const TNotifyEvent& iEvent, TObject* iSender) override;
};

}  // namespace kk
