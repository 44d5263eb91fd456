#include "host/controls/TVirtualStringTree.h"

namespace kk {

namespace {

// Selection and focus go there when a node dies.
TVirtualNode* NeighbourOf(const TVirtualNode& iNode, const TVirtualNode& iSiblings) {
  if (TVirtualNode* next = iNode.NextSibling()) return next;
  const int row = iNode.Row();
  return row > 0 ? &iSiblings.GetItems(row - 1) : iNode.Parent();
}

// Rows from the top level down: what comes first in display order has the smaller path.
std::vector<int> PathTo(const TVirtualNode* iNode) {
  std::vector<int> path;
  for (; iNode != nullptr; iNode = iNode->Parent()) path.push_back(iNode->Row());
  std::reverse(path.begin(), path.end());
  return path;
}

}  // namespace

// Brackets one change for the observer, and repaints.
class TVirtualStringTree::TChanging {
 public:
  TChanging(TVirtualStringTree& ioTree, const TTreeChange& iChange)
      : FTree(ioTree), FChange(iChange), FTells(ioTree.FUpdates == 0) {
    if (FTells && FTree.FTreeObserver != nullptr) FTree.FTreeObserver->BeforeTreeChange(FChange);
  }
  ~TChanging() {
    if (!FTells) return;
    if (FTree.FTreeObserver != nullptr) FTree.FTreeObserver->AfterTreeChange(FChange);
    FTree.Changed();
  }
  TChanging(const TChanging&) = delete;
  TChanging& operator=(const TChanging&) = delete;

 private:
  TVirtualStringTree& FTree;
  TTreeChange FChange;
  bool FTells;
};

// The node under the pointer while an action of the user lasts.
class TVirtualStringTree::TPointer {
 public:
  TPointer(TVirtualStringTree& ioTree, TVirtualNode* iNode) : FTree(ioTree) {
    FTree.FNodeUnderPointer = iNode;
  }
  ~TPointer() { FTree.FNodeUnderPointer = nullptr; }
  TPointer(const TPointer&) = delete;
  TPointer& operator=(const TPointer&) = delete;

 private:
  TVirtualStringTree& FTree;
};

TVirtualStringTree::TUpdate::TUpdate(TVirtualStringTree& ioTree) : FTree(ioTree) {
  if (FTree.FUpdates++ > 0 || FTree.FTreeObserver == nullptr) return;
  FTree.FTreeObserver->BeforeTreeChange({});
}

TVirtualStringTree::TUpdate::~TUpdate() {
  if (--FTree.FUpdates > 0) return;
  if (FTree.FTreeObserver != nullptr) FTree.FTreeObserver->AfterTreeChange({});
  FTree.Changed();
}

TVirtualStringTree::TVirtualStringTree(TControl* iParent, TStringView iName)
    : TControl(iParent, iName) {}

TVirtualStringTree::~TVirtualStringTree() {
  if (FTreeObserver != nullptr) FTreeObserver->TreeGone();
}

TVirtualNode& TVirtualStringTree::AddChild(TVirtualNode* iParent, TObject* iObject) {
  TVirtualNode& parent = NodeOrRoot(iParent);
  TVirtualNode* added = nullptr;
  {
    const TChanging change(*this, {TTreeChange::TKind::tcInsert, iParent, parent.GetCount()});
    added = &Put(parent, std::make_unique<TVirtualNode>(&parent, iObject));
    Enter(*added);
  }
  TellChildren(parent, parent.GetCount() - 1);
  return *added;
}

TVirtualNode& TVirtualStringTree::Put(TVirtualNode& ioParent, std::unique_ptr<TVirtualNode> iNode) {
  iNode->FParent = &ioParent;
  iNode->FOrder = FNextOrder++;
  FUnsorted.insert(&ioParent);
  return ioParent.FChildren.Add(std::move(iNode));
}

void TVirtualStringTree::DeleteNode(TVirtualNode& iNode) {
  TVirtualNode& parent = *iNode.FParent;
  TVirtualNode* const neighbour = NeighbourOf(iNode, parent);
  const auto goes = [&iNode](const TVirtualNode* iOther) {
    return iOther != nullptr && iOther->IsIn(iNode);
  };
  const bool focusGoes = goes(FFocusedNode);
  {
    const int row = iNode.Row();
    const TChanging change(*this, {TTreeChange::TKind::tcRemove, NodeOrNull(parent), row});
    if (focusGoes) FFocusedNode = neighbour;
    if (goes(FSelectedNode)) FSelectedNode = neighbour;
    if (goes(FNodeUnderPointer)) FNodeUnderPointer = nullptr;
    Leave(iNode);
    parent.FChildren.Delete(row);
  }
  TellChildren(parent, parent.GetCount() + 1);
  if (focusGoes && FOnFocusChanged) FOnFocusChanged(this);
}

void TVirtualStringTree::MoveTo(TVirtualNode& iNode, TVirtualNode* iNewParent) {
  TVirtualNode& source = *iNode.FParent;
  TVirtualNode& target = NodeOrRoot(iNewParent);
  if (target.IsIn(iNode)) throw Exception(u"TVirtualStringTree.MoveTo");
  const int row = iNode.Row();
  if (&source == &target && row + 1 == source.GetCount()) return;
  {
    const TChanging change(*this, {TTreeChange::TKind::tcMove, NodeOrNull(source), row, iNewParent,
                                   target.GetCount()});
    Put(target, source.FChildren.Extract(row));
  }
  if (&source == &target) return;
  TellChildren(source, source.GetCount() + 1);
  TellChildren(target, target.GetCount() - 1);
}

void TVirtualStringTree::Clear() {
  if (FRoot.GetCount() == 0) return;
  const TUpdate update(*this);
  FSelectedNode = FFocusedNode = FNodeUnderPointer = nullptr;
  FByObject.clear();
  FUnsorted.clear();
  FRoot.FChildren.Clear();
}

void TVirtualStringTree::Enter(TVirtualNode& ioNode) {
  TVirtualNode*& chain = FByObject[ioNode.FObject];
  ioNode.FNextWithObject = chain;
  chain = &ioNode;
}

void TVirtualStringTree::Leave(TVirtualNode& ioNode) {
  for (TVirtualNode* child : ioNode.FChildren) Leave(*child);
  FUnsorted.erase(&ioNode);
  const auto chain = FByObject.find(ioNode.FObject);
  TVirtualNode** link = &chain->second;
  while (*link != &ioNode) link = &(*link)->FNextWithObject;
  *link = ioNode.FNextWithObject;
  if (chain->second == nullptr) FByObject.erase(chain);
}

TVirtualNode* TVirtualStringTree::FindByObject(const TObject* iObject) const {
  const auto chain = FByObject.find(iObject);
  if (chain == FByObject.end()) return nullptr;
  TVirtualNode* first = chain->second;
  for (TVirtualNode* node = first->FNextWithObject; node != nullptr; node = node->FNextWithObject) {
    if (PathTo(node) < PathTo(first)) first = node;
  }
  return first;
}

void TVirtualStringTree::SetFocusedNode(TVirtualNode* iNode) {
  if (FFocusedNode == iNode) return;
  SetValue(FFocusedNode, iNode);
  if (FOnFocusChanged) FOnFocusChanged(this);
}

void TVirtualStringTree::SetExpanded(TVirtualNode& iNode, bool iExpanded) {
  if (iNode.FExpanded == iExpanded) return;
  iNode.FExpanded = iExpanded;
  if (iNode.GetCount() > 0) Tell(iNode);
}

void TVirtualStringTree::SetExpandedAndTell(TVirtualNode& iNode, bool iExpanded) {
  SetExpanded(iNode, iExpanded);
  const TNodeEvent& event = iExpanded ? FOnExpanded : FOnCollapsed;
  if (event) event(this, iNode);
}

void TVirtualStringTree::ScrollIntoView(TVirtualNode& iNode) {
  for (TVirtualNode* node = iNode.Parent(); node != nullptr; node = node->Parent()) {
    if (!node->Expanded()) SetExpandedAndTell(*node, true);
  }
  if (FTreeObserver != nullptr) FTreeObserver->ScrollIntoView(iNode);
}

void TVirtualStringTree::SortTree() {
  if (!FOnCompareNodes) return;
  std::vector<std::pair<TVirtualNode*, TOrder>> orders;
  for (TVirtualNode* parent : FUnsorted) {
    TOrder order;
    if (FindOrder(*parent, order)) orders.emplace_back(parent, std::move(order));
  }
  FUnsorted.clear();
  if (orders.empty()) return;
  const TChanging change(*this, {TTreeChange::TKind::tcSort});
  for (const auto& [parent, order] : orders) Reorder(*parent, order);
}

bool TVirtualStringTree::FindOrder(const TVirtualNode& iParent, TOrder& oOrder) {
  const auto isLess = [this](TVirtualNode* iA, TVirtualNode* iB) {
    int result = 0;
    FOnCompareNodes(this, *iA, *iB, result);
    return result < 0;
  };
  oOrder.assign(iParent.FChildren.begin(), iParent.FChildren.end());
  // What came in stands at the end: it is sorted by itself and merged, in linear time as a rule.
  const auto sortedEnd = std::is_sorted_until(oOrder.begin(), oOrder.end(), isLess);
  if (sortedEnd == oOrder.end()) return false;
  std::stable_sort(sortedEnd, oOrder.end(), isLess);
  std::inplace_merge(oOrder.begin(), sortedEnd, oOrder.end(), isLess);
  return true;
}

void TVirtualStringTree::Reorder(TVirtualNode& ioParent, const TOrder& iOrder) {
  ioParent.FChildren.ClearWithoutFree();
  for (TVirtualNode* node : iOrder) {
    node->FOrder = FNextOrder++;
    ioParent.FChildren.Add(std::unique_ptr<TVirtualNode>(node));
  }
}

void TVirtualStringTree::InvalidateNode(TVirtualNode& iNode) {
  FUnsorted.insert(iNode.FParent);
  Tell(iNode);
}

void TVirtualStringTree::Tell(TVirtualNode& iNode) {
  if (FTreeObserver != nullptr && FUpdates == 0) FTreeObserver->NodeChanged(iNode);
}

void TVirtualStringTree::TellChildren(TVirtualNode& iParent, int iCountBefore) {
  if (&iParent == &FRoot) return;
  if ((iParent.GetCount() == 0) != (iCountBefore == 0)) Tell(iParent);
}

TString TVirtualStringTree::Text(TVirtualNode& iNode) {
  TString text;
  if (FOnGetText) FOnGetText(this, iNode, text);
  return text;
}

TString TVirtualStringTree::Hint(TVirtualNode& iNode) {
  TString hint;
  if (FOnGetHint) FOnGetHint(this, iNode, hint);
  return hint;
}

int TVirtualStringTree::ImageIndex(TVirtualNode& iNode) {
  int image = -1;
  if (FOnGetImageIndex) FOnGetImageIndex(this, iNode, image);
  return image;
}

void TVirtualStringTree::GoTo(TVirtualNode& iNode) {
  SetSelectedNode(&iNode);
  SetFocusedNode(&iNode);
}

bool TVirtualStringTree::FocusNode(TVirtualNode& iNode) {
  return AsUser([&] {
    if (!iNode.IsShown() || (FSelectedNode == &iNode && FFocusedNode == &iNode)) return false;
    GoTo(iNode);
    return true;
  });
}

bool TVirtualStringTree::Toggle(TVirtualNode& iNode, bool iExpanded) {
  if (!iNode.IsShown() || iNode.GetCount() == 0 || iNode.Expanded() == iExpanded) return false;
  SetExpandedAndTell(iNode, iExpanded);
  return true;
}

bool TVirtualStringTree::ExpandNode(TVirtualNode& iNode) {
  return AsUser([&] { return Toggle(iNode, true); });
}

bool TVirtualStringTree::CollapseNode(TVirtualNode& iNode) {
  return AsUser([&] { return Toggle(iNode, false); });
}

void TVirtualStringTree::SetHasCheckBox(TVirtualNode& iNode, bool iHasCheckBox) {
  if (std::exchange(iNode.FHasCheckBox, iHasCheckBox) != iHasCheckBox) Tell(iNode);
}

void TVirtualStringTree::SetChecked(TVirtualNode& iNode, bool iChecked) {
  if (std::exchange(iNode.FChecked, iChecked) != iChecked) Tell(iNode);
}

bool TVirtualStringTree::CheckNode(TVirtualNode& iNode) {
  return AsUser([&] { return ToggleCheck(iNode); });
}

bool TVirtualStringTree::ToggleCheck(TVirtualNode& iNode) {
  if (!iNode.HasCheckBox() || !iNode.IsShown()) return false;
  const TPointer pointer(*this, &iNode);
  GoTo(iNode);
  if (FNodeUnderPointer == nullptr) return true;  // it has died in the event
  SetChecked(iNode, !iNode.Checked());
  if (FOnChecked) FOnChecked(this, iNode);
  return true;
}

bool TVirtualStringTree::UseKey(char16_t iKey) {
  return iKey == cKeySpace && FFocusedNode != nullptr && ToggleCheck(*FFocusedNode);
}

bool TVirtualStringTree::DoubleClick(TVirtualNode* iNode) {
  return AsUser([&] {
    if (iNode != nullptr && !iNode->IsShown()) return false;
    const TPointer pointer(*this, iNode);
    if (iNode != nullptr) GoTo(*iNode);
    // The node may have died in the event.
    if (FNodeUnderPointer != nullptr) Toggle(*FNodeUnderPointer, !FNodeUnderPointer->Expanded());
    if (FOnDblClick) FOnDblClick(this);
    return true;
  });
}

bool TVirtualStringTree::OpenPopupMenu(TVirtualNode* iNode) {
  return AsUser([&] {
    if (FPopupMenu == nullptr || (iNode != nullptr && !iNode->IsShown())) return false;
    const TPointer pointer(*this, iNode);
    if (iNode != nullptr) GoTo(*iNode);
    if (FOnContextPopup) FOnContextPopup(this);
    return true;
  });
}

}  // namespace kk
