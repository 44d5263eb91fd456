#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

#include "TRemindWorld.h"
#include "host/common/TQueueMainLoop.h"
#include "reminders/TRemindHandler.h"
#include "reminders/TThreadRemind.h"
#include "tests/support/TurnUntil.h"

namespace kk {

/// Counts the threads that the real factory starts.
class TCountingFactory : public IRemindThreadFactory {
 public:
  TCountingFactory() : FBefore(SetRemindThreadFactory(this)) {}
  ~TCountingFactory() override { SetRemindThreadFactory(FBefore); }

  IRemindThread& StartThread(const TIntf<IApplication>& iApplication, TLstRemindItem& ioLstRemind,
                             TNotifyProcessRemindItem iOnProcessItem,
                             TNotifyEvent iOnTerminate) override {
    ++Starts;
    return FReal.StartThread(iApplication, ioLstRemind, iOnProcessItem, iOnTerminate);
  }

  int Starts = 0;

 private:
  TRemindThreadFactory FReal;
  IRemindThreadFactory* FBefore;
};

/// The real thread on the main loop of the terminal, with a clock that the test turns.
class TThreadWorld : public TRemindWorld {
 public:
  TThreadWorld() : FLoopBefore(SetMainLoop(&Loop)) {}
  ~TThreadWorld() {
    End();
    Host = nullptr;
    SetMainLoop(FLoopBefore);
  }

  void Start() { Handler.StartThread(Host); }
  void End() {
    Clock.StopSleeping();
    Handler.EndThread();
  }
  TLstRemindItemSync& Lst() { return Handler.LstRemind(); }
  /// A reminder by window, due so many milliseconds from now.
  TGuid Add(int64_t iMs, TStringView iCaption = u"Uhr") {
    auto item = Reminder(Window(iCaption));
    item->SetRemindTime(Clock.Now().PlusMs(iMs));
    const TGuid id = item->Id();
    Lst().Add(std::move(item));
    return id;
  }

  /// Turns the main loop until it is so, for ten seconds at most.
  void Until(const std::function<bool()>& iIsSo) {
    ASSERT_TRUE(TurnUntil(Loop, iIsSo, std::chrono::seconds(10))) << "it does not come";
  }
  /// The thread has looked, and sleeps.
  void UntilAsleep() {
    Until([this] { return Clock.SleeperCount() == 1; });
  }
  /// A second goes by, and the thread has looked again.
  void NextPoll() {
    Clock.Advance(1000);
    UntilAsleep();
  }

  TQueueMainLoop Loop;
  TCountingFactory Factory;
  TRemindHandler Handler;

 private:
  TMainLoop* FLoopBefore;
};

}  // namespace kk
