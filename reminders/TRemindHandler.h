#pragma once

#include "host/base/TStream.h"
#include "reminders/IRemindThread.h"
#include "reminders/TLstRemindItemSync.h"

namespace kk {

/// The owner of the live reminders and of the thread that delivers them. Owned by the watch list's
/// handler. Main thread.
class TRemindHandler : public TObject {
 public:
  TRemindHandler() = default;
  /// Ends a thread that still runs, because it works on the list.
  ~TRemindHandler() override;

  /// Starts the thread with the installed factory. Once a thread was started, a second call does
  /// nothing, even after the thread ended. While no factory is installed, no thread is started:
  /// reminders are kept, not delivered.
  void StartThread(const TIntf<IApplication>& iApplication);
  /// Asks the thread to end and processes the main thread's messages until it has; there is no
  /// time-out. Does nothing if there is none or it has ended.
  void EndThread();

  /// Writes the live reminders; they count as unchanged then.
  void SaveToStream(TStream& ioStream);
  /// Replaces the live reminders by those of the stream; they count as unchanged then. Raises what
  /// TRemindItemLoader raises; the list is empty then, and counts as changed.
  void LoadFromStream(TStream& iStream, bool iDecodeUTF8);

  TLstRemindItemSync& LstRemind() { return FLstRemind; }
  /// Called with the handler as the sender for each reminder that is delivered, before that.
  TNotifyProcessRemindItem OnProcessElapsedItem() const { return FOnProcessElapsedItem; }
  void SetOnProcessElapsedItem(TNotifyProcessRemindItem iEvent) { FOnProcessElapsedItem = iEvent; }

 private:
  void DoThreadTerminate(TObject* Sender);
  void DoThreadProcessItem(TObject* Sender, TRemindItem& iItem);

  bool FThreadTerminationSignalized = false;
  IRemindThread* FThread = nullptr;  // not owned: it frees itself
  TLstRemindItemSync FLstRemind{true};
  TNotifyProcessRemindItem FOnProcessElapsedItem;
};

}  // namespace kk
