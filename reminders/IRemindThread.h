#pragma once

#include "host/base/TDelegate.h"
#include "host/base/TObject.h"
#include "host/contract/IApplication.h"
#include "reminders/TLstRemindItem.h"

namespace kk {

/// A reminder that is being delivered: the sender and the reminder, which has left the list already
/// and dies after the delivery. Main thread.
using TNotifyProcessRemindItem = TDelegate<void(TObject* Sender, TRemindItem& iItem)>;

/// The thread that delivers reminders, as its owner sees it. It frees itself when it ends; nobody
/// touches it after its terminate notification.
class IRemindThread {
 public:
  /// Asks it to end and does not wait.
  virtual void Terminate() = 0;

 protected:
  ~IRemindThread() = default;
};

/// Makes the thread.
class IRemindThreadFactory {
 public:
  virtual ~IRemindThreadFactory() = default;
  /// Starts a thread on the list, which is borrowed until the end of the thread. It tells of each
  /// reminder by iOnProcessItem and, as the last thing, of its end by iOnTerminate, both on the
  /// main thread.
  virtual IRemindThread& StartThread(const TIntf<IApplication>& iApplication,
                                     TLstRemindItem& ioLstRemind,
                                     TNotifyProcessRemindItem iOnProcessItem,
                                     TNotifyEvent iOnTerminate) = 0;
};

/// Installs the factory, which is borrowed, and answers the one before. Main thread.
IRemindThreadFactory* SetRemindThreadFactory(IRemindThreadFactory* iFactory);
/// Null while none is installed.
IRemindThreadFactory* RemindThreadFactory();

}  // namespace kk
