#include "host/controls/TVirtualStringTree.h"

#include <gtest/gtest.h>

#include <random>

#include "ControlsFixture.h"
#include "host/base/Exception.h"

namespace kk {
namespace {

// What a node stands for.
struct TThing : TObject {
  explicit TThing(TStringView iName) : Name(iName) {}
  TString Name;
};

TString NameOf(const TVirtualNode& iNode) {
  const auto* thing = dynamic_cast<const TThing*>(iNode.Object());
  return thing != nullptr ? thing->Name : u"-";
}

// Gives nodes the names of their things, and notes what the user does: "focus b", "expanded a".
class TLogic {
 public:
  void GetText(TObject*, TVirtualNode& iNode, TString& oText) { oText = NameOf(iNode); }
  void GetHint(TObject*, TVirtualNode& iNode, TString& oHint) { oHint = NameOf(iNode) + u"!"; }
  void GetImage(TObject*, TVirtualNode& iNode, int& oImage) { oImage = iNode.Expanded() ? 1 : 0; }
  void Compare(TObject*, TVirtualNode& iA, TVirtualNode& iB, int& oResult) {
    ++Compares;
    oResult = CompareText(NameOf(iA), NameOf(iB));
  }
  void FocusChanged(TObject* Sender) {
    const auto* tree = dynamic_cast<TVirtualStringTree*>(Sender);
    Note("focus " + Name(tree->FocusedNode()));
    if (OnFocus) OnFocus();
  }
  void Expanded(TObject*, TVirtualNode& iNode) { Note("expanded " + Name(&iNode)); }
  void Collapsed(TObject*, TVirtualNode& iNode) { Note("collapsed " + Name(&iNode)); }
  void Checked(TObject*, TVirtualNode& iNode) {
    Note((iNode.Checked() ? "checked " : "cleared ") + Name(&iNode));
  }
  void DblClick(TObject* Sender) {
    Note("double " + Name(dynamic_cast<TVirtualStringTree*>(Sender)->NodeUnderPointer()));
  }
  void ContextPopup(TObject* Sender) {
    Note("popup " + Name(dynamic_cast<TVirtualStringTree*>(Sender)->NodeUnderPointer()));
  }
  TNotes Take() { return std::exchange(Notes, {}); }

  static std::string Name(const TVirtualNode* iNode) {
    return iNode == nullptr ? "none" : ToUtf8(NameOf(*iNode));
  }

  TNotes Notes;
  int Compares = 0;
  std::function<void()> OnFocus;

 private:
  void Note(const std::string& iWhat) { Notes.push_back(iWhat); }
};

// Keeps a copy of the tree by what it hears alone, as an item model does.
class TModel : public ITreeObserver {
 public:
  explicit TModel(TVirtualStringTree& ioTree) : FTree(ioTree) { ioTree.SetTreeObserver(this); }
  ~TModel() override { FTree.SetTreeObserver(nullptr); }
  TModel(const TModel&) = delete;
  TModel& operator=(const TModel&) = delete;

  void BeforeTreeChange(const TTreeChange& iChange) override {
    Note("before", iChange);
    EXPECT_EQ(Copy, Outline(FTree)) << "the tree has changed before it was told";
  }
  void AfterTreeChange(const TTreeChange& iChange) override {
    Note("after", iChange);
    Copy = Outline(FTree);
  }
  void NodeChanged(TVirtualNode& iNode) override { Notes.push_back("changed " + Name(iNode)); }
  void ScrollIntoView(TVirtualNode& iNode) override { Notes.push_back("scroll " + Name(iNode)); }
  TNotes Take() { return std::exchange(Notes, {}); }

  static std::string Outline(const TVirtualStringTree& iTree) { return Outline(iTree.Root()); }

  TNotes Notes;
  std::string Copy;

 private:
  static std::string Name(const TVirtualNode& iNode) { return TLogic::Name(&iNode); }
  static std::string Outline(const TVirtualNode& iParent) {
    std::string text;
    for (int row = 0; row < iParent.GetCount(); ++row) {
      TVirtualNode& node = iParent.GetItems(row);
      EXPECT_EQ(node.Row(), row);
      text += Name(node) + (node.GetCount() > 0 ? "(" + Outline(node) + ")" : "");
    }
    return text;
  }
  void Note(const std::string& iWhen, const TTreeChange& iChange) {
    const auto at = [](const TVirtualNode* iParent, int iRow) {
      return " " + (iParent == nullptr ? "top" : Name(*iParent)) + "/" + std::to_string(iRow);
    };
    using enum TTreeChange::TKind;
    std::string note = iWhen;
    if (iChange.Kind == tcReset) note += " reset";
    if (iChange.Kind == tcSort) note += " sort";
    if (iChange.Kind == tcInsert) note += " insert" + at(iChange.Parent, iChange.Row);
    if (iChange.Kind == tcRemove) note += " remove" + at(iChange.Parent, iChange.Row);
    if (iChange.Kind == tcMove) {
      note += " move" + at(iChange.Parent, iChange.Row) + at(iChange.NewParent, iChange.NewRow);
    }
    Notes.push_back(note);
  }

  TVirtualStringTree& FTree;
};

// a(b c(d)) e
struct TVirtualStringTreeTest : testing::Test {
  TVirtualStringTreeTest() {
    Tree.SetOnGetText(TNodeTextEvent::Of<&TLogic::GetText>(&Logic));
    Tree.SetOnGetHint(TNodeTextEvent::Of<&TLogic::GetHint>(&Logic));
    Tree.SetOnGetImageIndex(TNodeImageEvent::Of<&TLogic::GetImage>(&Logic));
    Tree.SetOnCompareNodes(TCompareNodesEvent::Of<&TLogic::Compare>(&Logic));
    Tree.SetOnFocusChanged(TNotifyEvent::Of<&TLogic::FocusChanged>(&Logic));
    Tree.SetOnExpanded(TNodeEvent::Of<&TLogic::Expanded>(&Logic));
    Tree.SetOnCollapsed(TNodeEvent::Of<&TLogic::Collapsed>(&Logic));
    Tree.SetOnDblClick(TNotifyEvent::Of<&TLogic::DblClick>(&Logic));
    Tree.SetOnChecked(TNodeEvent::Of<&TLogic::Checked>(&Logic));
    Tree.SetOnContextPopup(TNotifyEvent::Of<&TLogic::ContextPopup>(&Logic));
    Model.Copy = TModel::Outline(Tree);
  }
  TVirtualNode& Node(TObject& iThing) { return *Tree.FindByObject(&iThing); }
  std::string Outline() const { return TModel::Outline(Tree); }

  TLogic Logic;
  TShownForm Form;
  TVirtualStringTree Tree{&Form, u"vst"};
  TThing A{u"a"}, B{u"b"}, C{u"c"}, D{u"d"}, E{u"e"}, F{u"f"};
  TVirtualNode& NodeA = Tree.AddChild(nullptr, &A);
  TVirtualNode& NodeB = Tree.AddChild(&NodeA, &B);
  TVirtualNode& NodeC = Tree.AddChild(&NodeA, &C);
  TVirtualNode& NodeD = Tree.AddChild(&NodeC, &D);
  TVirtualNode& NodeE = Tree.AddChild(nullptr, &E);
  TModel Model{Tree};
};

TEST_F(TVirtualStringTreeTest, NodesStandInTheOrderOfTheirComing) {
  EXPECT_EQ(Outline(), "a(bc(d))e");
  EXPECT_EQ(NodeA.Parent(), nullptr);
  EXPECT_EQ(NodeD.Parent(), &NodeC);
  EXPECT_EQ(NodeA.FirstChild(), &NodeB);
  EXPECT_EQ(NodeD.FirstChild(), nullptr);
  EXPECT_EQ(NodeA.NextSibling(), &NodeE);
  EXPECT_EQ(NodeC.NextSibling(), nullptr);
  EXPECT_EQ(NodeC.Row(), 1);
  EXPECT_EQ(NodeC.Object(), &C);
  EXPECT_THROW(NodeA.GetItems(2), EListError);
}

TEST_F(TVirtualStringTreeTest, IsWalkedDepthFirstWhetherOrNotNodesAreExpanded) {
  std::string names;
  for (TVirtualNode* node = Tree.First(); node != nullptr; node = node->Next()) {
    names += TLogic::Name(node);
  }
  EXPECT_EQ(names, "abcde");
  EXPECT_EQ(TVirtualStringTree(nullptr).First(), nullptr);
}

TEST_F(TVirtualStringTreeTest, KnowsWhatStandsBelowWhat) {
  EXPECT_TRUE(NodeD.IsIn(NodeA));
  EXPECT_TRUE(NodeA.IsIn(NodeA));
  EXPECT_FALSE(NodeA.IsIn(NodeD));
  EXPECT_FALSE(NodeE.IsIn(NodeA));
}

TEST_F(TVirtualStringTreeTest, TellsOfAnInsertBeforeAndAfter) {
  Tree.AddChild(&NodeA, &F);
  EXPECT_EQ(Model.Take(), (TNotes{"before insert a/2", "after insert a/2"}));
  Tree.AddChild(nullptr, nullptr);
  EXPECT_EQ(Model.Take(), (TNotes{"before insert top/2", "after insert top/2"}));
  EXPECT_EQ(Outline(), "a(bc(d)f)e-");
}

TEST_F(TVirtualStringTreeTest, AParentLooksOtherwiseWithItsFirstChildAndWithoutItsLast) {
  TVirtualNode& added = Tree.AddChild(&NodeE, &F);
  EXPECT_EQ(Model.Take(), (TNotes{"before insert e/0", "after insert e/0", "changed e"}));
  Tree.DeleteNode(added);
  EXPECT_EQ(Model.Take(), (TNotes{"before remove e/0", "after remove e/0", "changed e"}));
}

TEST_F(TVirtualStringTreeTest, ANodeGoesWithAllBelowIt) {
  Tree.DeleteNode(NodeC);
  EXPECT_EQ(Model.Take(), (TNotes{"before remove a/1", "after remove a/1"}));
  EXPECT_EQ(Outline(), "a(b)e");
  EXPECT_EQ(Tree.FindByObject(&D), nullptr);
  EXPECT_EQ(Tree.FindByObject(&C), nullptr);
}

TEST_F(TVirtualStringTreeTest, ANodeMovesToTheEndOfOthersWithAllBelowIt) {
  Tree.MoveTo(NodeC, &NodeE);
  EXPECT_EQ(Model.Take(), (TNotes{"before move a/1 e/0", "after move a/1 e/0", "changed e"}));
  EXPECT_EQ(Outline(), "a(b)e(c(d))");
  EXPECT_EQ(Tree.FindByObject(&C), &NodeC);
  Tree.MoveTo(NodeB, nullptr);
  EXPECT_EQ(Model.Take(), (TNotes{"before move a/0 top/2", "after move a/0 top/2", "changed a"}));
  EXPECT_EQ(Outline(), "ae(c(d))b");
}

TEST_F(TVirtualStringTreeTest, AMoveAmongSiblingsGoesToTheirEnd) {
  Tree.MoveTo(NodeC, &NodeA);
  EXPECT_EQ(Model.Take(), TNotes{}) << "it stands there already";
  Tree.MoveTo(NodeB, &NodeA);
  EXPECT_EQ(Model.Take(), (TNotes{"before move a/0 a/2", "after move a/0 a/2"}));
  EXPECT_EQ(Outline(), "a(c(d)b)e");
}

TEST_F(TVirtualStringTreeTest, ANodeCanNotMoveIntoItself) {
  EXPECT_THROW(Tree.MoveTo(NodeA, &NodeD), Exception);
  EXPECT_THROW(Tree.MoveTo(NodeA, &NodeA), Exception);
  EXPECT_EQ(Outline(), "a(bc(d))e");
  EXPECT_EQ(Model.Take(), TNotes{});
}

TEST_F(TVirtualStringTreeTest, ManyChangesInOneAreToldAsOne) {
  TSkinRecorder skin;
  Tree.SetObserver(&skin);
  {
    const TVirtualStringTree::TUpdate update(Tree);
    const TVirtualStringTree::TUpdate inner(Tree);
    Tree.DeleteNode(NodeE);
    Tree.AddChild(&NodeD, &F);
    Tree.InvalidateNode(NodeB);
    EXPECT_EQ(skin.Take(), TNotes{});
  }
  EXPECT_EQ(Model.Take(), (TNotes{"before reset", "after reset"}));
  EXPECT_EQ(skin.Take(), TNotes{"changed vst"});
  EXPECT_EQ(Model.Copy, "a(bc(d(f)))");
  Tree.SetObserver(nullptr);
}

TEST_F(TVirtualStringTreeTest, EveryChangeOfTheNodesRepaints) {
  TSkinRecorder skin;
  Tree.SetObserver(&skin);
  Tree.AddChild(nullptr, &F);
  Tree.MoveTo(NodeB, nullptr);
  Tree.DeleteNode(NodeE);
  EXPECT_EQ(skin.Take(), TNotes(3, "changed vst"));
  Tree.Invalidate();
  EXPECT_EQ(skin.Take(), TNotes{"changed vst"});
  Tree.SetImages({{u"ZU"}, {u"AUF"}});
  EXPECT_EQ(skin.Take(), TNotes{"changed vst"});
  EXPECT_EQ(Tree.Images()[1].ResourceName, u"AUF");
  Tree.SetObserver(nullptr);
}

TEST_F(TVirtualStringTreeTest, AClearedTreeHasNoSelectionAndRaisesNothing) {
  Tree.FocusNode(NodeE);
  Logic.Take();
  Tree.Clear();
  EXPECT_EQ(Model.Take(), (TNotes{"before reset", "after reset"}));
  EXPECT_EQ(Logic.Take(), TNotes{});
  EXPECT_EQ(Tree.SelectedNode(), nullptr);
  EXPECT_EQ(Tree.FocusedNode(), nullptr);
  EXPECT_EQ(Tree.FindByObject(&A), nullptr);
  Tree.Clear();
  EXPECT_EQ(Model.Take(), TNotes{});
  Tree.AddChild(nullptr, &A);
  Tree.SortTree();
  EXPECT_EQ(Outline(), "a");
}

TEST_F(TVirtualStringTreeTest, OfSeveralNodesOfAnObjectTheFirstOneShownIsFound) {
  TVirtualNode& last = Tree.AddChild(&NodeE, &B);
  EXPECT_EQ(Tree.FindByObject(&B), &NodeB);
  Tree.MoveTo(NodeA, nullptr);
  EXPECT_EQ(Tree.FindByObject(&B), &last);
  Tree.DeleteNode(last);
  EXPECT_EQ(Tree.FindByObject(&B), &NodeB);
  TVirtualNode& parent = Tree.AddChild(nullptr, &F);
  Tree.AddChild(&parent, &F);
  EXPECT_EQ(Tree.FindByObject(&F), &parent);
  EXPECT_EQ(Tree.FindByObject(nullptr), nullptr);
  TVirtualNode& empty = Tree.AddChild(nullptr, nullptr);
  EXPECT_EQ(Tree.FindByObject(nullptr), &empty);
}

TEST_F(TVirtualStringTreeTest, AsksForWhatANodeShowsEachTime) {
  EXPECT_EQ(Tree.Text(NodeB), u"b");
  EXPECT_EQ(Tree.Hint(NodeB), u"b!");
  B.Name = u"x";
  EXPECT_EQ(Tree.Text(NodeB), u"x");
  EXPECT_EQ(Tree.ImageIndex(NodeA), 0);
  Tree.SetExpanded(NodeA, true);
  EXPECT_EQ(Tree.ImageIndex(NodeA), 1);
}

TEST_F(TVirtualStringTreeTest, ShowsNothingWithoutEvents) {
  TVirtualStringTree tree(&Form);
  TVirtualNode& node = tree.AddChild(nullptr, &A);
  TMenuItem menu;
  tree.SetPopupMenu(&menu);
  EXPECT_EQ(tree.Text(node), u"");
  EXPECT_EQ(tree.Hint(node), u"");
  EXPECT_EQ(tree.ImageIndex(node), -1);
  tree.AddChild(nullptr, &B);
  tree.SortTree();
  tree.InvalidateNode(node);
  tree.ScrollIntoView(node);
  EXPECT_TRUE(tree.DoubleClick(&node));
  EXPECT_TRUE(tree.OpenPopupMenu(nullptr));
  tree.DeleteNode(node);
  EXPECT_EQ(tree.FocusedNode()->Object(), &B);
}

TEST_F(TVirtualStringTreeTest, TheUserSelectsAndFocusesOneNode) {
  EXPECT_TRUE(Tree.FocusNode(NodeA));
  EXPECT_EQ(Tree.SelectedNode(), &NodeA);
  EXPECT_EQ(Tree.FocusedNode(), &NodeA);
  EXPECT_FALSE(Tree.FocusNode(NodeA));
  EXPECT_TRUE(Tree.FocusNode(NodeE));
  EXPECT_EQ(Tree.SelectedNode(), &NodeE);
  EXPECT_EQ(Logic.Take(), (TNotes{"focus a", "focus e"}));
}

TEST_F(TVirtualStringTreeTest, TheProgramSelectsSilentlyAndFocusesWithTheEvent) {
  Tree.SetSelectedNode(&NodeD);
  EXPECT_EQ(Logic.Take(), TNotes{});
  EXPECT_EQ(Tree.FocusedNode(), nullptr);
  Tree.SetFocusedNode(&NodeD);
  Tree.SetFocusedNode(&NodeD);
  Tree.SetFocusedNode(nullptr);
  EXPECT_EQ(Logic.Take(), (TNotes{"focus d", "focus none"}));
  EXPECT_EQ(Tree.SelectedNode(), &NodeD);
}

TEST_F(TVirtualStringTreeTest, TheUserReachesNoNodeInACollapsedOne) {
  TMenuItem menu;
  Tree.SetPopupMenu(&menu);
  EXPECT_FALSE(NodeB.IsShown());
  EXPECT_FALSE(Tree.FocusNode(NodeB));
  EXPECT_FALSE(Tree.ExpandNode(NodeC));
  EXPECT_FALSE(Tree.DoubleClick(&NodeB));
  EXPECT_FALSE(Tree.OpenPopupMenu(&NodeB));
  EXPECT_EQ(Logic.Take(), TNotes{});
  Tree.SetExpanded(NodeA, true);
  EXPECT_TRUE(NodeB.IsShown());
  EXPECT_FALSE(NodeD.IsShown());
  EXPECT_TRUE(Tree.FocusNode(NodeB));
}

TEST_F(TVirtualStringTreeTest, ADisabledTreeTakesNothingFromTheUser) {
  TMenuItem menu;
  Tree.SetPopupMenu(&menu);
  Tree.SetEnabled(false);
  EXPECT_FALSE(Tree.FocusNode(NodeA));
  EXPECT_FALSE(Tree.ExpandNode(NodeA));
  EXPECT_FALSE(Tree.CollapseNode(NodeA));
  EXPECT_FALSE(Tree.DoubleClick(&NodeA));
  EXPECT_FALSE(Tree.OpenPopupMenu(&NodeA));
  EXPECT_EQ(Logic.Take(), TNotes{});
}

TEST_F(TVirtualStringTreeTest, TheUserExpandsAndCollapsesWhatHasChildren) {
  EXPECT_TRUE(Tree.ExpandNode(NodeA));
  EXPECT_TRUE(NodeA.Expanded());
  EXPECT_EQ(Model.Take(), TNotes{"changed a"});
  EXPECT_FALSE(Tree.ExpandNode(NodeA));
  EXPECT_TRUE(Tree.CollapseNode(NodeA));
  EXPECT_FALSE(Tree.CollapseNode(NodeA));
  EXPECT_FALSE(Tree.ExpandNode(NodeE)) << "it has no children";
  EXPECT_EQ(Logic.Take(), (TNotes{"expanded a", "collapsed a"}));
}

TEST_F(TVirtualStringTreeTest, TheProgramExpandsWithoutAnEvent) {
  Tree.SetExpanded(NodeA, true);
  Tree.SetExpanded(NodeA, true);
  EXPECT_TRUE(NodeA.Expanded());
  EXPECT_EQ(Logic.Take(), TNotes{});
  EXPECT_EQ(Model.Take(), TNotes{"changed a"});
}

TEST_F(TVirtualStringTreeTest, AChildlessNodeExpandsWhenItGetsChildren) {
  Tree.SetExpanded(NodeE, true);
  EXPECT_FALSE(NodeE.Expanded());
  EXPECT_EQ(Model.Take(), TNotes{});
  Tree.AddChild(&NodeE, &F);
  EXPECT_TRUE(NodeE.Expanded());
}

TEST_F(TVirtualStringTreeTest, ScrollingToANodeExpandsWhatItStandsIn) {
  Tree.ScrollIntoView(NodeD);
  EXPECT_EQ(Logic.Take(), (TNotes{"expanded c", "expanded a"}));
  EXPECT_EQ(Model.Take(), (TNotes{"changed c", "changed a", "scroll d"}));
  EXPECT_TRUE(NodeD.IsShown());
  Tree.ScrollIntoView(NodeD);
  EXPECT_EQ(Logic.Take(), TNotes{});
}

TEST_F(TVirtualStringTreeTest, ADoubleClickTogglesANodeWithChildrenAndRaisesTheEvent) {
  EXPECT_TRUE(Tree.DoubleClick(&NodeA));
  EXPECT_EQ(Logic.Take(), (TNotes{"focus a", "expanded a", "double a"}));
  EXPECT_TRUE(Tree.DoubleClick(&NodeB));
  EXPECT_EQ(Logic.Take(), (TNotes{"focus b", "double b"}));
  EXPECT_TRUE(Tree.DoubleClick(&NodeA));
  EXPECT_EQ(Logic.Take(), (TNotes{"focus a", "collapsed a", "double a"}));
  EXPECT_TRUE(Tree.DoubleClick(nullptr));
  EXPECT_EQ(Logic.Take(), TNotes{"double none"});
  EXPECT_EQ(Tree.NodeUnderPointer(), nullptr) << "the click is over";
}

TEST_F(TVirtualStringTreeTest, ADoubleClickSurvivesTheDeathOfItsNode) {
  Logic.OnFocus = [this] {
    if (Tree.FocusedNode() == &NodeA) Tree.DeleteNode(NodeA);
  };
  EXPECT_TRUE(Tree.DoubleClick(&NodeA));
  EXPECT_EQ(Logic.Take(), (TNotes{"focus a", "focus e", "double none"}));
}

TEST_F(TVirtualStringTreeTest, ARightClickSelectsTheNodeBeforeTheMenuOpens) {
  EXPECT_FALSE(Tree.OpenPopupMenu(&NodeE)) << "there is no menu";
  TMenuItem menu;
  Tree.SetPopupMenu(&menu);
  EXPECT_EQ(Tree.PopupMenu(), &menu);
  EXPECT_TRUE(Tree.OpenPopupMenu(&NodeE));
  EXPECT_EQ(Logic.Take(), (TNotes{"focus e", "popup e"}));
  EXPECT_TRUE(Tree.OpenPopupMenu(nullptr));
  EXPECT_EQ(Logic.Take(), TNotes{"popup none"});
  EXPECT_EQ(Tree.SelectedNode(), &NodeE);
}

TEST_F(TVirtualStringTreeTest, ADeletedNodeHandsSelectionAndFocusOn) {
  Tree.SetExpanded(NodeA, true);
  Tree.FocusNode(NodeB);
  Logic.Take();
  Tree.DeleteNode(NodeB);
  EXPECT_EQ(Tree.SelectedNode(), &NodeC) << "the next one";
  Tree.AddChild(&NodeA, &F);
  Tree.FocusNode(Node(F));
  Tree.DeleteNode(Node(F));
  EXPECT_EQ(Tree.SelectedNode(), &NodeC) << "the one before";
  Tree.DeleteNode(NodeC);
  EXPECT_EQ(Tree.SelectedNode(), &NodeA) << "the parent";
  Tree.FocusNode(NodeE);
  Tree.DeleteNode(NodeE);
  Tree.DeleteNode(NodeA);
  EXPECT_EQ(Tree.SelectedNode(), nullptr);
  EXPECT_EQ(Logic.Take(), (TNotes{"focus c", "focus f", "focus c", "focus a", "focus e", "focus a",
                                  "focus none"}));
}

TEST_F(TVirtualStringTreeTest, FocusBelowADeletedNodeGoesToTheDeletedOnesNeighbour) {
  Tree.SetFocusedNode(&NodeD);
  Logic.Take();
  Tree.DeleteNode(NodeA);
  EXPECT_EQ(Logic.Take(), TNotes{"focus e"});
  EXPECT_EQ(Tree.SelectedNode(), nullptr) << "nothing was selected";
}

TEST_F(TVirtualStringTreeTest, TheDeathOfOtherNodesLeavesTheFocus) {
  Tree.FocusNode(NodeA);
  Logic.Take();
  Tree.DeleteNode(NodeB);
  Tree.DeleteNode(NodeE);
  EXPECT_EQ(Tree.FocusedNode(), &NodeA);
  EXPECT_EQ(Logic.Take(), TNotes{});
}

TEST_F(TVirtualStringTreeTest, AMovedNodeKeepsTheFocus) {
  Tree.SetFocusedNode(&NodeB);
  Logic.Take();
  Tree.MoveTo(NodeB, nullptr);
  EXPECT_EQ(Tree.FocusedNode(), &NodeB);
  EXPECT_EQ(Logic.Take(), TNotes{});
}

TEST_F(TVirtualStringTreeTest, SortsEveryLevelAscending) {
  A.Name = u"z";
  B.Name = u"y";
  Tree.InvalidateNode(NodeA);
  Tree.InvalidateNode(NodeB);
  EXPECT_EQ(Model.Take(), (TNotes{"changed z", "changed y"}));
  Model.Copy = Outline();
  Tree.SortTree();
  EXPECT_EQ(Outline(), "ez(c(d)y)");
  EXPECT_EQ(Model.Take(), (TNotes{"before sort", "after sort"}));
  EXPECT_EQ(Tree.FindByObject(&B), &NodeB);
}

TEST_F(TVirtualStringTreeTest, WhatStandsInOrderIsNotSorted) {
  Tree.SortTree();
  EXPECT_EQ(Model.Take(), TNotes{});
  Logic.Compares = 0;
  Tree.SortTree();
  EXPECT_EQ(Logic.Compares, 0) << "nothing has come in since";
  Tree.AddChild(&NodeC, &F);
  Tree.SortTree();
  EXPECT_EQ(Logic.Compares, 1) << "other levels have not changed";
}

TEST_F(TVirtualStringTreeTest, SortingKeepsTheOrderOfEquals) {
  TThing x(u"B");
  TThing y(u"b");
  TThing early(u"a");
  Tree.AddChild(&NodeA, &x);
  Tree.AddChild(&NodeA, &y);
  Tree.AddChild(&NodeA, &early);
  Tree.SortTree();
  EXPECT_EQ(Outline(), "a(abBbc(d))e");
  EXPECT_EQ(NodeA.GetItems(1).Object(), &B);
  EXPECT_EQ(NodeA.GetItems(3).Object(), &y);
}

TEST_F(TVirtualStringTreeTest, AMovedNodeIsSortedInAtItsNewPlace) {
  Tree.SortTree();
  Tree.MoveTo(NodeB, nullptr);
  Tree.SortTree();
  EXPECT_EQ(Outline(), "a(c(d))be");
}

TEST_F(TVirtualStringTreeTest, ADeletedLevelIsNotSorted) {
  TThing a(u"a");
  Tree.AddChild(&NodeC, &a);
  Tree.DeleteNode(NodeC);
  Tree.SortTree();
  EXPECT_EQ(Outline(), "a(b)e");
}

TEST_F(TVirtualStringTreeTest, AcceptsTheFocusOfItsForm) {
  EXPECT_TRUE(Tree.TakeFocus());
  EXPECT_EQ(Form.FocusedControl(), &Tree);
}

TEST_F(TVirtualStringTreeTest, ANodeHasNoCheckBoxUntilItIsGivenOne) {
  EXPECT_FALSE(NodeA.HasCheckBox());
  EXPECT_FALSE(Tree.CheckNode(NodeA));
  EXPECT_FALSE(NodeA.Checked());
}

TEST_F(TVirtualStringTreeTest, TheUserTicksACheckBoxAndGoesToItsNode) {
  Tree.SetHasCheckBox(NodeA, true);
  EXPECT_TRUE(Tree.CheckNode(NodeA));
  EXPECT_TRUE(NodeA.Checked());
  EXPECT_EQ(Tree.SelectedNode(), &NodeA);
  EXPECT_EQ(Logic.Take(), (TNotes{"focus a", "checked a"}));
  EXPECT_TRUE(Tree.PressKey(cKeySpace));
  EXPECT_FALSE(NodeA.Checked());
  EXPECT_EQ(Logic.Take(), TNotes{"cleared a"});
}

TEST_F(TVirtualStringTreeTest, TheProgramTicksACheckBoxWithoutAnEvent) {
  Tree.SetHasCheckBox(NodeA, true);
  Tree.SetChecked(NodeA, true);
  EXPECT_TRUE(NodeA.Checked());
  EXPECT_TRUE(Logic.Take().empty());
}

TEST_F(TVirtualStringTreeTest, ACheckBoxInADisabledTreeOrACollapsedNodeIsOutOfReach) {
  Tree.SetHasCheckBox(NodeB, true);
  Tree.SetExpanded(NodeA, false);
  EXPECT_FALSE(Tree.CheckNode(NodeB));
  Tree.SetHasCheckBox(NodeA, true);
  Tree.SetEnabled(false);
  EXPECT_FALSE(Tree.CheckNode(NodeA));
  EXPECT_FALSE(NodeA.Checked() || NodeB.Checked());
}

// Against the plain walk, over many changes in an order that is the same at every run.
TEST(TVirtualStringTree, FindsAndCountsAsAPlainWalkDoes) {
  TLogic logic;
  TVirtualStringTree tree(nullptr, u"vst");
  tree.SetOnCompareNodes(TCompareNodesEvent::Of<&TLogic::Compare>(&logic));
  TModel model(tree);
  std::vector<std::unique_ptr<TThing>> things;
  for (int i = 0; i < 12; ++i) things.push_back(std::make_unique<TThing>(IntToStr(i)));
  std::mt19937 random(4711);
  const auto below = [&random](size_t iLimit) { return random() % iLimit; };
  const auto nodes = [&tree] {
    std::vector<TVirtualNode*> all{nullptr};
    for (auto* node = tree.First(); node != nullptr; node = node->Next()) all.push_back(node);
    return all;
  };
  for (int step = 0; step < 600; ++step) {
    const std::vector<TVirtualNode*> all = nodes();
    TVirtualNode* const one = all[below(all.size())];
    TVirtualNode* const other = all[below(all.size())];
    switch (below(5)) {
      case 0:
        if (one != nullptr) tree.DeleteNode(*one);
        break;
      case 1:
        if (one != nullptr && (other == nullptr || !other->IsIn(*one))) tree.MoveTo(*one, other);
        break;
      case 2:
        tree.SortTree();
        break;
      default:
        tree.AddChild(one, things[below(things.size())].get());
    }
    ASSERT_EQ(model.Copy, TModel::Outline(tree));
    for (const auto& thing : things) {
      TVirtualNode* node = tree.First();
      while (node != nullptr && node->Object() != thing.get()) node = node->Next();
      ASSERT_EQ(tree.FindByObject(thing.get()), node) << "after step " << step;
    }
  }
}

}  // namespace
}  // namespace kk
