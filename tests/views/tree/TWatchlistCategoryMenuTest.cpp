#include "views/tree/TWatchlistCategoryMenu.h"

#include "TTreeWorld.h"

namespace kk {
namespace {

class TWatchlistCategoryMenuTest : public TTreeTest {
 protected:
  /// The entries that depend on a node and are enabled: move, edit, delete, at level, sub-level,
  /// update.
  std::string Enabled(const TVirtualNode* iNode) {
    TWatchlistCategoryMenu& menu = Pane->Menu;
    menu.PrepareContextMenuForNode(iNode);
    std::string enabled;
    if (menu.mntmMove.Enabled()) enabled += "M";
    if (menu.mntmEdit.Enabled()) enabled += "E";
    if (menu.mntmDelete.Enabled()) enabled += "D";
    if (menu.mntmAddCategoryAtLevel.Enabled()) enabled += "L";
    if (menu.mntmAddCategoryAtSubLevel.Enabled()) enabled += "S";
    if (menu.mntmUpdate.Enabled()) enabled += "U";
    EXPECT_TRUE(menu.mntmAddCategoryRoot.Enabled());
    EXPECT_TRUE(menu.mntmCategoryNew.Enabled());
    return enabled;
  }
  /// The user asks for the menu there; the captions of the targets of a move.
  TLines Targets(TVirtualNode* iNode) {
    if (iNode != nullptr) Reveal(*iNode);
    EXPECT_TRUE(View().OpenPopupMenu(iNode));
    return Captions(Pane->Menu.mntmMove);
  }
  static TLines Captions(const TMenuItem& iMenu) {
    TLines captions;
    for (int i = 0; i < iMenu.GetCount(); ++i) {
      captions.push_back(ToUtf8(iMenu.GetItems(i).Caption()));
    }
    return captions;
  }
  TNotifyEvent OnMove() { return TNotifyEvent::Of<&TWatchlistCategoryMenuTest::DoClickMove>(this); }
  void DoClickMove(TObject* Sender) {
    Clicked = dynamic_cast<TMenuItem*>(Sender)->Tag();
    ++Clicks;
  }

  TWatchlistCategory& Books = Category(u"Bücher");
  TObject* Clicked = nullptr;
  int Clicks = 0;
};

TEST_F(TWatchlistCategoryMenuTest, EntriesStandInTheirOrder) {
  EXPECT_EQ(Captions(Pane->Menu.pmnCategories),
            (TLines{"Markierten Eintrag bearbeiten...", "Markierten Eintrag verschieben nach...",
                    "Markierten Eintrag löschen", "-", "Neue Kategorie...", "-",
                    "Markierten Eintrag aktualisieren", "Alles aktualisieren"}));
  EXPECT_EQ(Captions(Pane->Menu.mntmCategoryNew),
            (TLines{"auf dieser Ebene anlegen...", "als Unterkategorie anlegen...", "-",
                    "als Hauptkategorie anlegen..."}));
  EXPECT_EQ(View().PopupMenu(), &Pane->Menu.pmnCategories);
}

TEST_F(TWatchlistCategoryMenuTest, EditIsTheDefaultAndKeysReachTheCommands) {
  EXPECT_TRUE(Pane->Menu.mntmEdit.Default());
  EXPECT_EQ(Pane->Menu.mntmEdit.ShortCut(), u"F2");
  EXPECT_EQ(Pane->Menu.mntmDelete.ShortCut(), u"Del");
  EXPECT_EQ(Pane->Menu.mntmUpdate.ShortCut(), u"F5");
}

TEST_F(TWatchlistCategoryMenuTest, WithoutANodeEverythingIsOffButTheRootEntry) {
  EXPECT_EQ(Enabled(nullptr), "");
}

TEST_F(TWatchlistCategoryMenuTest, TheUnassignedCategoryCanBeNeitherChangedNorDivided) {
  Item(Unassigned(), Shop, u"Uhr");
  Build();
  EXPECT_EQ(Enabled(&Node(Unassigned())), "LU");
}

TEST_F(TWatchlistCategoryMenuTest, ACategoryCanDoAll) {
  Item(Books, Shop, u"Roman");
  Build();
  EXPECT_EQ(Enabled(&Node(Books)), "MEDLSU");
}

TEST_F(TWatchlistCategoryMenuTest, WhatCanNotBeRefreshedHasNoUpdate) {
  Build();
  EXPECT_EQ(Enabled(&Node(Books)), "MEDLS");
}

TEST_F(TWatchlistCategoryMenuTest, AGroupCanNotBeEditedNorDivided) {
  Item(Books, Shop, u"Roman");
  Build();
  EXPECT_EQ(Enabled(&Node(Group(Books, Shop))), "MDLU");
}

TEST_F(TWatchlistCategoryMenuTest, AnItemHasNoLevelForCategories) {
  TWatchlistItem& item = Item(Books, Shop, u"Roman");
  Build();
  EXPECT_EQ(Enabled(&Node(item)), "MEDU");
}

TEST_F(TWatchlistCategoryMenuTest, AnEmptyNodeCanGetASubCategory) {
  Item(Books, Shop, u"Roman");
  Build();
  TVirtualNode& empty = View().AddChild(nullptr, nullptr);
  EXPECT_EQ(Enabled(&empty), "SU");
}

TEST_F(TWatchlistCategoryMenuTest, UpdateAllNeedsASourceThatCanRefreshAndNoItems) {
  Build();
  Enabled(nullptr);
  EXPECT_FALSE(Pane->Menu.mntmUpdateAll.Enabled());
  Group(Books, Shop);
  Enabled(nullptr);
  EXPECT_TRUE(Pane->Menu.mntmUpdateAll.Enabled());
}

TEST_F(TWatchlistCategoryMenuTest, ARightClickSelectsAndPreparesForTheNodeUnderThePointer) {
  Build();
  GoTo(Unassigned());
  Targets(&Node(Books));
  EXPECT_EQ(View().SelectedNode(), &Node(Books));
  EXPECT_TRUE(Pane->Menu.mntmEdit.Enabled());
  Targets(nullptr);
  EXPECT_FALSE(Pane->Menu.mntmEdit.Enabled()) << "beside all nodes";
  EXPECT_FALSE(Pane->Menu.mntmMove.Enabled());
  EXPECT_EQ(View().SelectedNode(), &Node(Books));
}

TEST_F(TWatchlistCategoryMenuTest, AnItemOrAGroupMovesIntoEveryCategory) {
  TWatchlistItem& item = Item(Books, Shop, u"Roman");
  Build();
  const TLines all{"<Keiner Kategorie zugewiesen>", "Bücher"};
  EXPECT_EQ(Targets(&Node(item)), all);
  EXPECT_EQ(Targets(&Node(Group(Books, Shop))), all);
  EXPECT_TRUE(Pane->Menu.mntmMove.Enabled());
}

TEST_F(TWatchlistCategoryMenuTest, ACategoryMovesNeitherIntoItselfNorToTheUnassigned) {
  Category(u"Romane", &Books);
  Category(u"Alben");
  Build();
  EXPECT_EQ(Targets(&Node(Books)), (TLines{"oberste Ebene", "-", "Alben"}));
  EXPECT_EQ(Targets(&Node(Books)), (TLines{"oberste Ebene", "-", "Alben"})) << "built anew";
}

TEST_F(TWatchlistCategoryMenuTest, TheUnassignedCategoryHasNoTargets) {
  Build();
  Targets(&Node(Books));
  EXPECT_EQ(Targets(&Node(Unassigned())), TLines{});
  EXPECT_FALSE(Pane->Menu.mntmMove.Enabled());
}

TEST_F(TWatchlistCategoryMenuTest, MoveIsOffWhereThereIsNoTarget) {
  Build();
  auto taken = Tree().RemoveCategoryById(Books.Id());
  Tree().Clear();
  EXPECT_EQ(Targets(&Node(*taken)), TLines{});
  EXPECT_FALSE(Pane->Menu.mntmMove.Enabled());
}

TEST_F(TWatchlistCategoryMenuTest, AClickOnATargetTellsWhichOne) {
  TWatchlistItem& item = Item(Books, Shop, u"Roman");
  Pane->Menu.SetOnClickMove(OnMove());
  Build();
  Targets(&Node(item));
  EXPECT_TRUE(Pane->Menu.mntmMove.GetItems(1).Click());
  EXPECT_EQ(Clicked, &Books);
}

TEST_F(TWatchlistCategoryMenuTest, AClickOnTheTopLevelTellsNone) {
  Pane->Menu.SetOnClickMove(OnMove());
  Build();
  Targets(&Node(Books));
  EXPECT_TRUE(Pane->Menu.mntmMove.GetItems(0).Click());
  EXPECT_EQ(Clicks, 1);
  EXPECT_EQ(Clicked, nullptr);
}

TEST_F(TWatchlistCategoryMenuTest, NothingMovesToATargetThatWentWhileTheMenuStoodOpen) {
  TWatchlistItem& item = Item(Unassigned(), Shop, u"Roman");
  Pane->Menu.SetOnClickMove(OnMove());
  Build();
  Targets(&Node(item));
  Pane->DeleteNodeFromTree(&Books);
  Tree().DeleteCategory(Books);
  Pane->Menu.mntmMove.GetItems(1).Click();
  EXPECT_EQ(Clicks, 0);
}

TEST_F(TWatchlistCategoryMenuTest, WithoutACommandAClickOnATargetDoesNothing) {
  TWatchlistItem& item = Item(Books, Shop, u"Roman");
  Build();
  Targets(&Node(item));
  EXPECT_TRUE(Pane->Menu.mntmMove.GetItems(1).Click());
  EXPECT_EQ(Clicks, 0);
}

TEST_F(TWatchlistCategoryMenuTest, LooksAnewAtWhatCanBeRefreshed) {
  TWatchlistItem& item = Item(Books, Shop, u"Roman", Now().PlusMs(-1000));
  item.SetLastUpdateDate(Now());
  Build();
  Targets(&Node(Books));
  EXPECT_FALSE(Pane->Menu.mntmUpdate.Enabled());
  item.SetLastUpdateDate({});
  Targets(&Node(Books));
  EXPECT_TRUE(Pane->Menu.mntmUpdate.Enabled());
}

}  // namespace
}  // namespace kk
