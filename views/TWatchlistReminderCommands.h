#pragma once

#include <vector>

#include "host/contract/IWatchlistIntegration.h"
#include "views/TWatchlistSeams.h"

namespace kk {

/// The section's commands on reminders of selected results. None of them writes the file; the list
/// of reminders knows that it has changed. Main thread.
class TWatchlistReminderCommands {
 public:
  explicit TWatchlistReminderCommands(const TWatchlistSeams& iSeams) : FSeams(iSeams) {}

  /// Sets up a reminder for each of the results that ends after now, the machine's local time;
  /// iShowEditor asks the user how, else the default settings say it. Does nothing if none of them
  /// does, or the user cancels. Otherwise the old reminders of all the results go, also of those
  /// that have ended.
  void AutoEnableReminder(bool iShowEditor, const IInterfaceList& iResults);

  /// From a result list: one editor for all, with the focused result, else the first, as the
  /// pattern. Takes what has ended by the host's corrected clock out of ioResults. Asks first if
  /// more than one is left; does nothing, and asks nothing, if none is. What fails raises, here and
  /// below.
  void DoTabReminderAdd(const TIntf<IWatchlistIntegration>& iIntegration,
                        const TIntf<IInterfaceList>& ioResults);
  /// The same for results of any sources, with the first as the pattern.
  void EditReminders(const TIntf<IInterfaceList>& ioResults);

  /// From a result list: deletes the reminders with their appointments. iAsk: the user is asked
  /// before; false for no, and for no results.
  bool DoTabReminderDelete(bool iAsk, const TIntf<IWatchlistIntegration>& iIntegration,
                           const TIntf<IInterfaceList>& iResults);
  /// The same without the question. iIds: the items; those of the results, and such as have no
  /// result.
  void DeleteReminders(const TIntf<IWatchlistIntegration>& iIntegration,
                       const TIntf<IInterfaceList>& iResults, const std::vector<TGuid>& iIds);

 private:
  /// Asks if there are several, up to the end of the editor; false for no, and for no results.
  bool Edit(const IInterfaceList& iResults);

  const TWatchlistSeams& FSeams;
};

}  // namespace kk
