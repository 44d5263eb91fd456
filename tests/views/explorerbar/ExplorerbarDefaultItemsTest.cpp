#include "views/explorerbar/ExplorerbarDefaultItems.h"

#include "TExplorerBarWorld.h"
#include "host/contract/ISearchResults.h"
#include "host/contract/TCommonExplorerBarExtender.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TNoResults : public ISearchResults {
 public:
  int GetCount() const override { return 0; }
  int GetSelectedCount() const override { return 0; }
  TIntf<ISearchResult> GetItems(int) const override { return {}; }
  TIntf<ISearchResult> GetSelectedItems(int) const override { return {}; }
  TIntf<ISearchResult> GetFocused() const override { return {}; }

 protected:
  ~TNoResults() = default;
};

// Adds one link to whatever panel it is given.
class TLinkExtender : public TCommonExplorerBarExtender {
 public:
  void AddItems(const TIntf<IExplorerBarPanel>& iPanel) override {
    if (Fails) throw Exception(u"Kein Platz");
    Panels.push_back(iPanel->GetId());
    iPanel->Add(MakeIntf<TCommonExplorerBarLink>(NewGuid(), 10, Caption));
  }
  TString Caption;
  bool Fails = false;
  std::vector<TGuid> Panels;

 protected:
  ~TLinkExtender() = default;
};
class TFullExtender : public TInterfaced<TLinkExtender, TNoResults> {};
class TExtenderAlone : public TInterfaced<TLinkExtender> {};
class TResultsAlone : public TInterfaced<TNoResults> {};

class TDefaultItemsTest : public TExplorerBarTest {
 protected:
  TIntf<TFullExtender> Inject(TStringView iCaption) {
    auto extender = MakeIntf<TFullExtender>();
    extender->Caption = iCaption;
    Inject(TIntf<IExplorerBarExtender>(extender));
    return extender;
  }
  void Inject(const TIntf<IInterface>& iEntry) {
    if (!Plugin->Door) Plugin->Door = MakeIntf<TPluginIntegration>(TIntf<IIntegrationInfo>());
    Plugin->Door->AddIntegration(iEntry);
  }
  TLines Parked() const { return Lines(Group(4)); }
  // What stands above the panel's own items.
  TLines Foreign() const {
    TLines lines = Lines(MoreGroup());
    const auto own = std::find(lines.begin(), lines.end(),
                               "> Daten exportieren... [EXPLORERBANDBARICO_EXPORTDATA]");
    TLines foreign(lines.begin(), own);
    std::erase(foreign, "---");
    return foreign;
  }
};

TEST_F(TDefaultItemsTest, WhatIsInjectedIsParkedInItsOrder) {
  const auto first = Inject(u"Erstes");
  Inject(u"Zweites");
  ExtendExplorerbarWithDefaultItems(*Bar);
  EXPECT_THAT(first->Panels, ElementsAre(cExplorerBarPanelMoreConstId));
  EXPECT_THAT(Parked(), ElementsAre("> Erstes", "> Zweites"));
  EXPECT_THAT(Foreign(), IsEmpty()) << "not shown before it is restored";
}

TEST_F(TDefaultItemsTest, OnlyWhatExtendsTheBarAndHoldsResultsIsAsked) {
  const auto alone = MakeIntf<TExtenderAlone>();
  alone->Caption = u"Allein";
  Inject(TIntf<IExplorerBarExtender>(alone));
  Inject(TIntf<ISearchResults>(MakeIntf<TResultsAlone>()));
  Inject(u"Beides");
  ExtendExplorerbarWithDefaultItems(*Bar);
  EXPECT_THAT(Parked(), ElementsAre("> Beides"));
}

TEST_F(TDefaultItemsTest, WithoutADoorThereIsNothingToAdd) {
  ExtendExplorerbarWithDefaultItems(*Bar);
  EXPECT_THAT(Parked(), IsEmpty());
}

TEST_F(TDefaultItemsTest, ADoorThatHoldsNothingIsNoneEither) {
  class TClosedDoor : public TInterfaced<IPluginIntegration> {
   public:
    void AddIntegration(const TIntf<IInterface>&) override {}
    void AddIntegrations(const TIntf<IInterfaceList>&) override {}
    TIntf<IIntegrationInfo> GetIntegrationInfo() const override { return {}; }
    TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>&) override { return {}; }
  };
  Plugin->Door = MakeIntf<TClosedDoor>();
  ExtendExplorerbarWithDefaultItems(*Bar);
  EXPECT_THAT(Parked(), IsEmpty());
}

TEST_F(TDefaultItemsTest, ParkedItemsAreShownAmongFurtherOptionsOnce) {
  Inject(u"Erstes");
  ExtendExplorerbarWithDefaultItems(*Bar);
  for (int i = 0; i < 3; ++i) {  // at the start, with each tab, with each category
    RestoreExplorerbarDefaultItems(*Bar);
    EXPECT_THAT(Foreign(), ElementsAre("> Erstes"));
  }
  EXPECT_THAT(Parked(), ElementsAre("> Erstes")) << "it stays there, too";
}

TEST_F(TDefaultItemsTest, TheSkinIsToldOnceAndOfNothingThatStaysAsItIs) {
  Inject(u"Erstes");
  Inject(u"Zweites");
  Skin.Take();
  ExtendExplorerbarWithDefaultItems(*Bar);
  EXPECT_EQ(Skin.Take(), (TChanges{{"TExplorerbarPanelMoreConst", 1}}));
  RestoreExplorerbarDefaultItems(*Bar);
  EXPECT_EQ(Skin.Take(), (TChanges{{"TExplorerBarPanelItemMore", 1}}));
  RestoreExplorerbarDefaultItems(*Bar);
  EXPECT_EQ(Skin.Take(), TChanges());
}

TEST_F(TDefaultItemsTest, WhatATabHasTakenOutComesBack) {
  Inject(u"Erstes");
  ExtendExplorerbarWithDefaultItems(*Bar);
  RestoreExplorerbarDefaultItems(*Bar);
  const TIntf<IExplorerBarPanel> more = Bar->FindPanelById(cExplorerbarPanelMoreId);
  more->Delete(more->GetItems(0));
  EXPECT_THAT(Foreign(), IsEmpty());
  RestoreExplorerbarDefaultItems(*Bar);
  EXPECT_THAT(Foreign(), ElementsAre("> Erstes"));
}

TEST_F(TDefaultItemsTest, WhatAnExtenderRaisesPassesThroughAndTheBracketCloses) {
  Inject(u"Erstes");
  Inject(u"Zweites")->Fails = true;
  Inject(u"Drittes");
  EXPECT_THROW(ExtendExplorerbarWithDefaultItems(*Bar), Exception);
  EXPECT_THAT(Parked(), ElementsAre("> Erstes"));
  Skin.Take();
  RestoreExplorerbarDefaultItems(*Bar);
  EXPECT_EQ(Skin.Take(), (TChanges{{"TExplorerBarPanelItemMore", 1}}));
}

TEST_F(TDefaultItemsTest, ABarThatIsNotFilledHasNoPlaceForThem) {
  const auto extender = Inject(u"Erstes");
  Bar->Clear();
  ExtendExplorerbarWithDefaultItems(*Bar);
  RestoreExplorerbarDefaultItems(*Bar);
  EXPECT_THAT(extender->Panels, IsEmpty());
  const auto foreign =
      MakeIntf<TCommonExplorerBarPanel>(cExplorerbarPanelMoreId, 1, u"pnl", u"Fremd");
  Bar->Add(foreign);
  RestoreExplorerbarDefaultItems(*Bar);
  EXPECT_EQ(foreign->GetCount(), 0);
}

}  // namespace
}  // namespace kk
