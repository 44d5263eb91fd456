#include "host/controls/TCommonToolbarKK.h"

#include <gtest/gtest.h>

#include "tests/support/TFakeToolbar.h"

namespace kk {
namespace {

constexpr TGuid cOwn = GuidLiteral("{11111111-0000-0000-0000-000000000001}");
constexpr TGuid cOther = GuidLiteral("{22222222-0000-0000-0000-000000000002}");

struct TToolbarWorld {
  TToolbarWorld() {
    Host->Add(Own);
    Host->Add(Other);
  }
  TToolButton& Button(int iIndex) {
    return dynamic_cast<TToolButton&>(*Bar.Children().at(static_cast<size_t>(iIndex)));
  }

  TIntf<TFakeSectionHost> Host = MakeIntf<TFakeSectionHost>();
  TIntf<TFakeToolbarButton> Own = MakeIntf<TFakeToolbarButton>(100, cOwn, u"Beobachten");
  TIntf<TFakeToolbarButton> Other = MakeIntf<TFakeToolbarButton>(10, cOther, u"Suchen");
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
  const auto host = MakeIntf<TFakeSectionHost>();
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
  const auto host = MakeIntf<TFakeSectionHost>();
  { TSectionFake().Initialize(host); }
  EXPECT_EQ(host->Calls, (std::vector<std::string>{"add", "remove"}));
}

}  // namespace
}  // namespace kk
