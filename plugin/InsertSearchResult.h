#pragma once

#include <vector>

#include "model/TLstWatchlistCategory.h"
#include "model/TLstWatchlistIntegration.h"

namespace kk {

class TfrmKKWatchlist;

/// The decisions behind "Artikel beobachten...", which the command line, IWatchlist and the result
/// views of other plug-ins share. Nothing is caught here: failures pass to the caller. Main thread.

/// Results on their way into the list: which of them are new, and which an item of the source says
/// are the same as itself. Sorted before the user is asked, and moved after that.
class TResultsToInsert {
 public:
  /// Looks at all items of the source as they stand now.
  explicit TResultsToInsert(TWatchlistIntegration& iTarget);

  void Sort(const TIntf<ISearchResult>& iResult);
  const TIntf<IInterfaceList>& New() const { return FNew; }
  const TIntf<IInterfaceList>& Known() const { return FKnown; }

  /// Moves the known items, unless the list of known results was emptied, into the target's group
  /// at this position. Those that stand in the target, or that have gone since they were sorted,
  /// stay as they are. A position that is not in the target's list raises EListError before the
  /// item is touched.
  void MoveKnownItems(TWatchlistCategory& iTarget, int iGroup) const;

 private:
  TWatchlistIntegration& FTarget;
  TLstWatchlistItem FItems{false};
  std::vector<TGuid> FKnownItems;
  TIntf<IInterfaceList> FNew = NewInterfaceList();
  TIntf<IInterfaceList> FKnown = NewInterfaceList();
};

/// The category for the results: the source's default, or what the user says. Null means that the
/// user cancelled. With the question switched off, or if the user wants only the new ones, the list
/// of known results is emptied. The new list is not looked at.
TWatchlistCategory* AskForTargetCategory(const TIntf<IWatchlistIntegration>& iIntegration,
                                         const IInterfaceList& iNew, IInterfaceList& ioKnown);

/// Adds a result to the list, or moves the item that is the same as it. False for an empty result,
/// if the user cancels, and while there is no form.
bool InsertSearchResult(const TIntf<ISearchResult>& iResult, TWatchlistIntegration& iIntegration,
                        TfrmKKWatchlist* iForm);

}  // namespace kk
