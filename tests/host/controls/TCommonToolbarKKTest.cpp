#include "host/controls/TCommonToolbarKK.h"

#include <gtest/gtest.h>

#include "host/contract/ISectionHost.h"
#include "host/contract/TCommonToolbar.h"
#include "host/controls/TfrmKKCommonSectionBase.h"

namespace kk {
namespace {

constexpr TGuid cOwn = GuidLiteral("{11111111-0000-0000-0000-000000000001}");
constexpr TGuid cOther = GuidLiteral("{22222222-0000-0000-0000-000000000002}");

class TButtonFake : public TCommonToolbarButton {
 public:
  TButtonFake(const TGuid& iPlugin, int iSortOrder, TString iCaption)
      : FPlugin(iPlugin), FSortOrder(iSortOrder), FCaption(std::move(iCaption)) {}

  TGuid GetId() const override { return FPlugin; }
  TGuid GetPluginId() const override { return FPlugin; }
  int GetSortOrder() const override { return FSortOrder; }
  TString GetCaption() const override { return FCaption; }
  TBitmap GetImage() override { return {u"IMAGE"}; }
  TBitmap GetImageSelected() override { return {u"SELECTED"}; }
  void Click() override { ++Clicks; }

  int Clicks = 0;

 private:
  TGuid FPlugin;
  int FSortOrder;
  TString FCaption;
};

/// A host with a screen, as far as sections see it.
class THostFake : public TInterfaced<IApplication, IToolbarExtender, ISectionHost> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm*) override { return false; }
  void Add(const TIntf<IToolbarButton>& iButton) override { Buttons.push_back(iButton); }
  int GetCount() const override { return static_cast<int>(Buttons.size()); }
  TIntf<IToolbarButton> GetItems(int iIndex) const override {
    return Buttons[static_cast<size_t>(iIndex)];
  }
  void AddSection(TfrmKKCommonSectionBase&) override { Calls.push_back("add"); }
  void RemoveSection(TfrmKKCommonSectionBase&) override { Calls.push_back("remove"); }
  void ShowSection(TfrmKKCommonSectionBase& ioForm) override {
    Calls.push_back(ioForm.WasShown() ? "show" : "show before the first time");
  }

  std::vector<TIntf<IToolbarButton>> Buttons;
  std::vector<std::string> Calls;
};

struct TToolbarWorld {
  TToolbarWorld() {
    Host->Add(Own);
    Host->Add(Other);
  }
  TToolButton& Button(int iIndex) {
    return dynamic_cast<TToolButton&>(*Bar.Children().at(static_cast<size_t>(iIndex)));
  }

  TIntf<THostFake> Host = MakeIntf<THostFake>();
  TIntf<TButtonFake> Own = MakeIntf<TButtonFake>(cOwn, 100, u"Beobachten");
  TIntf<TButtonFake> Other = MakeIntf<TButtonFake>(cOther, 10, u"Suchen");
  TForm Form{nullptr, u"Form"};
  TToolbar Bar{&Form, u"tlbrNavigation"};
};

TEST(TCommonToolbarKK, ShowsTheButtonsOfTheHostByTheirSortOrders) {
  TToolbarWorld world;
  TCommonToolbarKK toolbar(world.Host, cOwn, world.Bar);
  EXPECT_TRUE(world.Bar.Children().empty());
  toolbar.Init();
  ASSERT_EQ(world.Bar.Children().size(), 2u);
  EXPECT_EQ(world.Button(0).Caption(), u"Suchen");
  EXPECT_EQ(world.Button(1).Caption(), u"Beobachten");
  EXPECT_EQ(world.Button(0).Hint(), u"Suchen");
}

TEST(TCommonToolbarKK, TheSectionsOwnButtonIsTheSelectedOne) {
  TToolbarWorld world;
  TCommonToolbarKK toolbar(world.Host, cOwn, world.Bar);
  toolbar.Init();
  EXPECT_FALSE(world.Button(0).Selected());
  EXPECT_EQ(world.Button(0).Image(), (TBitmap{u"IMAGE"}));
  EXPECT_TRUE(world.Button(1).Selected());
  EXPECT_EQ(world.Button(1).Image(), (TBitmap{u"SELECTED"}));
}

TEST(TCommonToolbarKK, AClickIsThePluginsClick) {
  TToolbarWorld world;
  world.Form.Show();
  TCommonToolbarKK toolbar(world.Host, cOwn, world.Bar);
  toolbar.Init();
  EXPECT_TRUE(world.Button(0).Click());
  EXPECT_EQ(world.Other->Clicks, 1);
  EXPECT_EQ(world.Own->Clicks, 0);
}

TEST(TCommonToolbarKK, ASecondInitMakesNoSecondButtonsAndItsEndTakesThemAway) {
  TToolbarWorld world;
  {
    TCommonToolbarKK toolbar(world.Host, cOwn, world.Bar);
    toolbar.Init();
    toolbar.Init();
    EXPECT_EQ(world.Bar.Children().size(), 2u);
  }
  EXPECT_TRUE(world.Bar.Children().empty());
}

TEST(TCommonToolbarKK, WithoutAHostThatHasAToolbarItStaysEmpty) {
  TToolbarWorld world;
  TCommonToolbarKK toolbar(nullptr, cOwn, world.Bar);
  toolbar.Init();
  EXPECT_TRUE(world.Bar.Children().empty());
}

class TSectionFake : public TfrmKKCommonSectionBase {
 public:
  TSectionFake() : TfrmKKCommonSectionBase(nullptr, u"TSectionFake") {}
  TGuid GetFormID() const override { return cOwn; }
  TString GetIniSectionName() const override { return u"Section"; }
};

TEST(ISectionHost, HearsWhereASectionIsAndEachTimeThatItIsShown) {
  const auto host = MakeIntf<THostFake>();
  {
    TSectionFake section;
    section.Initialize(host);
    section.Show();
    section.Show();
    section.Uninitialize();
  }
  EXPECT_EQ(host->Calls, (std::vector<std::string>{"add", "show", "show", "remove"}));
}

TEST(ISectionHost, ASectionThatDiesWithoutItsEndIsTakenOutAllTheSame) {
  const auto host = MakeIntf<THostFake>();
  { TSectionFake().Initialize(host); }
  EXPECT_EQ(host->Calls, (std::vector<std::string>{"add", "remove"}));
}

}  // namespace
}  // namespace kk
