#pragma once

#include <unordered_map>

#include "host/controls/TVirtualNode.h"
#include "model/TLstWatchlistCategory.h"

namespace kk {

/// Tells whether there is anything at and below a node that can be refreshed. The tree asks that at
/// each repaint of the selected category, so it must not cost a walk over all items: of each group
/// it is kept which item could be refreshed when last asked, and that is asked again first; or that
/// none could, until the group is forgotten. The answer is that of the plain scan for as long as a
/// group is forgotten when items of it come in, move in, or are refreshed. That also goes for a new
/// group where a dead one was in memory. Main thread.
class TUpdatableNodes : public TObject {
 public:
  /// Hears of items that get a result from the handler that there is now, if there is one.
  TUpdatableNodes();
  ~TUpdatableNodes() override;

  /// No node: false. An empty node: anything in the whole tree.
  bool CanUpdateNode(const TVirtualNode* iNode);
  /// Whether any group of the whole tree is of a source that can refresh, whatever its items.
  static bool AnySourceCanUpdate();

  void Forget(const TWatchlistPlugin& iGroup) { FStates.erase(&iGroup); }
  /// The group in which the item hangs, or all if it hangs in none.
  void Forget(const TWatchlistItem& iItem);
  void ForgetAll() { FStates.clear(); }

 private:
  struct TState {
    int Updatable = 0;  // where to look first
    bool None = false;
  };

  bool AnyCanUpdate(const TLstWatchlistPlugin& iGroups);
  bool CanUpdate(const TWatchlistPlugin& iGroup);
  static bool CanUpdate(const TWatchlistItem& iItem);
  static void FindUpdatable(const TWatchlistPlugin& iGroup, TState& ioState);
  void DoItemAdd(TObject* Sender);
  void DoItemDelete(TObject* /*Sender*/) {}

  std::unordered_map<const TWatchlistPlugin*, TState> FStates;
};

}  // namespace kk
