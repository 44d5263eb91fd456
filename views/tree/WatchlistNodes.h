#pragma once

#include "host/contract/TBitmap.h"
#include "host/controls/TVirtualNode.h"
#include "model/TLstWatchlistCategory.h"

namespace kk {

/// What the nodes of the category tree stand for and how they read. The kind of a node is the class
/// of its object; of a node without one, an empty node, nothing here makes any. Main thread.

/// Null for a node of another kind, and for no node.
TWatchlistCategory* CategoryAt(const TVirtualNode* iNode);
TWatchlistPlugin* GroupAt(const TVirtualNode* iNode);
TWatchlistItem* ItemAt(const TVirtualNode* iNode);
/// The node's category: itself, the parent of a group, the grandparent of an item. Null for none.
TWatchlistCategory* CategoryOfNode(const TVirtualNode* iNode);
/// The category of what belongs nowhere else.
bool IsUnassigned(const TWatchlistCategory* iCategory);

/// How many entries a node's text tells behind its name.
struct TNodeCounts {
  bool Own = false;
  bool Recursive = false;
};
TString NodeText(const TVirtualNode& iNode, TNodeCounts iCounts);
/// Several lines, divided by CR LF.
TString NodeHint(const TVirtualNode& iNode);
/// -1 for none, else an index of NodeImages.
int NodeImage(const TVirtualNode& iNode);
/// Closed folder, open folder.
std::vector<TBitmap> NodeImages();
/// Negative, 0 or positive: by kind, the unassigned category and then categories first, then by
/// name without regard to case.
int CompareNodes(const TVirtualNode& iA, const TVirtualNode& iB);

}  // namespace kk
