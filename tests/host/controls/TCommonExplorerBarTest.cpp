#include "host/controls/TCommonExplorerBar.h"

#include <gtest/gtest.h>

#include "ControlsFixture.h"
#include "host/base/Exception.h"
#include "host/controls/TCommonExplorerBarItem.h"
#include "host/controls/TCommonExplorerBarPanel.h"
#include "host/controls/TLabel.h"
#include "host/controls/TUpdating.h"

namespace kk {
namespace {

using TLinkPtr = TIntf<TCommonExplorerBarLink>;

TLinkPtr Link(TStringView iCaption, int iSortOrder = 0) {
  return MakeIntf<TCommonExplorerBarLink>(NewGuid(), iSortOrder, iCaption);
}

TIntf<IExplorerBarItem> Line(int iSortOrder = 0) {
  return MakeIntf<TCommonExplorerBarSeparator>(NewGuid(), iSortOrder);
}

TIntf<TCommonExplorerBarPanel> Panel(TStringView iName, int iSortOrder) {
  return MakeIntf<TCommonExplorerBarPanel>(NewGuid(), iSortOrder, iName, iName);
}

// "A B |": captions, and a stroke for a line.
template <class TItems>
std::string Captions(const TItems& iItems) {
  std::string captions;
  for (const auto& item : iItems) {
    const bool isLine = item->GetKind() == TExplorerBarItemKind::ikSeparator;
    captions += (captions.empty() ? "" : " ") + (isLine ? "|" : ToUtf8(item->GetCaption()));
  }
  return captions;
}

// A bar in a window, and the skin that looks at it.
class TBarTest : public testing::Test {
 protected:
  TBarTest() { Form.SetObserver(&Skin); }
  ~TBarTest() override {
    Bar->Clear();
    Form.SetObserver(nullptr);
  }

  std::string Groups() const {
    std::string names;
    for (const TKK5SkinExplorerGroup* group : Control.Groups()) {
      names += (names.empty() ? "" : " ") + ToUtf8(group->Caption());
    }
    return names;
  }

  TSkinRecorder Skin;
  TShownForm Form;
  TExplorerBar Control{&Form, u"explrbr"};
  TIntf<TCommonExplorerBar> Bar = MakeIntf<TCommonExplorerBar>(Control);
};

TEST(TCommonExplorerBarItem, EachKindTellsWhatItHas) {
  const TGuid id = NewGuid();
  const auto link = MakeIntf<TCommonExplorerBarLink>(id, 70, u"Ansehen...", TBitmap{u"A"});
  EXPECT_EQ(link->GetKind(), TExplorerBarItemKind::ikLink);
  EXPECT_EQ(link->GetId(), id);
  EXPECT_EQ(link->GetSortOrder(), 70);
  EXPECT_EQ(link->GetCaption(), u"Ansehen...");
  EXPECT_EQ(link->GetImage(), TBitmap{u"A"});
  EXPECT_EQ(link->GetValue(), u"");
  EXPECT_FALSE(link->GetWordWrap());
  EXPECT_TRUE(link->GetVisible());

  const auto text = MakeIntf<TCommonExplorerBarText>(id, 80, u"Notiz");
  EXPECT_EQ(text->GetKind(), TExplorerBarItemKind::ikText);
  EXPECT_EQ(text->GetCaption(), u"Notiz");
  EXPECT_FALSE(text->GetWordWrap());
  EXPECT_TRUE(text->GetImage().IsEmpty());

  const auto value = MakeIntf<TCommonExplorerBarCaptionAndValue>(id, 90, u"Anzahl:", u"3");
  EXPECT_EQ(value->GetKind(), TExplorerBarItemKind::ikCaptionAndValue);
  EXPECT_EQ(value->GetCaption(), u"Anzahl:");
  EXPECT_EQ(value->GetValue(), u"3");
  EXPECT_FALSE(value->GetWordWrap());

  const auto line = MakeIntf<TCommonExplorerBarSeparator>(id, 100);
  EXPECT_EQ(line->GetKind(), TExplorerBarItemKind::ikSeparator);
  EXPECT_EQ(line->GetSortOrder(), 100);
  EXPECT_EQ(line->GetCaption(), u"");
  line->Click();  // nothing
}

TEST(TCommonExplorerBarItem, TellsWhoShowsItOnlyWhatChanges) {
  struct TWatcher : IExplorerBarItemObserver {
    void ItemChanged(IExplorerBarItem& iItem) override { Items.push_back(&iItem); }
    std::vector<IExplorerBarItem*> Items;
  } first, second;
  const TLinkPtr link = Link(u"A");
  const auto text = MakeIntf<TCommonExplorerBarText>();
  const auto value = MakeIntf<TCommonExplorerBarCaptionAndValue>(cEmptyGuid, 0, u"Anzahl:");
  link->AddObserver(first);
  link->AddObserver(second);
  text->AddObserver(first);
  value->AddObserver(first);
  for (int i = 0; i < 2; ++i) {  // the second time, all values are equal
    link->SetCaption(u"B");
    link->SetImage({u"Bild"});
    link->SetWordWrap(true);
    link->SetVisible(false);
    text->SetWordWrap(true);
    value->SetValue(u"3");
  }
  EXPECT_EQ(second.Items, (std::vector<IExplorerBarItem*>(4, link.Get())));
  EXPECT_EQ(first.Items.size(), 6U);
  EXPECT_EQ(link->GetCaption(), u"B");
  EXPECT_EQ(link->GetImage(), TBitmap{u"Bild"});
  EXPECT_TRUE(link->GetWordWrap());
  EXPECT_TRUE(text->GetWordWrap());
  EXPECT_EQ(value->GetValue(), u"3");
  link->RemoveObserver(first);
  link->RemoveObserver(first);
  link->SetVisible(true);
  EXPECT_EQ(first.Items.size(), 6U);
  EXPECT_EQ(second.Items.size(), 5U);
  link->RemoveObserver(second);
  text->RemoveObserver(first);
  value->RemoveObserver(first);
}

TEST(TCommonExplorerBarLink, RaisesItsEventWhenClicked) {
  const TLinkPtr link = Link(u"A");
  link->Click();
  TEventCounter counter;
  link->SetOnClick(counter.Event());
  link->Click();
  EXPECT_EQ(counter.Count, 1);
  EXPECT_EQ(counter.LastSender, nullptr);
}

TEST(TKK5SkinExplorerGroup, ItemsStandByTheirSortOrdersAndEqualOnesAsTheyCame) {
  TKK5SkinExplorerGroup group(nullptr);
  for (const auto& [caption, order] : std::vector<std::pair<const char16_t*, int>>{
           {u"B", 20}, {u"C", 20}, {u"Z", 2147483647}, {u"A", 10}, {u"D", 20}}) {
    group.AddItem(Link(caption, order));
  }
  EXPECT_EQ(Captions(group.Items()), "A B C D Z");
}

TEST(TKK5SkinExplorerGroup, HoldsAnItemOnce) {
  TKK5SkinExplorerGroup group(nullptr);
  const TLinkPtr a = Link(u"A");
  group.AddItem(a);
  group.AddItem(Link(u"B"));
  group.AddItem(a);
  EXPECT_EQ(Captions(group.Items()), "A B");
  group.DeleteItem(a);
  group.DeleteItem(a);
  EXPECT_EQ(Captions(group.Items()), "B");
  group.ClearItems();
  group.ClearItems();
  EXPECT_TRUE(group.Items().empty());
}

TEST(TKK5SkinExplorerGroup, ShowsLinesOnlyWhereTheyPartItems) {
  TKK5SkinExplorerGroup group(nullptr);
  const TLinkPtr a = Link(u"A");
  const TLinkPtr b = Link(u"B");
  const TLinkPtr c = Link(u"C");
  const std::vector<TIntf<IExplorerBarItem>> all = {Line(), a, Line(), b, Line(), c, Line()};
  for (const auto& item : all) group.AddItem(item);
  EXPECT_EQ(Captions(group.VisibleItems()), "A | B | C");
  b->SetVisible(false);
  EXPECT_EQ(Captions(group.VisibleItems()), "A | C");
  a->SetVisible(false);
  EXPECT_EQ(Captions(group.VisibleItems()), "C");
  c->SetVisible(false);
  EXPECT_TRUE(group.VisibleItems().empty());
  EXPECT_EQ(group.Items().size(), 7U);
}

TEST_F(TBarTest, GroupTellsTheSkinWhatChangesInIt) {
  auto group = std::make_unique<TKK5SkinExplorerGroup>(&Control, u"grp", u"Kategorie");
  EXPECT_EQ(group->Caption(), u"Kategorie");
  const TLinkPtr link = Link(u"A");
  Skin.Take();
  group->AddItem(link);
  EXPECT_EQ(Skin.Take(), TNotes{"changed grp"});
  group->AddItem(link);
  EXPECT_EQ(Skin.Take(), TNotes{});
  link->SetCaption(u"B");
  EXPECT_EQ(Skin.Take(), TNotes{"changed grp"});
  group->SetExpanded(false);
  EXPECT_EQ(Skin.Take(), TNotes{"changed grp"});
  group->DeleteItem(link);
  EXPECT_EQ(Skin.Take(), TNotes{"changed grp"});
  group->DeleteItem(link);
  link->SetCaption(u"C");
  EXPECT_EQ(Skin.Take(), TNotes{});
  group->AddItem(link);
  Skin.Take();
  group->ClearItems();
  EXPECT_EQ(Skin.Take(), TNotes{"changed grp"});
  group->ClearItems();
  EXPECT_EQ(Skin.Take(), TNotes{});
  group->AddItem(link);
  group.reset();
  link->SetCaption(u"D");  // nobody is there any more
}

TEST_F(TBarTest, ABracketTellsTheSkinOnceOfEachGroup) {
  TKK5SkinExplorerGroup a(&Control, u"grpA");
  TKK5SkinExplorerGroup b(&Control, u"grpB");
  TKK5SkinExplorerGroup c(&Control, u"grpC");
  const TLinkPtr link = Link(u"A");
  Skin.Take();
  {
    const TUpdating bar(*Bar);
    a.AddItem(link);
    {
      const TUpdating updating(a);
      link->SetCaption(u"B");
      c.AddItem(link);
    }
    link->SetVisible(false);
    EXPECT_EQ(Skin.Take(), TNotes{});
  }
  EXPECT_EQ(Skin.Take(), (TNotes{"changed grpA", "changed grpC"}));
  {
    const TUpdating updating(a);
    b.AddItem(link);
    EXPECT_EQ(Skin.Take(), TNotes{"changed grpB"}) << "it is not in that bracket";
  }
  EXPECT_EQ(Skin.Take(), TNotes{});
  link->SetVisible(true);
  EXPECT_EQ(Skin.Take(), (TNotes{"changed grpA", "changed grpC", "changed grpB"}));
}

TEST_F(TBarTest, ABracketClosesWhenSomethingInItFails) {
  TKK5SkinExplorerGroup group(&Control, u"grp");
  Skin.Take();
  const auto fail = [&] {
    const TUpdating updating(*Bar);
    group.AddItem(Link(u"A"));
    throw Exception(u"Kein Platz");
  };
  EXPECT_THROW(fail(), Exception);
  EXPECT_EQ(Skin.Take(), TNotes{"changed grp"});
  group.AddItem(Link(u"B"));
  EXPECT_EQ(Skin.Take(), TNotes{"changed grp"});
}

TEST_F(TBarTest, UserClicksOnlyALinkThatCanBeSeen) {
  TKK5SkinExplorerGroup group(&Control, u"grp");
  TEventCounter counter;
  const TLinkPtr link = Link(u"A");
  link->SetOnClick(counter.Event());
  EXPECT_FALSE(group.ClickItem(link)) << "it is not in the group";
  group.AddItem(link);
  const auto text = MakeIntf<TCommonExplorerBarText>(cEmptyGuid, 0, u"Notiz");
  group.AddItem(text);
  EXPECT_TRUE(group.ClickItem(link));
  EXPECT_EQ(counter.Count, 1);
  EXPECT_FALSE(group.ClickItem(text));
  EXPECT_FALSE(group.ClickItem(nullptr));

  link->SetVisible(false);
  EXPECT_FALSE(group.ClickItem(link));
  link->SetVisible(true);
  group.SetVisible(false);
  EXPECT_FALSE(group.ClickItem(link));
  group.SetVisible(true);
  Control.SetEnabled(false);
  EXPECT_FALSE(group.ClickItem(link));
  EXPECT_FALSE(group.ClickTitle());
  Control.SetEnabled(true);
  EXPECT_TRUE(group.ClickTitle());
  EXPECT_FALSE(group.Expanded());
  EXPECT_FALSE(group.ClickItem(link)) << "the group is folded away";
  EXPECT_TRUE(group.ClickTitle());
  EXPECT_TRUE(group.Expanded());
  EXPECT_EQ(counter.Count, 1);
}

TEST_F(TBarTest, AClickMayTakeItsPanelOutOfTheBar) {
  TLinkPtr link = Link(u"A");
  auto panel = Panel(u"Mehr", 1);
  panel->Add(link);
  Bar->Add(panel);
  TKK5SkinExplorerGroup& group = panel->GetGroup();
  TEventCounter counter;
  counter.OnEvent = [&] {
    panel->Clear();
    Bar->Clear();
    panel = nullptr;
    link = nullptr;
  };
  link->SetOnClick(counter.Event());
  EXPECT_TRUE(group.ClickItem(group.Items().front()));
  EXPECT_TRUE(Control.Groups().empty());
}

TEST_F(TBarTest, PanelsStandByTheirSortOrdersAmongTheGroups) {
  EXPECT_EQ(Bar->GetCount(), 0);
  TKK5SkinExplorerGroup category(&Control, u"", u"Kategorie");
  const auto details = Panel(u"Details", 200);
  Bar->Add(details);
  TKK5SkinExplorerGroup reminder(&Control, u"", u"Erinnerung");
  TLabel other(&Control);  // no group
  const auto more = Panel(u"Mehr", 300);
  Bar->Add(more);
  const auto early = Panel(u"Früh", 100);
  Bar->Add(early);
  const auto middle = Panel(u"Mitte", 200);
  Bar->Add(middle);
  const auto late = Panel(u"Spät", 300);
  Bar->Add(late);
  Bar->Add(early);
  EXPECT_EQ(Groups(), "Kategorie Früh Details Erinnerung Mitte Mehr Spät");
  ASSERT_EQ(Bar->GetCount(), 5);
  EXPECT_EQ(Bar->GetPanels(0), TIntf<IExplorerBarPanel>(early));
  EXPECT_EQ(Bar->GetPanels(4), TIntf<IExplorerBarPanel>(late));
  EXPECT_THROW(Bar->GetPanels(5), EListError);
  EXPECT_EQ(Bar->FindPanelById(more->GetId()), TIntf<IExplorerBarPanel>(more));
  EXPECT_FALSE(Bar->FindPanelById(NewGuid()));
  EXPECT_EQ(&Bar->GetControl(), &Control);

  Bar->Delete(details);
  Bar->Delete(details);
  EXPECT_EQ(Groups(), "Kategorie Früh Erinnerung Mitte Mehr Spät");
  Bar->Clear();
  EXPECT_EQ(Groups(), "Kategorie Erinnerung");
  EXPECT_EQ(Bar->GetCount(), 0);
}

TEST_F(TBarTest, InitAddsNothingByItself) {
  Bar->Init();
  EXPECT_EQ(Bar->GetCount(), 0);
}

TEST(TCommonExplorerBarPanel, IsAListOfItems) {
  const TGuid id = NewGuid();
  const auto panel = MakeIntf<TCommonExplorerBarPanel>(id, 300, u"pnlMore", u"Weitere Optionen");
  EXPECT_EQ(panel->GetId(), id);
  EXPECT_EQ(panel->GetSortOrder(), 300);
  EXPECT_EQ(panel->GetGroup().Name(), u"pnlMore");
  EXPECT_EQ(panel->GetGroup().Caption(), u"Weitere Optionen");
  const TLinkPtr a = Link(u"A", 2);
  const TLinkPtr b = Link(u"B", 1);
  panel->Add(a);
  panel->Add(b);
  ASSERT_EQ(panel->GetCount(), 2);
  EXPECT_EQ(panel->GetItems(0), TIntf<IExplorerBarItem>(b));
  EXPECT_THROW(panel->GetItems(2), EListError);
  EXPECT_THROW(panel->GetItems(-1), EListError);
  panel->Delete(b);
  EXPECT_EQ(Captions(panel->GetGroup().Items()), "A");
  panel->Clear();
  EXPECT_EQ(panel->GetCount(), 0);
}

TEST(TCommonExplorerBarPanel, AppendSharesTheItemsAndAddsEachOnce) {
  const auto from = Panel(u"Von", 1);
  const auto to = Panel(u"Nach", 2);
  const TLinkPtr a = Link(u"A", 1);
  const TLinkPtr shared = Link(u"B", 2);
  from->Add(a);
  from->Add(shared);
  to->Add(shared);
  to->Add(Link(u"C", 3));
  for (int i = 0; i < 3; ++i) to->Append(from, false);
  EXPECT_EQ(Captions(to->GetGroup().Items()), "A B C");
  EXPECT_EQ(Captions(from->GetGroup().Items()), "A B") << "they stay there, too";
  to->Append(from, true);
  EXPECT_EQ(Captions(to->GetGroup().Items()), "A B");
  to->Append(to, true);
  EXPECT_EQ(Captions(to->GetGroup().Items()), "A B");
}

TEST_F(TBarTest, AnAppendThatBringsNothingNewTellsTheSkinNothing) {
  const auto from = Panel(u"Von", 1);
  const auto to = Panel(u"Nach", 2);
  from->Add(Link(u"A"));
  from->Add(Link(u"B"));
  Bar->Add(to);
  Skin.Take();
  to->Append(from, false);
  EXPECT_EQ(Skin.Take(), TNotes{"changed Nach"});
  to->Append(from, false);
  EXPECT_EQ(Skin.Take(), TNotes{});
}

TEST_F(TBarTest, AnItemInSeveralPanelsChangesInAllOfThem) {
  const auto a = Panel(u"A", 1);
  const auto b = Panel(u"B", 2);
  Bar->Add(a);
  Bar->Add(b);
  const TLinkPtr link = Link(u"Ansehen...");
  a->Add(link);
  b->Append(a, false);
  Skin.Take();
  link->SetVisible(false);
  EXPECT_EQ(Skin.Take(), (TNotes{"changed A", "changed B"}));
}

TEST(TExplorerBar, MayDieBeforeItsPanels) {
  const auto panel = Panel(u"A", 1);
  {
    TExplorerBar control(nullptr);
    const auto bar = MakeIntf<TCommonExplorerBar>(control);
    bar->Add(panel);
    EXPECT_EQ(panel->GetGroup().Parent(), &control);
  }
  EXPECT_EQ(panel->GetGroup().Parent(), nullptr);
}

}  // namespace
}  // namespace kk
