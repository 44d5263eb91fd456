#pragma once

#include <atomic>

#include "reminders/IRemindThread.h"
#include "reminders/TRemindDetailsEMail.h"
#include "reminders/TRemindDetailsOutlook.h"
#include "reminders/TRemindDetailsSMS.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"

namespace kk {

/// What the reminder thread does with a reminder that is due: it tells the section, then takes one
/// detail after the other. The details alone count, not the set of kinds: a sound that is left
/// among them plays. Nothing here reports to the user or tries again; what goes wrong is in the
/// log and touches no other detail.
///
/// Runs on the reminder thread; the steps whose names begin with Sync run on the main thread, while
/// the reminder thread waits.
class TRemindDelivery : public TObject {
 protected:
  TRemindDelivery(const TIntf<IApplication>& iApplication, TNotifyProcessRemindItem iOnProcessItem)
      : FApplication(iApplication), FOnProcessItem(iOnProcessItem) {}

  /// Whether termination was requested; what has not begun is left undone then.
  bool Terminated() const { return FTerminated; }
  void RequestTermination() { FTerminated = true; }

  /// Delivers one reminder, which stays the caller's. An exception of the main loop passes.
  void ProcessElapsedItem(TRemindItem& iItem);
  /// Delivers and deletes the reminders of a list from its front; goes with ExtractElapsedItems.
  void ProcessElapsedItems(TLstRemindItem& ioLst);
  /// Lets go of the application. Main thread.
  void ReleaseApplication() { FApplication = nullptr; }

 private:
  void SyncProcessItem();
  void ProcessDetails(const TRemindDetailsBase& iDetails);
  void ProcessSound(const TRemindDetailsSound& iDetails);
  void ProcessWindow(const TRemindDetailsWindow& iDetails);
  void SyncProcessWindow();
  void ShowWindow(const TRemindDetailsWindow& iDetails);
  void ProcessSMS(const TRemindDetailsSMS& iDetails);
  void ProcessOutlook(const TRemindDetailsOutlook& iDetails);
  void ProcessEMail(const TRemindDetailsEMail& iDetails);

  TIntf<IApplication> FApplication;
  /// The reminder that is being delivered, for the steps of the main thread.
  TRemindItem* FCurrentItem = nullptr;
  const TNotifyProcessRemindItem FOnProcessItem;
  std::atomic<bool> FTerminated{false};
};

}  // namespace kk
