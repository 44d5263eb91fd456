#include "apps/desktop/skin/TPopupMenu.h"

#include <gmock/gmock.h>

#include <QActionGroup>
#include <QTest>
#include <QTimer>

#include "TShownWindow.h"
#include "host/base/Exception.h"

namespace kk {
namespace {

using testing::ElementsAre;

struct TNeedsQt {
  TNeedsQt() { NeedQt(); }
};

class TMenuWorld : private TNeedsQt {
 public:
  TMenuWorld() { Widget.show(); }
  QMenu& Open() {
    TPopupMenu::Open(Widget, *Menu, {10, 10});
    return *OpenMenu();
  }
  TNotifyEvent Event() { return TNotifyEvent::Of<&TMenuWorld::Clicked>(this); }

  QWidget Widget;
  std::unique_ptr<TMenuItem> Menu = std::make_unique<TMenuItem>();
  int Clicks = 0;
  std::function<void()> OnClick;

 private:
  void Clicked(TObject*) {
    ++Clicks;
    if (OnClick) OnClick();
  }
};

TEST(TPopupMenu, ShowsTheEntriesAsTheyAreAtThatMoment) {
  TMenuWorld world;
  world.Menu->Add(u"A & B").SetDefault(true);
  world.Menu->Add(TMenuItem::cSeparator);
  TMenuItem& off = world.Menu->Add(u"Löschen");
  off.SetEnabled(false);
  off.SetShortCut(u"Shift+Ctrl+Del");
  off.SetHint(u"<i>Hinweis");
  TMenuItem& sub = world.Menu->Add(u"Verschieben nach...");
  sub.Add(u"Autos");
  world.Menu->Add(u"verborgen").SetVisible(false);
  QMenu& menu = world.Open();
  const QList<QAction*> actions = menu.actions();
  ASSERT_EQ(actions.size(), 5);
  EXPECT_EQ(actions[0]->text(), QStringLiteral("A && B"));
  EXPECT_EQ(menu.defaultAction(), actions[0]);
  EXPECT_TRUE(actions[0]->isEnabled());
  EXPECT_TRUE(actions[1]->isSeparator());
  EXPECT_FALSE(actions[2]->isEnabled());
  EXPECT_EQ(actions[2]->shortcut(), QKeySequence(Qt::SHIFT | Qt::CTRL | Qt::Key_Delete));
  EXPECT_TRUE(actions[2]->isShortcutVisibleInContextMenu());
  EXPECT_TRUE(actions[2]->toolTip().contains(QStringLiteral("&lt;i&gt;Hinweis")));
  ASSERT_NE(actions[3]->menu(), nullptr);
  EXPECT_EQ(actions[3]->menu()->actions().front()->text(), QStringLiteral("Autos"));
  EXPECT_FALSE(actions[4]->isVisible());
  menu.close();
}

TEST(TPopupMenu, DrawsOneOfSeveralChoicesAsAChoiceAndACheckAsACheck) {
  TMenuWorld world;
  for (const TStringView caption : {u"eins", u"zwei"}) world.Menu->Add(caption).SetRadio(true);
  world.Menu->GetItems(1).SetChecked(true);
  world.Menu->Add(u"drei").SetChecked(true);
  world.Menu->Add(u"vier");
  QMenu& menu = world.Open();
  const QList<QAction*> actions = menu.actions();
  EXPECT_TRUE(actions[0]->isCheckable());
  EXPECT_FALSE(actions[0]->isChecked());
  EXPECT_TRUE(actions[1]->isChecked());
  EXPECT_EQ(actions[0]->actionGroup(), actions[1]->actionGroup());
  EXPECT_NE(actions[0]->actionGroup(), nullptr);
  EXPECT_TRUE(actions[2]->isChecked());
  EXPECT_EQ(actions[2]->actionGroup(), nullptr);
  EXPECT_FALSE(actions[3]->isCheckable());
  menu.close();
}

TEST(TPopupMenu, ClicksAnEntryAndIsGoneThen) {
  TMenuWorld world;
  world.Menu->Add(u"Autos").Add(u"Alt", world.Event());
  const QPointer<QMenu> menu = &world.Open();
  menu->actions().front()->menu()->actions().front()->trigger();
  EXPECT_EQ(world.Clicks, 1);
  menu->close();
  EXPECT_TRUE(CrankUntil([&] { return menu.isNull(); }));
}

TEST(TPopupMenu, LivesAsLongAsItsClickThoughThatMayRunALoopOfItsOwn) {
  TMenuWorld world;
  world.Menu->Add(u"Autos", world.Event());
  const QPointer<QMenu> menu = &world.Open();
  world.OnClick = [&] {
    EXPECT_FALSE(menu->isVisible());
    bool isOver = false;
    QTimer::singleShot(50, menu, [&] { isOver = true; });
    EXPECT_TRUE(CrankUntil([&] { return isOver; }));
    EXPECT_FALSE(menu.isNull());
  };
  menu->setActiveAction(menu->actions().front());
  QTest::keyClick(menu, Qt::Key_Return);
  EXPECT_EQ(world.Clicks, 1);
  EXPECT_TRUE(CrankUntil([&] { return menu.isNull(); }));
}

TEST(TPopupMenu, MayLoseItsParentInItsOwnClick) {
  TMenuWorld world;
  world.Menu->Add(u"Autos", world.Event());
  auto parent = std::make_unique<QWidget>();
  parent->show();
  TPopupMenu::Open(*parent, *world.Menu, {10, 10});
  const QPointer<QMenu> menu = OpenMenu();
  world.OnClick = [&] { parent.reset(); };
  menu->actions().front()->trigger();
  EXPECT_EQ(world.Clicks, 1);
  EXPECT_TRUE(menu.isNull());
}

TEST(TPopupMenu, LetsAnEntryFreeItselfAndAllOthersInItsOwnClick) {
  TMenuWorld world;
  world.Menu->Add(u"Autos", world.Event());
  world.Menu->Add(u"Bücher", world.Event());
  QMenu& menu = world.Open();
  const QList<QAction*> actions = menu.actions();
  world.OnClick = [&] { world.Menu->Clear(); };
  actions[0]->trigger();
  EXPECT_EQ(world.Clicks, 1);
  EXPECT_FALSE(actions[1]->isEnabled());
  EXPECT_FALSE(menu.isVisible());
}

TEST(TPopupMenu, ClosesWhenItsMenuDies) {
  TMenuWorld world;
  world.Menu->Add(u"Autos").Add(u"Alt", world.Event());
  const QPointer<QMenu> menu = &world.Open();
  world.Menu.reset();
  EXPECT_FALSE(menu->isVisible());
  EXPECT_TRUE(CrankUntil([&] { return menu.isNull(); }));
}

TEST(TPopupMenu, FollowsAnEntryThatIsDisabledWhileItStands) {
  TMenuWorld world;
  TMenuItem& entry = world.Menu->Add(u"Autos", world.Event());
  QMenu& menu = world.Open();
  entry.SetEnabled(false);
  EXPECT_FALSE(menu.actions().front()->isEnabled());
  menu.actions().front()->trigger();
  EXPECT_EQ(world.Clicks, 0);
  menu.close();
}

TEST(TPopupMenu, DoesNotOpenWithoutEntries) {
  const TMenuWorld world;
  QWidget widget;
  TPopupMenu::Open(widget, *world.Menu, {});
  EXPECT_EQ(OpenMenu(), nullptr);
}

TEST(TPopupMenu, CutsNamesOffThatWouldBeWiderThanTheScreen) {
  TMenuWorld world;
  world.Menu->Add(TString(5000, u'x') + u"\tmit\nUmbruch");
  QMenu& menu = world.Open();
  EXPECT_LT(menu.actions().front()->text().size(), 200);
  menu.close();
}

}  // namespace
}  // namespace kk
