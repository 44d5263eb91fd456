#include "host/options/TfrmOptions.h"

#include "TOptionsWorld.h"
#include "host/contract/TCommonSettingsExtender.h"
#include "host/controls/TCommonSettingsNode.h"
#include "host/controls/TfrmMessageDlg.h"
#include "host/options/SettingsNodes.h"
#include "host/options/THostSettingsNode.h"
#include "host/options/TframOptionsGeneral.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A page of a plug-in, with one edit.
class TFakePage : public TCommonSettingsNode {
 public:
  explicit TFakePage(TStringView iCaption, int iSortOrder = 0)
      : FCaption(iCaption), FSortOrder(iSortOrder) {}

  TGuid GetId() const override {
    if (IdFails) throw Exception(u"Seite kaputt");
    return Id;
  }
  TString GetCaption() const override { return FCaption; }
  int GetSortOrder() const override { return FSortOrder; }
  bool ValidateSettings(TString& oMessage, TControl*& oControl) override {
    Calls.push_back("validate");
    if (Complaint.empty()) return TCommonSettingsNode::ValidateSettings(oMessage, oControl);
    oMessage = Complaint;
    oControl = &Edit;
    return false;
  }
  void SettingsChanged() override {
    Calls.push_back("changed");
    throw Exception(u"geht niemanden an");
  }
  void LoadSettings() override {
    Calls.push_back("load");
    if (!LoadFailure.empty()) throw Exception(LoadFailure);
  }
  void SaveSettings() override {
    Calls.push_back("save");
    if (!SaveFailure.empty()) throw Exception(SaveFailure);
  }
  TPanel& GetFrame() override { return Frame; }

  TGuid Id = NewGuid();
  TPanel Frame{nullptr, u"framFake"};
  TEdit Edit{&Frame, u"edtFake"};
  std::vector<std::string> Calls;
  TString Complaint;
  TString LoadFailure;
  TString SaveFailure;
  bool IdFails = false;

 private:
  TString FCaption;
  int FSortOrder;
};

TIntf<ISettingsExtender> ExtenderOf(const TGuid& iBefore,
                                    const std::vector<TIntf<TFakePage>>& iPages) {
  const auto extender = MakeIntf<TCommonSettingsExtender>();
  for (const auto& page : iPages) extender->AddNodeBefore(iBefore, TIntf<ISettingsNode>(page));
  return TIntf<ISettingsExtender>(extender);
}

std::vector<std::string> CaptionsOf(const std::vector<TIntf<ISettingsNode>>& iNodes) {
  std::vector<std::string> captions;
  for (const auto& node : iNodes) captions.push_back(ToUtf8(node->GetCaption()));
  return captions;
}

class TSettingsNodesTest : public TOptionsTest {
 protected:
  std::vector<std::string> Ordered(const std::vector<TIntf<ISettingsExtender>>& iExtenders) {
    return CaptionsOf(OrderedSettingsNodes(HostSettingsNodes({}), iExtenders));
  }
};

TEST_F(TSettingsNodesTest, TheHostsPagesStandInTheirOrder) {
  EXPECT_THAT(Ordered({}),
              ElementsAre("Allgemein", "E-Mail", "SMS", "Kalender", "Benachrichtigung"));
}

TEST_F(TSettingsNodesTest, PagesOfPluginsStandBeforeTheHostsThatIsMeantForIt) {
  const auto list = MakeIntf<TFakePage>(u"Beobachten");
  EXPECT_THAT(
      Ordered({ExtenderOf(cSettingsNodeIdPluginsBefore, {list})}),
      ElementsAre("Allgemein", "Beobachten", "E-Mail", "SMS", "Kalender", "Benachrichtigung"));
}

TEST_F(TSettingsNodesTest, SeveralBeforeTheSamePageStandByTheirSortOrders) {
  const auto extender = ExtenderOf(cSettingsNodeIdGeneral,
                                   {MakeIntf<TFakePage>(u"c", 2), MakeIntf<TFakePage>(u"a", 1)});
  const auto other = ExtenderOf(cSettingsNodeIdGeneral, {MakeIntf<TFakePage>(u"b", 1)});
  EXPECT_THAT(Ordered({extender, other}), ElementsAre("a", "b", "c", "Allgemein", "E-Mail", "SMS",
                                                      "Kalender", "Benachrichtigung"));
}

TEST_F(TSettingsNodesTest, APageMayStandBeforeAnotherPluginsThatComesLater) {
  const auto late = MakeIntf<TFakePage>(u"spät", 9);
  const auto early = ExtenderOf(late->Id, {MakeIntf<TFakePage>(u"früh")});
  EXPECT_THAT(
      Ordered({early, ExtenderOf(cSettingsNodeIdGeneral, {late})}),
      ElementsAre("früh", "spät", "Allgemein", "E-Mail", "SMS", "Kalender", "Benachrichtigung"));
}

TEST_F(TSettingsNodesTest, APageWithoutItsNeighbourStandsAtTheEnd) {
  EXPECT_THAT(Ordered({ExtenderOf(NewGuid(), {MakeIntf<TFakePage>(u"fern")})}),
              ElementsAre("Allgemein", "E-Mail", "SMS", "Kalender", "Benachrichtigung", "fern"));
}

TEST_F(TSettingsNodesTest, WhatIsMissingOrRaisesIsLeftOut) {
  const auto broken = MakeIntf<TFakePage>(u"kaputt");
  broken->IdFails = true;
  const auto extender = MakeIntf<TCommonSettingsExtender>();
  extender->AddNodeBefore(cSettingsNodeIdGeneral, TIntf<ISettingsNode>(broken));
  extender->AddNodeBefore(cSettingsNodeIdGeneral, TIntf<ISettingsNode>());
  extender->AddNodeBefore(cSettingsNodeIdGeneral,
                          TIntf<ISettingsNode>(MakeIntf<TFakePage>(u"heil")));
  EXPECT_THAT(Ordered({TIntf<ISettingsExtender>(extender)}),
              ElementsAre("heil", "Allgemein", "E-Mail", "SMS", "Kalender", "Benachrichtigung"));
}

TEST_F(TSettingsNodesTest, APageOfTheHostsForwardsToItsFrame) {
  const auto nodes = HostSettingsNodes({});
  EXPECT_EQ(nodes[0]->GetId(), cSettingsNodeIdGeneral);
  EXPECT_EQ(nodes[1]->GetId(), cSettingsNodeIdPluginsBefore);
  auto& frame = dynamic_cast<TframOptionsGeneral&>(nodes[0]->GetFrame());
  File.WriteString(u"General", u"StartInTray", u"1");
  nodes[0]->LoadSettings();
  EXPECT_TRUE(frame.chckbxStartInTray.Checked());
  frame.chckbxStartInTray.SetChecked(false);
  TString message;
  TControl* control = nullptr;
  EXPECT_TRUE(nodes[0]->ValidateSettings(message, control));
  nodes[0]->SaveSettings();
  nodes[0]->SettingsChanged();
  EXPECT_FALSE(File.HasKey(u"General", u"StartInTray"));
}

class TfrmOptionsTest : public TOptionsTest {
 protected:
  using TStep = std::function<void(TfrmOptions&)>;
  /// Shows the dialog with the two pages; the user does this in it.
  bool Show(const TStep& iStep) {
    Forms.Expect<TfrmOptions>(iStep);
    TfrmOptions form(nullptr, {TIntf<ISettingsNode>(First), TIntf<ISettingsNode>(Second)});
    return form.ShowModal() == cModalOK;
  }
  static std::string Selected(const TfrmOptions& iForm) {
    return ToUtf8(iForm.SelectedPage()->Caption());
  }

  TIntf<TFakePage> First = MakeIntf<TFakePage>(u"Eins");
  TIntf<TFakePage> Second = MakeIntf<TFakePage>(u"Zwei & mehr");
};

TEST_F(TfrmOptionsTest, ShowsThePagesAndTheSelectedOnesFrame) {
  EXPECT_FALSE(Show([&](TfrmOptions& ioForm) {
    EXPECT_EQ(ioForm.Caption(), u"Einstellungen");
    EXPECT_EQ(ioForm.FocusedControl(), &ioForm.vstPages);
    EXPECT_EQ(Selected(ioForm), "Eins");
    EXPECT_TRUE(First->Edit.CanUse());
    EXPECT_FALSE(Second->Edit.CanUse());
    TVirtualNode& node = *ioForm.vstPages.First()->NextSibling();
    EXPECT_EQ(ioForm.vstPages.Text(node), u"Zwei & mehr");
    EXPECT_TRUE(ioForm.vstPages.FocusNode(node));
    EXPECT_EQ(ioForm.lblCaption.Caption(), u"Zwei & mehr");
    EXPECT_FALSE(First->Edit.CanUse());
    EXPECT_TRUE(Second->Edit.CanUse());
    EXPECT_TRUE(ioForm.SelectPage(First->Id));
    EXPECT_EQ(ioForm.vstPages.SelectedNode(), ioForm.vstPages.First());
    EXPECT_FALSE(ioForm.SelectPage(NewGuid()));
    EXPECT_EQ(Selected(ioForm), "Eins");
    ioForm.btnCancel.Click();
  }));
  EXPECT_THAT(First->Calls, ElementsAre("load"));
  EXPECT_EQ(Changes, 0);
}

TEST_F(TfrmOptionsTest, AllPagesStandInOnePlaceOverTheWindowThatOpensIt) {
  Show([&](TfrmOptions& ioForm) {
    EXPECT_EQ(ioForm.Position(), TPosition::poOwnerFormCenter);
    EXPECT_EQ(ioForm.pnlPages.Arrangement(), TArrangement::arStack);
    EXPECT_TRUE(ioForm.pnlPages.Stretches());
    EXPECT_EQ(ioForm.pnlPages.Children().size(), 2u);
    EXPECT_TRUE(ioForm.SelectedPage()->Place().Stretches());
    EXPECT_EQ(First->Frame.Parent(), &ioForm.SelectedPage()->Place());
    EXPECT_TRUE(First->Frame.Stretches());
    ioForm.btnCancel.Click();
  });
}

TEST_F(TfrmOptionsTest, TheFramesAreThePagesAgainAtTheEnd) {
  for (int i = 0; i < 2; ++i) {
    Show([&](TfrmOptions& ioForm) {
      EXPECT_EQ(First->Edit.Form(), &ioForm);
      ioForm.btnCancel.Click();
    });
    EXPECT_EQ(First->Frame.Parent(), nullptr);
  }
}

TEST_F(TfrmOptionsTest, OKValidatesAllPagesThenSavesAllThenTellsAll) {
  EXPECT_TRUE(Show([](TfrmOptions& ioForm) { ioForm.btnOK.Click(); }));
  EXPECT_THAT(First->Calls, ElementsAre("load", "validate", "save", "changed"));
  EXPECT_THAT(Second->Calls, ElementsAre("load", "validate", "save", "changed"));
  EXPECT_EQ(Changes, 1);
}

TEST_F(TfrmOptionsTest, ApplySavesAndTheDialogStays) {
  EXPECT_FALSE(Show([&](TfrmOptions& ioForm) {
    ioForm.btnApply.Click();
    EXPECT_THAT(Second->Calls, ElementsAre("load", "validate", "save", "changed"));
    EXPECT_TRUE(ioForm.IsModal());
    ioForm.btnCancel.Click();
  }));
  EXPECT_EQ(Changes, 1);
}

TEST_F(TfrmOptionsTest, APageThatRefusesIsShownAndNothingIsSaved) {
  Second->Complaint = u"So geht es nicht.";
  EXPECT_FALSE(Show([&](TfrmOptions& ioForm) {
    Forms.ExpectMessage(u"So geht es nicht.");
    ioForm.btnOK.Click();
    EXPECT_TRUE(ioForm.IsModal());
    EXPECT_EQ(Selected(ioForm), "Zwei & mehr");
    EXPECT_EQ(ioForm.FocusedControl(), &Second->Edit);
    ioForm.btnCancel.Click();
  }));
  EXPECT_THAT(First->Calls, ElementsAre("load", "validate"));
  EXPECT_EQ(Changes, 0);
}

TEST_F(TfrmOptionsTest, APageThatCantBeSavedIsShownAndCanBeTriedAgain) {
  Second->SaveFailure = u"Platte voll";
  EXPECT_TRUE(Show([&](TfrmOptions& ioForm) {
    Forms.ExpectMessage(u"Die Seite \"Zwei & mehr\" konnte nicht gespeichert werden: Platte voll");
    ioForm.btnOK.Click();
    EXPECT_TRUE(ioForm.IsModal());
    EXPECT_EQ(Selected(ioForm), "Zwei & mehr");
    EXPECT_EQ(Changes, 0);
    Second->SaveFailure.clear();
    ioForm.btnOK.Click();
  }));
  EXPECT_EQ(Changes, 1);
}

TEST_F(TfrmOptionsTest, APageThatCantLoadSaysSoAndIsNotSaved) {
  First->LoadFailure = u"Rot & Grün";
  EXPECT_TRUE(Show([&](TfrmOptions& ioForm) {
    EXPECT_FALSE(ioForm.SelectedPage()->IsLoaded());
    EXPECT_TRUE(ioForm.SelectedPage()->Failure().CanUse());
    EXPECT_EQ(ToUtf8(ioForm.SelectedPage()->Failure().Caption()),
              "Diese Seite kann nicht gezeigt werden: Rot & Grün");
    EXPECT_EQ(ioForm.lblCaption.Caption(), u"Eins");
    ioForm.btnOK.Click();
  }));
  EXPECT_THAT(First->Calls, ElementsAre("load", "changed"));
  EXPECT_THAT(Second->Calls, ElementsAre("load", "validate", "save", "changed"));
}

TEST_F(TfrmOptionsTest, ReturnIsOKAndEscapeIsCancel) {
  EXPECT_TRUE(Show([&](TfrmOptions&) { EXPECT_TRUE(First->Edit.PressKey(cKeyReturn)); }));
  EXPECT_FALSE(Show([&](TfrmOptions&) { EXPECT_TRUE(First->Edit.PressKey(cKeyEscape)); }));
}

TEST_F(TfrmOptionsTest, WithoutAPageThereIsNothingToSelect) {
  const TfrmOptions form(nullptr, {});
  EXPECT_EQ(form.SelectedPage(), nullptr);
}

TEST_F(TfrmOptionsTest, DisplayShowsTheHostsPagesAndThoseOfPlugins) {
  Forms.Expect<TfrmOptions>([](TfrmOptions& ioForm) {
    std::vector<std::string> captions;
    for (TVirtualNode* node = ioForm.vstPages.First(); node != nullptr; node = node->Next()) {
      captions.push_back(ToUtf8(ioForm.vstPages.Text(*node)));
    }
    EXPECT_THAT(captions,
                ElementsAre("Allgemein", "Eins", "E-Mail", "SMS", "Kalender", "Benachrichtigung"));
    ioForm.btnOK.Click();
  });
  EXPECT_TRUE(TfrmOptions::Display(nullptr, {ExtenderOf(cSettingsNodeIdPluginsBefore, {First})},
                                   TIntf<IApplication>()));
  EXPECT_FALSE(Folder.Has(u"settings.ini"));  // what nobody changed is not written
}

}  // namespace
}  // namespace kk
