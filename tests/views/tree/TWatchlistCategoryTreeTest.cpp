#include "views/tree/TWatchlistCategoryTree.h"

#include "TTreeWorld.h"

namespace kk {
namespace {

using TWatchlistCategoryTreeTest = TTreeTest;

TEST_F(TWatchlistCategoryTreeTest, StandsInAPaneWithButtons) {
  EXPECT_EQ(Pane->pnlCategories.Caption(), u"Kategorien");
  EXPECT_EQ(Pane->pnlCategories.MinWidth(), 100);
  EXPECT_TRUE(Pane->pnlCategories.HasSplitter());
  EXPECT_EQ(Pane->btnNewGroup.Caption(), u"Neu");
  EXPECT_EQ(Pane->btnDeleteGroup.Caption(), u"Löschen");
  EXPECT_EQ(Pane->btnRenameGroup.Caption(), u"Bearbeiten");
  EXPECT_FALSE(Pane->btnNewGroup.Click()) << "nothing has the focus yet";
}

TEST_F(TWatchlistCategoryTreeTest, ShowsTheModelSortedByKindAndName) {
  TWatchlistCategory& digit = Category(u" 1");
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistCategory& albums = Category(u"alben");
  Item(books, Shop, u"b");
  Item(books, Shop, u"A");
  Item(books, Auction, u"c");
  Category(u"Romane", &books);
  Build();
  EXPECT_EQ(Outline(), (TLines{"<Keiner Kategorie zugewiesen>", " 1", "alben", "Bücher", "  Romane",
                               "  Auktion", "    c", "  Laden", "    A", "    b"}));
  EXPECT_EQ(View().First()->Object(), &Unassigned());
  EXPECT_EQ(Pane->GetNodeByObj(&digit)->Row(), 1);
  EXPECT_EQ(Pane->GetNodeByObj(&albums)->Row(), 2);
}

TEST_F(TWatchlistCategoryTreeTest, ASortGoesByTheNamesOfThen) {
  TWatchlistCategory& a = Category(u"a");
  Category(u"b");
  Build();
  a.SetName(u"c");
  Pane->RepaintNode(a);
  EXPECT_EQ(Outline()[1], "c") << "a new name alone sorts nothing";
  Pane->SortTree();
  EXPECT_EQ(Outline()[2], "c");
}

TEST_F(TWatchlistCategoryTreeTest, NodesAreExpandedAsTheModelSays) {
  TWatchlistCategory& books = Category(u"Bücher");
  Item(books, Shop, u"Roman");
  Item(Unassigned(), Shop, u"Uhr");
  TWatchlistCategory& empty = Category(u"leer");
  books.SetExpanded(true);
  empty.SetExpanded(true);
  Group(Unassigned(), Shop).SetExpanded(true);
  Build();
  EXPECT_TRUE(Node(books).Expanded());
  EXPECT_FALSE(Node(Group(books, Shop)).Expanded()) << "as after a load";
  EXPECT_FALSE(Node(Unassigned()).Expanded());
  EXPECT_TRUE(Node(Group(Unassigned(), Shop)).Expanded());
  EXPECT_FALSE(Node(empty).Expanded());
  EXPECT_TRUE(empty.Expanded()) << "the flag is not lost";
}

TEST_F(TWatchlistCategoryTreeTest, TheModelKeepsWhatTheUserExpands) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistItem& item = Item(books, Shop, u"Roman");
  Build();
  GoTo(item);
  EXPECT_TRUE(books.Expanded());
  EXPECT_TRUE(Group(books, Shop).Expanded());
  View().CollapseNode(Node(Group(books, Shop)));
  View().CollapseNode(Node(books));
  EXPECT_FALSE(books.Expanded());
  EXPECT_FALSE(Group(books, Shop).Expanded());
  EXPECT_EQ(Flags(Shop), "-") << "nothing is marked for the next save";
}

TEST_F(TWatchlistCategoryTreeTest, NodesAreFoundByTheirVeryObject) {
  TWatchlistCategory& books = Category(u"Bücher");
  Build();
  EXPECT_EQ(Pane->GetNodeByObj(&books)->Object(), &books);
  EXPECT_EQ(Pane->GetNodeByObj(nullptr), nullptr);
  const TWatchlistCategory other;
  EXPECT_EQ(Pane->GetNodeByObj(&other), nullptr);
}

TEST_F(TWatchlistCategoryTreeTest, TheSelectionKnowsItsCategory) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistItem& item = Item(books, Shop, u"Roman");
  Build();
  EXPECT_EQ(Pane->GetSelectedNode(), nullptr);
  EXPECT_EQ(Pane->GetCategoryFromSelectedNode(), nullptr);
  GoTo(item);
  EXPECT_EQ(Pane->GetSelectedNode(), &Node(item));
  EXPECT_EQ(Pane->GetCategoryFromSelectedNode(), &books);
}

TEST_F(TWatchlistCategoryTreeTest, ButtonsFollowTheMenu) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistItem& item = Item(books, Shop, u"Roman");
  Build();
  const auto enabled = [this] {
    return std::string(Pane->btnNewGroup.Enabled() ? "N" : "") +
           (Pane->btnDeleteGroup.Enabled() ? "D" : "") +
           (Pane->btnRenameGroup.Enabled() ? "E" : "");
  };
  EXPECT_EQ(enabled(), "") << "with nothing focused";
  EXPECT_TRUE(Pane->Menu.mntmAddCategoryRoot.Enabled());
  GoTo(Unassigned());
  EXPECT_EQ(enabled(), "N");
  GoTo(books);
  EXPECT_EQ(enabled(), "NDE");
  GoTo(item);
  EXPECT_EQ(enabled(), "DE");
  GoTo(Group(books, Shop));
  EXPECT_EQ(enabled(), "ND");
  Pane->vstCategories.SetFocusedNode(nullptr);
  EXPECT_EQ(enabled(), "");
  Pane->vstCategories.SetFocusedNode(&View().AddChild(nullptr, nullptr));
  EXPECT_EQ(enabled(), "N") << "a new category can stand at the top level";
}

TEST_F(TWatchlistCategoryTreeTest, ARebuildWithoutTheFlagForgetsTheSelection) {
  Build();
  GoTo(Unassigned());
  Panes.Take();
  Pane->BuildCategoriesTree(false);
  EXPECT_EQ(Pane->GetSelectedNode(), nullptr);
  EXPECT_EQ(View().FocusedNode(), nullptr);
  EXPECT_EQ(Panes.Take(), TLines{}) << "the other panes are not touched";
  EXPECT_FALSE(Pane->btnNewGroup.Enabled());
}

TEST_F(TWatchlistCategoryTreeTest, ARebuildIsToldAsOneChange) {
  struct TModel : ITreeObserver {
    void BeforeTreeChange(const TTreeChange& iChange) override { Changes.push_back(iChange); }
    void AfterTreeChange(const TTreeChange&) override {}
    void NodeChanged(TVirtualNode&) override {}
    void ScrollIntoView(TVirtualNode&) override {}
    std::vector<TTreeChange> Changes;
  } model;
  for (int i = 0; i < 20; ++i) Item(Category(IntToStr(20 - i)), Shop, u"Uhr");
  View().SetTreeObserver(&model);
  Build();
  EXPECT_EQ(model.Changes, std::vector<TTreeChange>{TTreeChange{}});
  View().SetTreeObserver(nullptr);
}

TEST_F(TWatchlistCategoryTreeTest, ARebuildThatKeepsTheSelectionSelectsItemsByTheirGroup) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistItem& item = Item(books, Shop, u"Roman");
  Build();
  GoTo(item);
  Panes.Take();
  Pane->BuildCategoriesTree(true);
  EXPECT_EQ(Pane->GetSelectedNode(), &Node(item));
  EXPECT_EQ(View().FocusedNode(), &Node(item));
  EXPECT_EQ(Panes.Take(), (TLines{"Category none", "HideAll",      // emptied first
                                  "Category Bücher +", "HideAll",  // by the group
                                  "BeginAdd", "Show Laden", "EndAdd", "Restore", "Select Laden"}));
}

TEST_F(TWatchlistCategoryTreeTest, ARebuildThatKeepsTheSelectionReloadsLists) {
  TWatchlistCategory& books = Category(u"Bücher");
  Item(books, Shop, u"Roman");
  Build();
  GoTo(books);
  Shop->ViewCalls().clear();
  Pane->BuildCategoriesTree(true);
  EXPECT_EQ(Shop->ViewCalls(), TLines{"SetResults 1"});
  EXPECT_EQ(Pane->GetSelectedNode(), &Node(books));
}

TEST_F(TWatchlistCategoryTreeTest, ASelectionThatIsGoneIsNotKept) {
  TWatchlistCategory& books = Category(u"Bücher");
  Build();
  GoTo(books);
  Panes.Take();
  Tree().DeleteCategory(books);
  Pane->BuildCategoriesTree(true);
  EXPECT_EQ(Pane->GetSelectedNode(), nullptr);
  EXPECT_EQ(Panes.Take(), (TLines{"Category none", "HideAll"}));
}

TEST_F(TWatchlistCategoryTreeTest, AFailureOfAListLeavesNoNodeOfADeadObject) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistPlugin& group = Group(books, Shop);
  Build();
  Tree().DeletePlugin(group);
  Panes.FailsAt = "HideAll";
  EXPECT_THROW(Pane->BuildCategoriesTree(true), Exception);
  EXPECT_EQ(Outline(), (TLines{"<Keiner Kategorie zugewiesen>", "Bücher"}));
}

TEST_F(TWatchlistCategoryTreeTest, ANodeIsAddedWithAllBelowItAndSelectedOnDemand) {
  TWatchlistCategory& books = Category(u"Bücher");
  Build();
  TWatchlistCategory& novels = Category(u"Romane", &books);
  Item(novels, Shop, u"Faust");
  TVirtualNode& node = Pane->AddCategoryToTree(&Node(books), novels);
  EXPECT_EQ(Outline(), (TLines{"<Keiner Kategorie zugewiesen>", "Bücher", "  Romane", "    Laden",
                               "      Faust"}));
  Pane->SelectNode(node);
  EXPECT_EQ(Pane->GetSelectedNode(), &node);
  EXPECT_TRUE(node.IsShown()) << "what it stands in is opened";
  EXPECT_TRUE(books.Expanded());
  EXPECT_EQ(Pane->CurrentCategory(), &novels);
}

TEST_F(TWatchlistCategoryTreeTest, NodesMoveAndLeaveTheModelAlone) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistCategory& albums = Category(u"Alben");
  TWatchlistItem& item = Item(books, Shop, u"Roman");
  TWatchlistPlugin& target = Group(albums, Shop);
  Build();
  Pane->MoveNode(item, &target);
  Pane->MoveNode(books, &albums);
  EXPECT_EQ(Outline(), (TLines{"<Keiner Kategorie zugewiesen>", "Alben", "  Laden", "    Roman",
                               "  Bücher", "    Laden"}));
  Pane->SortTree();
  EXPECT_EQ(Outline()[2], "  Bücher") << "categories above groups";
  Pane->MoveNode(books, nullptr);
  EXPECT_EQ(Node(books).Parent(), nullptr);
  EXPECT_EQ(item.List(), &Group(books, Shop).LstItem());
}

TEST_F(TWatchlistCategoryTreeTest, WhatHasNoNodeIsPassedOver) {
  TWatchlistCategory stranger;
  Build();
  Panes.Take();
  Pane->MoveNode(stranger, nullptr);
  Pane->MoveNode(Unassigned(), &stranger);
  Pane->RepaintNode(stranger);
  Pane->DeleteNodeFromTree(&stranger);
  Pane->DeleteNodeFromTree(nullptr);
  EXPECT_EQ(Outline(), TLines{"<Keiner Kategorie zugewiesen>"});
  EXPECT_EQ(Panes.Take(), TLines{});
}

TEST_F(TWatchlistCategoryTreeTest, ANodeIsDeletedWithAllBelowIt) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistItem& item = Item(books, Shop, u"Roman");
  Build();
  Pane->DeleteNodeFromTree(&books);
  EXPECT_EQ(Outline(), TLines{"<Keiner Kategorie zugewiesen>"});
  EXPECT_EQ(Pane->GetNodeByObj(&item), nullptr);
  EXPECT_EQ(item.GetName(), u"Roman") << "the model is not touched";
}

TEST_F(TWatchlistCategoryTreeTest, AClearedTreeLeavesTheOtherPanes) {
  Build();
  GoTo(Unassigned());
  Panes.Take();
  Pane->Clear();
  EXPECT_EQ(View().First(), nullptr);
  EXPECT_EQ(Panes.Take(), TLines{});
}

TEST_F(TWatchlistCategoryTreeTest, NewSettingsRepaintAVisibleTree) {
  struct TSkin : IControlObserver {
    void ControlChanged(TControl& iControl) override {
      Trees += iControl.Name() == u"vstCategories";
    }
    void ControlGone(TControl&) override {}
    int Trees = 0;
  } skin;
  Build();
  View().SetObserver(&skin);
  ShowCounts(true, true);
  EXPECT_EQ(skin.Trees, 1);
  Form.Close();
  ShowCounts(false, false);
  EXPECT_EQ(skin.Trees, 1);
  View().SetObserver(nullptr);
}

TEST_F(TWatchlistCategoryTreeTest, TheSelectionIsRememberedAsItsCategory) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistCategory& novels = Category(u"Romane", &books);
  TWatchlistItem& item = Item(novels, Shop, u"Faust");
  Build();
  GoTo(item);
  Pane->StoreSelection();
  EXPECT_EQ(TIniFileSectionWatchlist().GetLastSelected(), GUIDToString(novels.Id()));
  Build();
  Pane->RestoreSelection();
  EXPECT_EQ(Pane->GetSelectedNode(), &Node(novels));
  EXPECT_EQ(View().FocusedNode(), &Node(novels));
  EXPECT_EQ(Pane->CurrentCategory(), &novels);
}

TEST_F(TWatchlistCategoryTreeTest, NoSelectionIsRememberedAsNone) {
  TIniFileSectionWatchlist().SetLastSelected(u"alt");
  Build();
  Pane->StoreSelection();
  EXPECT_EQ(TIniFileSectionWatchlist().GetLastSelected(), u"");
}

TEST_F(TWatchlistCategoryTreeTest, ARememberedCategoryThatIsGoneSelectsTheUnassigned) {
  Build();
  for (const TString& text : {GUIDToString(NewGuid()), TString(u"keine Id"), TString()}) {
    View().SetSelectedNode(nullptr);
    View().SetFocusedNode(nullptr);
    TIniFileSectionWatchlist().SetLastSelected(text);
    Pane->RestoreSelection();
    EXPECT_EQ(Pane->GetSelectedNode(), &Node(Unassigned())) << ToUtf8(text);
  }
}

TEST_F(TWatchlistCategoryTreeTest, AnEmptyTreeHasNothingToSelect) {
  Pane->RestoreSelection();
  EXPECT_EQ(Pane->GetSelectedNode(), nullptr);
  Tree().Clear();
  Build();
  Pane->RestoreSelection();
  EXPECT_EQ(Pane->GetSelectedNode(), nullptr);
}

}  // namespace
}  // namespace kk
