#pragma once

#include "host/base/TLstBase.h"

namespace kk {

class TVirtualNode;

/// The nodes of one level in order; owns them. Only the tree changes it. Main thread.
class TLstVirtualNode : public TLstBase<TVirtualNode> {
 public:
  TLstVirtualNode() : TLstBase(true) {}

  TVirtualNode& Add(std::unique_ptr<TVirtualNode> iNode) { return Append(std::move(iNode)); }
  /// An index out of range raises EListError.
  TVirtualNode& GetItems(int iIndex) const { return At(iIndex); }
  /// The row of a node that is in the list, without a walk along it.
  int RowOf(const TVirtualNode& iNode) const;
};

/// A node of a TVirtualStringTree, which owns it: a place in the tree, and one reference to an
/// object, which is borrowed and may be absent. What it shows the tree asks its events. Main
/// thread.
class TVirtualNode : public TObject {
 public:
  /// Trees alone make nodes.
  TVirtualNode(TVirtualNode* iParent, TObject* iObject) : FParent(iParent), FObject(iObject) {}

  TObject* Object() const { return FObject; }
  /// Null at the top level.
  TVirtualNode* Parent() const;
  /// From 0, among the nodes with the same parent; logarithmic in their number.
  int Row() const;
  int GetCount() const { return FChildren.GetCount(); }
  /// An index out of range raises EListError.
  TVirtualNode& GetItems(int iRow) const { return FChildren.GetItems(iRow); }
  /// Null if there is none.
  TVirtualNode* FirstChild() const;
  TVirtualNode* NextSibling() const;
  /// The next one in display order, whether or not it can be seen: first child, else next sibling,
  /// else that of the nearest parent that has one. Null behind the last.
  TVirtualNode* Next() const;
  /// Whether its children show. A node that has none is not expanded; what was said before holds
  /// again when it gets some.
  bool Expanded() const { return FExpanded && GetCount() > 0; }
  /// Whether it has a check box; it has none at first.
  bool HasCheckBox() const { return FHasCheckBox; }
  bool Checked() const { return FChecked; }
  /// Whether all that it stands in is expanded.
  bool IsShown() const;
  /// Whether it is the other node or stands below it.
  bool IsIn(const TVirtualNode& iNode) const;

 private:
  friend class TVirtualStringTree;
  friend class TLstVirtualNode;

  TVirtualNode* FParent;  // at the top level the tree's root, which is no node for others
  TObject* FObject;
  TVirtualNode* FNextWithObject = nullptr;
  int64_t FOrder = 0;  // rises along the list that it is in
  bool FExpanded = false;
  bool FHasCheckBox = false;
  bool FChecked = false;
  TLstVirtualNode FChildren;
};

}  // namespace kk
