#pragma once

#include <thread>

#include "reminders/TRemindDelivery.h"

namespace kk {

/// The thread that delivers reminders. Once a second it looks for those that are due, takes one
/// after the other out of the list and delivers it. What was taken out is gone, whether its
/// delivery worked or not.
///
/// The pause is of the steady clock and the comparison of the wall clock, so that a jump of the
/// time of day, and a machine that slept, are noticed at the next look. Nothing wakes the thread.
class TThreadRemind final : public TRemindDelivery, public IRemindThread {
 public:
  /// Suspended: Create makes it and lets it run.
  TThreadRemind(const TIntf<IApplication>& iApplication, TLstRemindItem& ioLstRemind,
                TNotifyProcessRemindItem iOnProcessItem, TNotifyEvent iOnTerminate);
  ~TThreadRemind() override;

  /// Starts a thread, which frees itself on the main thread when it has ended, behind iOnTerminate.
  /// The list is borrowed until then. iOnProcessItem is called on the main thread for each reminder
  /// before it is delivered. The main loop must be kept alive meanwhile. Main thread.
  static TThreadRemind& Create(const TIntf<IApplication>& iApplication, TLstRemindItem& ioLstRemind,
                               TNotifyProcessRemindItem iOnProcessItem, TNotifyEvent iOnTerminate);

  /// Takes effect when the pause or the step that is under way is over; the pause has no end before
  /// its time. Any thread.
  void Terminate() override { RequestTermination(); }

 private:
  void Execute();
  void Pass();
  void Ended();

  TLstRemindItem& FLstRemind;
  const TNotifyEvent FOnTerminate;
  std::thread FThread;
};

/// Starts the reminder thread.
class TRemindThreadFactory final : public IRemindThreadFactory {
 public:
  IRemindThread& StartThread(const TIntf<IApplication>& iApplication, TLstRemindItem& ioLstRemind,
                             TNotifyProcessRemindItem iOnProcessItem,
                             TNotifyEvent iOnTerminate) override {
    return TThreadRemind::Create(iApplication, ioLstRemind, iOnProcessItem, iOnTerminate);
  }
};

}  // namespace kk
