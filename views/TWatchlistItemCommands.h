#pragma once

#include <vector>

#include "model/TLstWatchlistIntegration.h"
#include "views/TWatchlistReminderCommands.h"

namespace kk {

/// The section's commands on items and groups: from the tree by the objects of the model, from a
/// result list by the results. The flags of the sources tell the next save what has changed; none
/// of the commands writes the file. A result whose item is gone is passed over. Main thread.
class TWatchlistItemCommands {
 public:
  TWatchlistItemCommands(const TWatchlistSeams& iSeams, TWatchlistReminderCommands& ioReminders)
      : FSeams(iSeams), FReminders(ioReminders) {}

  /// From the tree; both ask, and answer false for no. The item's entry in the refresh queue and an
  /// appointment of its reminder stay, as required.
  bool DeleteItem(TWatchlistItem& iItem);
  /// The rows of a deleted group stay in the result list until that is next filled, as required.
  bool DeleteGroup(TWatchlistPlugin& iGroup);

  /// From a result list: asks and deletes; false for no. Nothing for a source without a list.
  bool DoTabDelete(const TIntf<IWatchlistIntegration>& iIntegration,
                   const TIntf<IInterfaceList>& iResults);
  /// The same without the question, for any source: reminders with their appointments, rows, items,
  /// entries in the refresh queue, and every group of the tree that is empty then. iIds: the items;
  /// those of the results, and such as have no result.
  void DeleteItems(const TIntf<IWatchlistIntegration>& iIntegration,
                   const TIntf<IInterfaceList>& iResults, const std::vector<TGuid>& iIds);

  /// Does nothing if the group stands in the target already.
  void DoMovePlugin(TWatchlistCategory& iTarget, TWatchlistPlugin& iGroup);
  /// Nothing for a source without a list.
  void DoMoveItems(const TIntf<IWatchlistIntegration>& iIntegration, TWatchlistCategory& iTarget,
                   const TIntf<IInterfaceList>& iResults);
  /// The same for any source; iIds as above. Does nothing if the first item stands in the target
  /// already; only the first decides, as required.
  void MoveItems(const TIntf<IWatchlistIntegration>& iIntegration, TWatchlistCategory& iTarget,
                 const TIntf<IInterfaceList>& iResults, const std::vector<TGuid>& iIds);

  /// Gives these items the lines as their note. Marks the source of the first one alone, as
  /// required: a result list holds results of one source.
  void SetDescriptions(const std::vector<TGuid>& iIds, const TStringList& iLines);

 private:
  void RefreshSelectedCategory(TWatchlistCategory& iCategory);
  void DeleteItem(TWatchlistIntegration* ioIntegration, const TGuid& iId);
  void DeleteEmptyGroups();
  TWatchlistPlugin& GroupIn(TWatchlistCategory& iTarget,
                            const TIntf<IWatchlistIntegration>& iIntegration);

  const TWatchlistSeams& FSeams;
  TWatchlistReminderCommands& FReminders;
};

}  // namespace kk
