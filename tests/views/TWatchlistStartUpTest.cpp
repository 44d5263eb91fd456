#include "TShownSection.h"
#include "host/contract/IToolbarExtender.h"
#include "host/contract/TCommonExplorerBarExtender.h"
#include "host/controls/IMouseWheel.h"
#include "host/controls/TCommonExplorerBarItem.h"
#include "persistence/exchange/TfrmKKWatchlistExport.h"
#include "reminders/TRemindHandler.h"
#include "views/print/TfrmKKWatchlistPrint.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

// A form of the test's own instead of the world's, from its making to its end.
class TWatchlistStartUpTest : public TShownSection {
 protected:
  TWatchlistStartUpTest() {
    Drop();
    Forget();
  }
  void Drop() {
    Recorded.reset();
    Form.reset();
  }
  void Make() { Form = std::make_unique<TfrmKKWatchlist>(); }
  void Start(const TIntf<IApplication>& iApplication) {
    Make();
    Form->Initialize(iApplication);
    Loop.Advance(300);
  }
  void Start() { Start(Application); }
  // The host ends the section.
  void End() {
    Form->Uninitialize();
    Drop();
  }
  static bool HearsOfReminders() {
    return static_cast<bool>(Handler()->RemindHandler().OnProcessElapsedItem());
  }
  static bool HearsOfClicks() {
    return static_cast<bool>(Handler()->OnAdditionalColumnEditClick());
  }
  static void NoDelay() { IniFile().WriteString(u"General", u"DelayedStart", u"0"); }

  TWatchlistCategory& Books = Category(u"Bücher");
  TWatchlistCategory& Clocks = Category(u"Uhren");
  TWatchlistItem& Faust = Item(Books, Auction, u"Faust");
};

// Stages.

TEST_F(TWatchlistStartUpTest, FormThatIsMadeHasItsPanesWithoutContent) {
  Make();
  EXPECT_EQ(Form->MinWidth(), 600);
  EXPECT_EQ(Form->MinHeight(), 520);
  EXPECT_TRUE(Bar().GetControl().Groups().empty());
  EXPECT_EQ(Panes().TabControl(), nullptr);
  EXPECT_EQ(Nodes().First(), nullptr);
  EXPECT_FALSE(Form->FormAddProgress().Visible());
  EXPECT_FALSE(Form->Status().Gauge().Visible());
  EXPECT_EQ(Form->AddedSearchResults().GetCount(), 0);
  for (const TPanel* pane : {&Pane().pnlCategories, &Panes().pnlExplorerBandBar}) {
    EXPECT_EQ(pane->MinWidth(), 100);
    EXPECT_TRUE(pane->HasSplitter());
  }
  EXPECT_EQ(Form->Children().front(), &Form->tlbrNavigation);
}

TEST_F(TWatchlistStartUpTest, StartIsPutOffBy300Milliseconds) {
  Make();
  Form->Initialize(Application);
  Loop.Advance(299);
  EXPECT_EQ(Nodes().First(), nullptr);
  EXPECT_EQ(Panes().TabControl(), nullptr);
  EXPECT_FALSE(HearsOfReminders());
  EXPECT_FALSE(HearsOfClicks());
  Loop.Advance(1);
  EXPECT_THAT(Outline(), ElementsAre("<Keiner Kategorie zugewiesen>", "Bücher", "  Auktion",
                                     "    Faust", "Uhren"));
  EXPECT_EQ(Panes().TabControl()->Tabs().GetCount(), 2);
  EXPECT_FALSE(Bar().GetControl().Groups().empty());
  EXPECT_TRUE(HearsOfReminders());
  EXPECT_TRUE(HearsOfClicks());
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("SetContainer"));
  EXPECT_EQ(Nodes().SelectedNode(), nullptr) << "nobody has seen it yet";
}

TEST_F(TWatchlistStartUpTest, BodyRunsOnce) {
  Start();
  Form->InitializeWithDelay();
  Loop.Advance(1000);
  EXPECT_EQ(Panes().TabControl()->Tabs().GetCount(), 2);
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("SetContainer"));
}

TEST_F(TWatchlistStartUpTest, SettingSwitchesTheDelayOff) {
  NoDelay();
  Make();
  Form->Initialize(Application);
  EXPECT_NE(Panes().TabControl(), nullptr);
  Form->InitializeWithDelay();
  Loop.Advance(1000);
  EXPECT_EQ(Panes().TabControl()->Tabs().GetCount(), 2);
}

TEST_F(TWatchlistStartUpTest, FailureOfASourceGoesToTheCallerAndTheBodyDoesNotRunAgain) {
  NoDelay();
  Make();
  Auction->SetFailingViewCall("SetContainer");
  EXPECT_EQ(Refusal([this] { Form->Initialize(Application); }), "SetContainer");
  Form->InitializeWithDelay();
  EXPECT_EQ(Panes().TabControl()->Tabs().GetCount(), 0);
  EXPECT_FALSE(HearsOfReminders());
  End();
}

TEST_F(TWatchlistStartUpTest, TabsStayEmptyUntilTheSectionIsSeen) {
  Start();
  EXPECT_THAT(TabLines(), IsEmpty());
  TIniFileSectionWatchlist().SetLastSelected(GUIDToString(Books.Id()));
  Form->Show();
  EXPECT_EQ(Selected(), &Books);
  EXPECT_EQ(Nodes().FocusedNode(), NodeOf(Books));
  EXPECT_THAT(TabLines(), ElementsAre("[Auktion]"));
  EXPECT_TRUE(BarShows(u"Bücher"));
}

TEST_F(TWatchlistStartUpTest, SectionThatIsSeenBeforeItsStartShowsItsSelectionThen) {
  TIniFileSectionWatchlist().SetLastSelected(GUIDToString(Books.Id()));
  Make();
  Form->Initialize(Application);
  Form->Show();
  EXPECT_EQ(Nodes().First(), nullptr);
  Loop.Advance(300);
  EXPECT_EQ(Selected(), &Books);
  EXPECT_THAT(TabLines(), ElementsAre("[Auktion]"));
}

TEST_F(TWatchlistStartUpTest, UnknownOrInvalidSelectionIsTheUnassignedCategory) {
  for (const TString& last : {TString(u"quatsch"), GUIDToString(NewGuid()), TString()}) {
    TIniFileSectionWatchlist().SetLastSelected(last);
    Start();
    Form->Show();
    EXPECT_EQ(Selected(), &Unassigned()) << ToUtf8(last);
    Drop();
  }
}

TEST_F(TWatchlistStartUpTest, WidthsComeFromTheSettingsAtTheFirstShowAlone) {
  TIniFileSectionWatchlist().SetCategoryTreeWidth(230);
  TIniFileSectionWatchlist().SetExplorerBarWidth(240);
  Start();
  EXPECT_EQ(Pane().pnlCategories.Width(), 0);
  Form->Show();
  EXPECT_EQ(Pane().pnlCategories.Width(), 230);
  EXPECT_EQ(Panes().pnlExplorerBandBar.Width(), 240);
  EXPECT_TRUE(Pane().pnlCategories.DragWidth(250));
  Form->Close();
  Form->Show();
  EXPECT_EQ(Pane().pnlCategories.Width(), 250);
}

// The end.

TEST_F(TWatchlistStartUpTest, SectionThatWasSeenKeepsSelectionAndSizes) {
  Start();
  Form->Show();
  GoTo(Faust);
  Form->Resize(900, 700);
  EXPECT_TRUE(Pane().pnlCategories.DragWidth(250));
  EXPECT_TRUE(Panes().pnlExplorerBandBar.DragWidth(260));
  EXPECT_NE(TIniFileSectionWatchlist().GetCategoryTreeWidth(), 250) << "written at the end alone";
  End();
  const TIniFileSectionWatchlist settings;
  EXPECT_EQ(settings.GetLastSelected(), GUIDToString(Books.Id())) << "the category of the item";
  EXPECT_EQ(settings.GetCategoryTreeWidth(), 250);
  EXPECT_EQ(settings.GetExplorerBarWidth(), 260);
  EXPECT_EQ(Ini.ReadString(u"Watchlist", u"WindowWidth", {}), u"900");
  EXPECT_EQ(Ini.ReadString(u"Watchlist", u"WindowHeight", {}), u"700");
}

TEST_F(TWatchlistStartUpTest, NoSelectionIsKeptAsNone) {
  TIniFileSectionWatchlist().SetLastSelected(GUIDToString(Books.Id()));
  Start();
  Form->Show();
  Form->BuildCategoriesTree(false);
  End();
  EXPECT_EQ(TIniFileSectionWatchlist().GetLastSelected(), u"");
}

TEST_F(TWatchlistStartUpTest, SectionThatWasNeverSeenOrNeverRanWritesNothing) {
  TIniFileSectionWatchlist().SetLastSelected(u"alt");
  Start();
  GoTo(Books);
  Pane().pnlCategories.SetWidth(250);
  End();
  Make();
  Form->Initialize(Application);
  Form->Show();
  Pane().pnlCategories.SetWidth(250);
  End();
  EXPECT_EQ(TIniFileSectionWatchlist().GetLastSelected(), u"alt");
  EXPECT_FALSE(Ini.HasKey(u"Watchlist", u"CategoryTreeWidth"));
  EXPECT_FALSE(Ini.HasKey(u"Watchlist", u"WindowWidth"));
}

TEST_F(TWatchlistStartUpTest, SettingsThatCantBeWrittenDoNotKeepTheSectionFromGoing) {
  Start();
  Form->Show();
  GoTo(Books);

  TKKIniFile* const before = SetIniFile(nullptr);
  // Not even the settings' own notification can be taken back then.
  Refusal([this] { Form->Uninitialize(); });
  SetIniFile(before);
  EXPECT_FALSE(HearsOfReminders());
  End();
}

TEST_F(TWatchlistStartUpTest, EndTakesThePanesDownInOrder) {
  Start();
  Form->Show();
  GoTo(Books);
  Forget();
  Form->Uninitialize();
  EXPECT_EQ(Nodes().First(), nullptr);
  EXPECT_EQ(Panes().TabControl(), nullptr);
  EXPECT_EQ(Panes().ExplorerBar(), nullptr);
  EXPECT_TRUE(Panes().explrbr.Groups().empty());
  EXPECT_THAT(Auction->ViewCalls(),
              ElementsAre("HideList", "ReleaseList", "ReleaseListData", "SetContainer null"));
  EXPECT_FALSE(HearsOfReminders());
  EXPECT_FALSE(HearsOfClicks());
  TIniFileSectionWatchlist().SetShowItemCountInTree(false);
  TIniFileSectionWatchlist().SetShowItemCountInTreeRecursive(false);
  IniFile().NotifyChanged();
  // What comes too late finds nothing to show, and nothing breaks.
  Form->BuildCategoriesTree(true);
  EXPECT_EQ(Nodes().Text(*NodeOf(Books)), u"Bücher (1)") << "it hears of no settings any more";
  GoTo(Books);
  Form->Reminders().DoTabReminderDelete(false, Auction, Results({&Faust}));
  Form->Items().DoMoveItems(Auction, Clocks, Results({&Faust}));
  EXPECT_TRUE(Panes().Centre.tbcntrlWatchlist.OpenChevronMenu());
  End();
}

TEST_F(TWatchlistStartUpTest, FormThatDiesWithoutAnEndTakesItsEventsBack) {
  const int timers = Loop.TimerCount();
  Start();
  EXPECT_GT(Loop.TimerCount(), timers);
  Drop();
  EXPECT_EQ(Loop.TimerCount(), timers);
  EXPECT_FALSE(HearsOfReminders());
  EXPECT_FALSE(HearsOfClicks());
  IniFile().NotifyChanged();
  EXPECT_THAT(Auction->ViewCalls(), Contains("ReleaseList"));
}

// Changed settings.

TEST_F(TWatchlistStartUpTest, ChangedSettingsChangeTheCountsAtOnce) {
  TIniFileSectionWatchlist().SetShowItemCountInTree(true);
  Start();
  Form->Show();
  EXPECT_EQ(Nodes().Text(*NodeOf(Books)), u"Bücher (1)") << "read at the start";
  TIniFileSectionWatchlist().SetShowItemCountInTree(false);
  TIniFileSectionWatchlist().SetShowItemCountInTreeRecursive(false);
  EXPECT_EQ(Nodes().Text(*NodeOf(Books)), u"Bücher (1)");
  IniFile().NotifyChanged();
  EXPECT_EQ(Nodes().Text(*NodeOf(Books)), u"Bücher");
}

// The toolbar.

class TFakeToolbarButton : public TInterfaced<IToolbarButton> {
 public:
  explicit TFakeToolbarButton(const TGuid& iPluginId) : FPluginId(iPluginId) {}
  TGuid GetId() const override { return FPluginId; }
  TGuid GetPluginId() const override { return FPluginId; }
  int GetSortOrder() const override { return 1; }
  TString GetCaption() const override { return u"Knopf"; }
  TBitmap GetImage() override { return {}; }
  TBitmap GetImageSelected() override { return {}; }
  TString GetHint() const override { return {}; }
  void Click() override {}

 private:
  TGuid FPluginId;
};

class TToolbarApplication : public TInterfaced<IApplication, IToolbarExtender> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm*) override { return false; }
  void Add(const TIntf<IToolbarButton>&) override {}
  int GetCount() const override { return 2; }
  TIntf<IToolbarButton> GetItems(int iIndex) const override {
    return MakeIntf<TFakeToolbarButton>(iIndex == 0 ? cPluginId : NewGuid());
  }
};

TEST_F(TWatchlistStartUpTest, ToolbarIsFilledAtTheFirstShowAndEmptiedAtTheEnd) {
  Start(TIntf<IApplication>(MakeIntf<TToolbarApplication>()));
  EXPECT_TRUE(Form->tlbrNavigation.Children().empty());
  Form->Show();
  ASSERT_EQ(Form->tlbrNavigation.Children().size(), 2U);
  EXPECT_TRUE(dynamic_cast<TToolButton&>(*Form->tlbrNavigation.Children()[0]).Selected());
  EXPECT_FALSE(dynamic_cast<TToolButton&>(*Form->tlbrNavigation.Children()[1]).Selected());
  Form->Uninitialize();
  EXPECT_TRUE(Form->tlbrNavigation.Children().empty());
  End();
}

// What others add to the explorer bar.

// Adds one link to the panel "Details", or to each that it is given.
class TLinkExtender : public TCommonExplorerBarExtender {
 public:
  void AddItems(const TIntf<IExplorerBarPanel>& iPanel) override {
    if (Everywhere || iPanel->GetId() == cExplorerBarPanelDetailsId) iPanel->Add(Link);
  }
  void DeleteItems(const TIntf<IExplorerBarPanel>& iPanel) override { iPanel->Delete(Link); }
  TIntf<IExplorerBarItem> Link = MakeIntf<TCommonExplorerBarLink>(NewGuid(), 10, u"Vergleichen");
  bool Everywhere = false;

 protected:
  ~TLinkExtender() = default;
};
class TViewExtender : public TInterfaced<TLinkExtender> {};
class TInjectedExtender : public TInterfaced<TLinkExtender, TFakeSearchResults> {};

TEST_F(TWatchlistStartUpTest, WhatAViewAddsToTheBarComesAndGoesWithItsTab) {
  Auction->ViewParts().push_back(TIntf<IExplorerBarExtender>(MakeIntf<TViewExtender>()));
  Start();
  Form->Show();
  GoTo(Books);
  EXPECT_TRUE(BarShows(u"Vergleichen"));
  GoTo(Clocks);
  EXPECT_FALSE(BarShows(u"Vergleichen"));
  Auction->ViewParts().clear();
}

TEST_F(TWatchlistStartUpTest, WhatPluginsHaveInjectedStandsInTheBarFromTheStart) {
  const auto extender = MakeIntf<TInjectedExtender>();
  extender->Everywhere = true;
  Plugin->Door->AddIntegration(TIntf<IExplorerBarExtender>(extender));
  Start();
  EXPECT_TRUE(BarShows(u"Vergleichen"));
  Form->Show();
  GoTo(Books);
  GoTo(Clocks);
  EXPECT_TRUE(BarShows(u"Vergleichen")) << "whatever is selected";
}

// Export, import, print.

TEST_F(TWatchlistStartUpTest, ExportComesFromTheSideBarAndSavesNothing) {
  Start();
  Form->Show();
  User.Expect<TfrmKKWatchlistExport>([&](TfrmKKWatchlistExport& form) {
    EXPECT_EQ(form.Owner(), Form.get());
    User.ExpectOpenDialog(u"Beobachten (Export)", Folder.File(u"liste.wch"));
    EXPECT_TRUE(form.btnOK.Click());
  });
  EXPECT_TRUE(ClickLink(u"Daten exportieren..."));
  EXPECT_TRUE(Folder.Has(u"liste.wch"));
  EXPECT_FALSE(Folder.Has(cWatchlistFileName));
}

TEST_F(TWatchlistStartUpTest, ImportComesFromTheSideBar) {
  Start();
  Form->Show();
  User.ExpectOpenDialog(u"Beobachten (Import)", {});
  EXPECT_TRUE(ClickLink(u"Daten importieren..."));
  EXPECT_FALSE(Folder.Has(cWatchlistFileName));
}

TEST_F(TWatchlistStartUpTest, PrintComesFromTheSideBar) {
  Start();
  Form->Show();
  User.Expect<TfrmKKWatchlistPrint>([&](TfrmKKWatchlistPrint& form) {
    EXPECT_EQ(form.Owner(), Form.get());
    EXPECT_TRUE(form.btnCancel.Click());
  });
  EXPECT_TRUE(ClickLink(u"Daten drucken..."));
}

TEST_F(TWatchlistStartUpTest, ImportOfTheUserIsSavedAndShown) {
  struct TImport : TWatchlistImport {
    bool Display(TForm* iOwner) override {
      Owner = iOwner;
      Category(u"Import");
      return true;
    }
    TForm* Owner = nullptr;
  } import;
  Start();
  Form->SetImport(&import);
  Form->Show();
  EXPECT_TRUE(ClickLink(u"Daten importieren..."));
  EXPECT_EQ(import.Owner, Form.get());
  EXPECT_TRUE(Folder.Has(cWatchlistFileName));
  EXPECT_THAT(Outline(), Contains("Import"));
  EXPECT_EQ(Selected(), &Unassigned()) << "the selection stays";
  Form->SetImport(nullptr);
}

// An empty list.

TEST_F(TWatchlistStartUpTest, EmptyListSaysWhatToDo) {
  Tree().DeleteItemById(Faust.SearchResultId());
  Start();
  TWatchlistCentrePane& centre = Panes().Centre;
  EXPECT_TRUE(centre.lblNoItems.Visible());
  EXPECT_FALSE(centre.pnlWatchlistContainer.Visible());
  EXPECT_EQ(centre.lblNoItems.Caption(),
            u"Hier stehen später Ihre beobachteten Artikel.\r\nSuchen Sie im Bereich „Suchen“ "
            u"nach einem Artikel und wählen Sie „Artikel beobachten...“.");
  TWatchlistItem& emma = Item(Clocks, Shop, u"Emma");
  EXPECT_FALSE(centre.lblNoItems.Visible());
  EXPECT_TRUE(centre.pnlWatchlistContainer.Visible());
  EXPECT_TRUE(centre.tbcntrlWatchlist.Visible());
  Tree().DeleteItemById(emma.SearchResultId());
  EXPECT_TRUE(centre.lblNoItems.Visible());
  LostItem(Clocks, Shop);
  Form->BuildCategoriesTree(true);
  EXPECT_FALSE(centre.lblNoItems.Visible()) << "an item without a result is one";
}

TEST_F(TWatchlistStartUpTest, CategoryWithoutItemsOfItsOwnSaysSo) {
  Start();
  Form->Show();
  TWatchlistCentrePane& centre = Panes().Centre;
  GoTo(Clocks);
  EXPECT_TRUE(centre.lblNoItems.Visible());
  EXPECT_EQ(centre.lblNoItems.Caption(),
            u"Diese Kategorie enthält selbst keine Artikel.\r\nNehmen Sie welche im Bereich "
            u"„Suchen“ mit „Artikel beobachten...“ auf, oder verschieben Sie welche hierher.");
  EXPECT_FALSE(centre.tbcntrlWatchlist.Visible());
  EXPECT_FALSE(centre.pnlWatchlistContainer.Visible());
  GoTo(Books);
  EXPECT_FALSE(centre.lblNoItems.Visible());
  EXPECT_TRUE(centre.tbcntrlWatchlist.Visible());
  EXPECT_TRUE(centre.pnlWatchlistContainer.Visible());
  EXPECT_THAT(TabLines(), ElementsAre("[Auktion]"));
}

TEST_F(TWatchlistStartUpTest, CategoryThatGetsItemsWhileItIsOnShowDoesNotSayThatItHasNone) {
  Start();
  Form->Show();
  GoTo(Clocks);
  Form->Items().DoMoveItems(Auction, Clocks, Results({&Faust}));
  EXPECT_FALSE(Panes().Centre.lblNoItems.Visible());
}

// The chevron menu.

TEST_F(TWatchlistStartUpTest, ChevronMenuListsTheTabs) {
  Item(Books, Shop, u"Emma");
  Start();
  Form->Show();
  GoTo(Books);
  ASSERT_TRUE(Panes().Centre.tbcntrlWatchlist.OpenChevronMenu());
  TMenuItem& menu = *Panes().Centre.tbcntrlWatchlist.ChevronMenu();
  ASSERT_EQ(menu.GetCount(), 2);
  EXPECT_TRUE(menu.GetItems(0).Checked());
  EXPECT_TRUE(menu.GetItems(1).Click());
  EXPECT_THAT(TabLines(), ElementsAre("Auktion", "[Laden]"));
  EXPECT_EQ(Selected(), &Books) << "the tabs do not select in the tree";
}

// The wheel.

class TFakeWheel : public IMouseWheel {
 public:
  TControl* ControlAtPointer(TControl& ioContainer) override {
    for (size_t i = 0; i + 1 < Path.size(); ++i) {
      if (Path[i] == &ioContainer) return Path[i + 1];
    }
    return nullptr;
  }
  int Perform(TControl& ioTarget) override {
    Target = &ioTarget;
    if (Inside != nullptr) Inside->MouseWheelHandler(*this);
    return Answer;
  }
  void PerformDefault() override { ++Defaults; }

  std::vector<TControl*> Path;  // from the form to what is under the pointer
  TControl* Target = nullptr;
  TfrmKKWatchlist* Inside = nullptr;
  int Answer = 1;
  int Defaults = 0;
};

TEST_F(TWatchlistStartUpTest, WheelGoesToTheInnermostControlUnderThePointer) {
  Start();
  TFakeWheel wheel;
  wheel.Path = {Form.get(), &Panes().pnlPanes, &Pane().pnlCategories, &Nodes()};
  Form->MouseWheelHandler(wheel);
  EXPECT_EQ(wheel.Target, &Nodes());
  EXPECT_EQ(wheel.Defaults, 0);
  wheel.Path = {Form.get(), Form.get()};
  Form->MouseWheelHandler(wheel);
  EXPECT_EQ(wheel.Target, Form.get());
}

TEST_F(TWatchlistStartUpTest, WheelThatNothingTakesGoesItsUsualWay) {
  Start();
  TFakeWheel wheel;
  wheel.Answer = 0;
  wheel.Path = {Form.get(), &Panes().pnlPanes};
  Form->MouseWheelHandler(wheel);
  EXPECT_EQ(wheel.Target, &Panes().pnlPanes);
  EXPECT_EQ(wheel.Defaults, 1);
}

TEST_F(TWatchlistStartUpTest, WheelInsideOfAWheelIsPassedOver) {
  Start();
  TFakeWheel wheel;
  wheel.Answer = 0;
  wheel.Inside = Form.get();
  Form->MouseWheelHandler(wheel);
  EXPECT_EQ(wheel.Defaults, 1) << "the outer one's alone";
  wheel.Inside = nullptr;
  Form->MouseWheelHandler(wheel);
  EXPECT_EQ(wheel.Defaults, 2);
}

// The whole road of two items.

TEST_F(TWatchlistStartUpTest, WhatTheUserHasDoneIsThereAtTheNextStart) {
  Start();
  Form->Show();
  ExpectCategoryDialog(u"Klassiker");
  ASSERT_TRUE(ClickMenu(&Books, {u"Neue Kategorie...", u"als Unterkategorie anlegen..."}));
  Group(Books, Auction);
  const TIntf<IInterfaceList> results = ListOf(FakeResult(u"Hamlet", In(60)));
  results->Add(FakeResult(u"Macbeth", In(90)));
  Form->AddWithUpdate(results, Record(Auction), Books);
  Auction->Finish(true);
  Auction->Finish(true);
  TWatchlistItem& hamlet = *Tree().FindItemById(GetAs<ISearchResult>(*results, 0)->GetId());
  ASSERT_TRUE(
      ClickMenu(&hamlet, {u"Markierten Eintrag verschieben nach...", u"Bücher", u"Klassiker"}));
  ASSERT_TRUE(ClickMenu(&hamlet, {u"Markierten Eintrag aktualisieren"}));
  Auction->Finish(true, FakeResult(u"Hamlet II", In(60)));
  GoTo(Clocks);  // the category on show is not filled anew
  GoTo(*Tree().FindCategoryByName(u"Klassiker"));
  Mark(Auction, {&hamlet});
  ExpectEditor();
  ASSERT_TRUE(ClickLink(u"Erinnerung einrichten..."));
  const TLines outline = Outline();
  const TGuid id = hamlet.SearchResultId();
  Handler()->Uninitialize();
  End();
  FreeHandler();
  FreeBuriedCategories();

  CreateHandler(MakeIntf<TFakePlugin>());
  Handler()->LstIntegration().Add(Auction);
  Handler()->LstIntegration().Add(Shop);
  Handler()->LoadFromFile();
  Start();
  Form->Show();
  EXPECT_EQ(Outline(), outline);
  EXPECT_THAT(outline, Contains("      Hamlet II"));
  EXPECT_TRUE(HasReminder(id));
  EXPECT_EQ(dynamic_cast<TWatchlistCategory&>(*Selected()).Name(), u"Klassiker");
  EXPECT_THAT(TabLines(), ElementsAre("[Auktion]"));
}

}  // namespace
}  // namespace kk
