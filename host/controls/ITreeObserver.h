#pragma once

#include <cstdint>

namespace kk {

class TVirtualNode;

/// One change of a tree's nodes. Rows count from 0, and a parent that is null is the top level.
struct TTreeChange {
  enum class TKind : uint8_t {
    tcInsert,  ///< a node comes in at Row of Parent
    tcRemove,  ///< the node at Row of Parent goes, with all below it
    tcMove,    ///< the node at Row of Parent becomes the last child of NewParent
    tcSort,    ///< nodes change their rows, and keep their parents
    tcReset    ///< all nodes may be others
  };

  TKind Kind = TKind::tcReset;
  TVirtualNode* Parent = nullptr;
  int Row = 0;
  TVirtualNode* NewParent = nullptr;
  /// Of NewParent as it counts before the move, when the node may still be one of its children.
  int NewRow = 0;

  friend bool operator==(const TTreeChange&, const TTreeChange&) = default;
};

/// What an item model hears of the nodes of a tree, so that one adapter can serve every tree: each
/// change before and after it is made. Before, the tree is as it was; between the two, no node may
/// be touched. Selection, focus and looks in general come by IControlObserver. Main thread.
class ITreeObserver {
 public:
  virtual ~ITreeObserver() = default;
  virtual void BeforeTreeChange(const TTreeChange& iChange) = 0;
  virtual void AfterTreeChange(const TTreeChange& iChange) = 0;
  /// Text, image, hint or expansion of this one node may be others.
  virtual void NodeChanged(TVirtualNode& iNode) = 0;
  /// The node is to be seen; what it stands in is expanded.
  virtual void ScrollIntoView(TVirtualNode& iNode) = 0;
  /// The tree begins to die, with all its nodes, and asks no more of the observer.
  virtual void TreeGone() {}
};

}  // namespace kk
