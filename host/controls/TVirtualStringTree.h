#pragma once

#include <unordered_map>
#include <unordered_set>

#include "host/contract/TBitmap.h"
#include "host/controls/ITreeObserver.h"
#include "host/controls/TMenuItem.h"
#include "host/controls/TVirtualNode.h"

namespace kk {

using TNodeEvent = TDelegate<void(TObject* Sender, TVirtualNode& iNode)>;
using TNodeTextEvent = TDelegate<void(TObject* Sender, TVirtualNode& iNode, TString& oText)>;
using TNodeImageEvent = TDelegate<void(TObject* Sender, TVirtualNode& iNode, int& oImage)>;
using TCompareNodesEvent =
    TDelegate<void(TObject* Sender, TVirtualNode& iA, TVirtualNode& iB, int& oResult)>;

/// A tree of nodes, of which at most one is selected and at most one has the focus. It knows places
/// and objects alone, and asks its events for what a node shows, each time that it is painted.
///
/// Two things differ from other controls, because the logic rests on them: a change of the focus
/// raises its event whoever makes it, and a node that is deleted hands selection and focus on to
/// its next sibling, else the one before, else its parent. Main thread.
class TVirtualStringTree : public TControl {
 public:
  explicit TVirtualStringTree(TControl* iParent, TStringView iName = {});
  ~TVirtualStringTree() override;

  /// A new node at the end of the parent's children, or of the top level.
  TVirtualNode& AddChild(TVirtualNode* iParent, TObject* iObject);
  /// The node dies, and all below it.
  void DeleteNode(TVirtualNode& iNode);
  /// To the end of another node's children, or of the top level. Selection and focus stay. Into
  /// itself raises Exception.
  void MoveTo(TVirtualNode& iNode, TVirtualNode* iNewParent);
  /// Without nodes nothing is selected or has the focus, and no event comes.
  void Clear();
  /// While one lives, the observer hears of one change of everything instead of each single one.
  class TUpdate {
   public:
    explicit TUpdate(TVirtualStringTree& ioTree);
    ~TUpdate();
    TUpdate(const TUpdate&) = delete;
    TUpdate& operator=(const TUpdate&) = delete;

   private:
    TVirtualStringTree& FTree;
  };

  /// The nodes of the top level are its children; it is no node itself.
  const TVirtualNode& Root() const { return FRoot; }
  /// The first in display order; null for an empty tree.
  TVirtualNode* First() const { return FRoot.FirstChild(); }
  /// The first in display order that refers to this very object (null: to none), in constant time;
  /// null if there is none.
  TVirtualNode* FindByObject(const TObject* iObject) const;

  TVirtualNode* SelectedNode() const { return FSelectedNode; }
  void SetSelectedNode(TVirtualNode* iNode) { SetValue(FSelectedNode, iNode); }
  TVirtualNode* FocusedNode() const { return FFocusedNode; }
  /// Raises OnFocusChanged.
  void SetFocusedNode(TVirtualNode* iNode);
  /// Raises no event.
  void SetExpanded(TVirtualNode& iNode, bool iExpanded);
  /// Gives the node a check box, or takes it away. Raises no event, as the next one.
  void SetHasCheckBox(TVirtualNode& iNode, bool iHasCheckBox);
  void SetChecked(TVirtualNode& iNode, bool iChecked);
  /// Expands what it stands in, as the user would, with the events.
  void ScrollIntoView(TVirtualNode& iNode);

  /// Ascending by OnCompareNodes, and stable. Only where nodes came in or were invalidated since
  /// the last time is there anything to do.
  void SortTree();
  /// The node is to be painted anew, or all of them.
  void InvalidateNode(TVirtualNode& iNode);
  void Invalidate() { Changed(); }

  /// What the node shows, asked anew on each call. -1 is no image.
  TString Text(TVirtualNode& iNode);
  TString Hint(TVirtualNode& iNode);
  int ImageIndex(TVirtualNode& iNode);
  const std::vector<TBitmap>& Images() const { return FImages; }
  void SetImages(std::vector<TBitmap> iImages) { SetValue(FImages, iImages); }
  /// Shown where the user asks for it; borrowed, null for none.
  TMenuItem* PopupMenu() const { return FPopupMenu; }
  void SetPopupMenu(TMenuItem* iMenu) { FPopupMenu = iMenu; }

  // The user reaches the nodes that are shown.
  /// The user has gone to the node, which is then selected and has the focus.
  bool FocusNode(TVirtualNode& iNode);
  /// The user expands or collapses it; false if it has no children.
  bool ExpandNode(TVirtualNode& iNode);
  bool CollapseNode(TVirtualNode& iNode);
  /// The user ticks the node's check box or clears it, by a click or the space bar, and goes to the
  /// node; false for a node without one.
  bool CheckNode(TVirtualNode& iNode);
  /// The user has clicked twice on the node, or beside all of them: goes to it, expands or
  /// collapses it, and raises OnDblClick.
  bool DoubleClick(TVirtualNode* iNode);
  /// The user asks for the menu: goes to the node and raises OnContextPopup. Then the menu can be
  /// shown.
  bool OpenPopupMenu(TVirtualNode* iNode);
  /// During the last two: the node under the pointer, null for none.
  TVirtualNode* NodeUnderPointer() const { return FNodeUnderPointer; }

  void SetOnGetText(TNodeTextEvent iEvent) { FOnGetText = iEvent; }
  void SetOnGetHint(TNodeTextEvent iEvent) { FOnGetHint = iEvent; }
  void SetOnGetImageIndex(TNodeImageEvent iEvent) { FOnGetImageIndex = iEvent; }
  void SetOnCompareNodes(TCompareNodesEvent iEvent) { FOnCompareNodes = iEvent; }
  /// FocusedNode tells where it is now.
  void SetOnFocusChanged(TNotifyEvent iEvent) { FOnFocusChanged = iEvent; }
  void SetOnExpanded(TNodeEvent iEvent) { FOnExpanded = iEvent; }
  void SetOnCollapsed(TNodeEvent iEvent) { FOnCollapsed = iEvent; }
  void SetOnChecked(TNodeEvent iEvent) { FOnChecked = iEvent; }
  void SetOnDblClick(TNotifyEvent iEvent) { FOnDblClick = iEvent; }
  void SetOnContextPopup(TNotifyEvent iEvent) { FOnContextPopup = iEvent; }

  /// Borrowed, and taken back with null before it dies.
  void SetTreeObserver(ITreeObserver* iObserver) { FTreeObserver = iObserver; }

  bool AcceptsFocus() const override { return true; }

 protected:
  bool UseKey(char16_t iKey) override;

 private:
  class TChanging;
  class TPointer;
  using TOrder = std::vector<TVirtualNode*>;

  TVirtualNode& NodeOrRoot(TVirtualNode* iNode) { return iNode != nullptr ? *iNode : FRoot; }
  TVirtualNode* NodeOrNull(TVirtualNode& iNode) { return &iNode == &FRoot ? nullptr : &iNode; }
  TVirtualNode& Put(TVirtualNode& ioParent, std::unique_ptr<TVirtualNode> iNode);
  void Enter(TVirtualNode& ioNode);
  /// Forgets the node and all below it.
  void Leave(TVirtualNode& ioNode);
  /// A parent has got its first child or lost its last.
  void TellChildren(TVirtualNode& iParent, int iCountBefore);
  void Tell(TVirtualNode& iNode);
  /// False if they stand in order.
  bool FindOrder(const TVirtualNode& iParent, TOrder& oOrder);
  void Reorder(TVirtualNode& ioParent, const TOrder& iOrder);
  void SetExpandedAndTell(TVirtualNode& iNode, bool iExpanded);
  bool Toggle(TVirtualNode& iNode, bool iExpanded);
  bool ToggleCheck(TVirtualNode& iNode);
  void GoTo(TVirtualNode& iNode);

  TVirtualNode FRoot{nullptr, nullptr};
  std::unordered_map<const TObject*, TVirtualNode*> FByObject;  // chains by FNextWithObject
  std::unordered_set<TVirtualNode*> FUnsorted;                  // parents
  int64_t FNextOrder = 0;
  int FUpdates = 0;
  TVirtualNode* FSelectedNode = nullptr;
  TVirtualNode* FFocusedNode = nullptr;
  TVirtualNode* FNodeUnderPointer = nullptr;
  TMenuItem* FPopupMenu = nullptr;
  std::vector<TBitmap> FImages;
  TNodeTextEvent FOnGetText;
  TNodeTextEvent FOnGetHint;
  TNodeImageEvent FOnGetImageIndex;
  TCompareNodesEvent FOnCompareNodes;
  TNotifyEvent FOnFocusChanged;
  TNodeEvent FOnExpanded;
  TNodeEvent FOnCollapsed;
  TNodeEvent FOnChecked;
  TNotifyEvent FOnDblClick;
  TNotifyEvent FOnContextPopup;
  ITreeObserver* FTreeObserver = nullptr;
};

}  // namespace kk
