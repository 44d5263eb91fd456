#include "reminders/TThreadRemind.h"

#include <memory>
#include <utility>

#include "host/base/Guard.h"
#include "host/base/TClock.h"
#include "host/base/TMainLoop.h"

namespace kk {

namespace {

constexpr int cYield = 0;
constexpr int cPollPeriodMs = 1000;

}  // namespace

TThreadRemind& TThreadRemind::Create(const TIntf<IApplication>& iApplication,
                                     TLstRemindItem& ioLstRemind,
                                     TNotifyProcessRemindItem iOnProcessItem,
                                     TNotifyEvent iOnTerminate) {
  AssertMainThread();
  const auto thread =
      std::make_shared<TThreadRemind>(iApplication, ioLstRemind, iOnProcessItem, iOnTerminate);
  thread->FThread = std::thread([self = thread]() mutable {
    self->Execute();
    // The object goes with this message.
    MainLoop().Post([self = std::move(self)] { self->Ended(); });
  });
  return *thread;
}

TThreadRemind::TThreadRemind(const TIntf<IApplication>& iApplication, TLstRemindItem& ioLstRemind,
                             TNotifyProcessRemindItem iOnProcessItem, TNotifyEvent iOnTerminate)
    : TRemindDelivery(iApplication, iOnProcessItem),
      FLstRemind(ioLstRemind),
      FOnTerminate(iOnTerminate) {}

TThreadRemind::~TThreadRemind() {
  if (FThread.joinable()) FThread.join();
}

void TThreadRemind::Execute() {
  while (!Terminated()) {
    try {
      Guarded(u"TThreadRemind.Execute", [this] { Pass(); });
    } catch (...) {  // the edge of the thread: what is no exception of ours doesn't end it either
      LogDebug(u"TThreadRemind.Execute", u"Fremde Ausnahme");
    }
  }
}

void TThreadRemind::Pass() {
  Sleep(cYield);
  if (Terminated()) return;
  if (!FLstRemind.HasElapsedItems()) {
    if (!Terminated()) Sleep(cPollPeriodMs);
    return;
  }
  std::unique_ptr<TRemindItem> item;
  FLstRemind.ExtractFirstElapsedItem(item);
  // Looks like a mistake and is required: a reminder that was just taken out is lost here.
  if (Terminated()) return;
  if (item) ProcessElapsedItem(*item);
  item.reset();
  if (!Terminated()) Sleep(cYield);
}

// On the main thread. When the end is told, nothing of the thread runs any more: the package may be
// unloaded.
void TThreadRemind::Ended() {
  FThread.join();
  ReleaseApplication();
  if (FOnTerminate) FOnTerminate(this);
}

}  // namespace kk
