#include "apps/desktop/skin/TExplorerBarBinder.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QScrollBar>
#include <QToolButton>

#include "TShownWindow.h"
#include "apps/desktop/skin/TLinkButton.h"
#include "host/controls/TCommonExplorerBarItem.h"
#include "host/controls/TEdit.h"
#include "host/controls/TUpdating.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// "Kategorie" with a link, a line, a caption with its value and a text.
class TBarWindow : public TShownWindow {
 public:
  TBarWindow() {
    Link->SetOnClick(TNotifyEvent::Of<&TBarWindow::Clicked>(this));
    Text->SetWordWrap(true);
    Group.AddItem(TIntf<IExplorerBarItem>(Link.Get()));
    Group.AddItem(MakeIntf<TCommonExplorerBarSeparator>(NewGuid(), 2));
    Group.AddItem(TIntf<IExplorerBarItem>(Name.Get()));
    Group.AddItem(TIntf<IExplorerBarItem>(Text.Get()));
    ShowSkin();
  }
  QScrollArea& Area() { return WidgetOf<QScrollArea>(Bar); }
  std::vector<TExplorerGroupView*> Views() {
    const auto list = Area().findChildren<QWidget*>();
    std::vector<TExplorerGroupView*> views;
    for (QWidget* widget : list) {
      auto* view = dynamic_cast<TExplorerGroupView*>(widget);
      if (view != nullptr && !view->isHidden()) views.push_back(view);
    }
    return views;
  }
  TExplorerGroupView& View() { return *Views().front(); }
  QToolButton& Title() { return *View().findChild<QToolButton*>(); }
  // Words of what is to be seen below the title.
  QStringList Words() {
    QStringList words;
    for (QWidget* widget : View().findChildren<QWidget*>()) {
      if (!widget->isVisible()) continue;
      if (auto* label = dynamic_cast<QLabel*>(widget)) words.append(label->text());
      if (auto* link = dynamic_cast<TLinkButton*>(widget)) words.append("[" + link->text() + "]");
    }
    return words;
  }
  TLinkButton& LinkButton() {
    for (QWidget* widget : View().findChildren<QWidget*>()) {
      auto* link = dynamic_cast<TLinkButton*>(widget);
      if (link != nullptr && !link->isHidden()) return *link;
    }
    throw std::runtime_error("no link");
  }

  TIntf<TCommonExplorerBarLink> Link =
      MakeIntf<TCommonExplorerBarLink>(NewGuid(), 1, u"Kategorie bearbeiten...");
  TIntf<TCommonExplorerBarCaptionAndValue> Name =
      MakeIntf<TCommonExplorerBarCaptionAndValue>(NewGuid(), 3, u"Kategorie:", u"Bücher");
  TIntf<TCommonExplorerBarText> Text =
      MakeIntf<TCommonExplorerBarText>(NewGuid(), 4, u"Ein <b>Text</b>");
  TExplorerBar Bar{this, u"explrbr"};
  TKK5SkinExplorerGroup Group{&Bar, u"grp", u"Kategorie"};
  TNotebook Book;
  std::function<void()> OnClick;

 private:
  void Clicked(TObject*) {
    Book.Note("click");
    if (OnClick) OnClick();
  }
};

TEST(TExplorerBarBinder, ShowsGroupsWithTheirItems) {
  TBarWindow window;
  EXPECT_EQ(window.Title().text(), QStringLiteral("Kategorie"));
  EXPECT_EQ(window.Words(),
            QStringList({"[Kategorie bearbeiten...]", "Kategorie:", "Bücher", "Ein <b>Text</b>"}));
  window.Name->SetValue(u"Autos");
  window.Link->SetVisible(false);
  window.Group.SetCaption(u"A & B");
  window.Turn();
  EXPECT_EQ(window.Words(), QStringList({"Kategorie:", "Autos", "Ein <b>Text</b>"}));
  EXPECT_EQ(window.Title().text(), QStringLiteral("A && B"));
  EXPECT_EQ(window.Title().accessibleName(), QStringLiteral("A & B"));
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TExplorerBarBinder, AlignsValuesBesideTheirCaptions) {
  TBarWindow window;
  window.Group.AddItem(
      MakeIntf<TCommonExplorerBarCaptionAndValue>(NewGuid(), 5, u"Anzahl Einträge:", u"3"));
  window.Turn();
  std::vector<int> lefts;
  for (QLabel* label : window.View().findChildren<QLabel*>()) {
    if (label->text() == QStringLiteral("Bücher") || label->text() == QStringLiteral("3")) {
      lefts.push_back(label->x());
    }
  }
  ASSERT_EQ(lefts.size(), 2u);
  EXPECT_EQ(lefts[0], lefts[1]);
}

TEST(TExplorerBarBinder, TouchesOnlyWhatHasBecomeAnother) {
  TBarWindow window;
  const int items = window.View().ItemCount();
  const int layouts = window.View().LayoutCount();
  const TLinkButton* link = &window.LinkButton();
  {
    const TUpdating updating(window.Bar);
    window.Name->SetValue(u"Autos");
    window.Name->SetValue(u"Bücher");
    window.Link->SetVisible(false);
    window.Link->SetVisible(true);
  }
  window.Turn();
  EXPECT_EQ(window.View().ItemCount(), items);
  window.Name->SetValue(u"Autos");
  window.Turn();
  EXPECT_EQ(window.View().ItemCount(), items + 1);
  EXPECT_EQ(window.View().LayoutCount(), layouts);
  window.Group.DeleteItem(TIntf<IExplorerBarItem>(window.Text.Get()));
  window.Turn();
  EXPECT_EQ(window.View().ItemCount(), items + 1);
  EXPECT_EQ(window.View().LayoutCount(), layouts + 1);
  EXPECT_EQ(&window.LinkButton(), link);
}

TEST(TExplorerBarBinder, KeepsTheScrollPosition) {
  TBarWindow window;
  for (int i = 0; i < 60; ++i) {
    window.Group.AddItem(MakeIntf<TCommonExplorerBarText>(NewGuid(), 10 + i, u"Zeile"));
  }
  window.Turn();
  QScrollBar& bar = *window.Area().verticalScrollBar();
  ASSERT_TRUE(CrankUntil([&] { return bar.maximum() > 100; }));
  bar.setValue(77);
  window.Name->SetValue(u"Autos");
  window.Link->SetVisible(false);
  window.Turn();
  window.Link->SetVisible(true);
  window.Turn();
  EXPECT_EQ(bar.value(), 77);
}

TEST(TExplorerBarBinder, FoldsAGroupByItsTitle) {
  TBarWindow window;
  window.Title().click();
  EXPECT_FALSE(window.Group.Expanded());
  window.Turn();
  EXPECT_THAT(window.Words(), IsEmpty());
  EXPECT_EQ(window.Title().accessibleDescription(), QStringLiteral("zugeklappt"));
  window.Group.SetExpanded(true);
  window.Turn();
  EXPECT_EQ(window.Words().size(), 4);
}

TEST(TExplorerBarBinder, ClicksALinkByMouseReturnAndSpaceBar) {
  TBarWindow window;
  TLinkButton& link = window.LinkButton();
  QTest::mouseClick(&link, Qt::LeftButton);
  QTest::keyClick(&link, Qt::Key_Return);
  QTest::keyClick(&link, Qt::Key_Space);
  EXPECT_THAT(window.Book.Take(), ElementsAre("click", "click", "click"));
}

TEST(TExplorerBarBinder, LetsALinkGoInItsOwnClick) {
  TBarWindow window;
  window.OnClick = [&] {
    window.Group.ClearItems();
    window.Skin().Flush();
  };
  window.LinkButton().click();
  window.Turn();
  EXPECT_THAT(window.Words(), IsEmpty());
  EXPECT_THAT(window.Book.Take(), ElementsAre("click"));
}

TEST(TExplorerBarBinder, DoesNothingWhileItIsDisabled) {
  TBarWindow window;
  window.Bar.SetEnabled(false);
  window.Turn();
  QTest::mouseClick(&window.LinkButton(), Qt::LeftButton);
  window.LinkButton().click();
  window.Title().click();
  EXPECT_TRUE(window.Group.Expanded());
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TExplorerBarBinder, FollowsGroupsThatComeHideAndGo) {
  TBarWindow window;
  TKK5SkinExplorerGroup more(nullptr, u"more", u"Details");
  more.SetBar(&window.Bar, &window.Group);
  window.Turn();
  ASSERT_EQ(window.Views().size(), 2u);
  const auto place = [](QWidget* iWidget) { return iWidget->y(); };
  const std::vector<TExplorerGroupView*> views = window.Views();
  const auto titleOf = [](TExplorerGroupView* iView) {
    return iView->findChild<QToolButton*>()->text();
  };
  TExplorerGroupView* upper = place(views[0]) < place(views[1]) ? views[0] : views[1];
  EXPECT_EQ(titleOf(upper), QStringLiteral("Details"));
  more.SetVisible(false);
  window.Turn();
  EXPECT_EQ(window.Views().size(), 1u);
  more.SetVisible(true);
  window.Turn();
  more.SetBar(nullptr);
  window.Turn();
  EXPECT_EQ(window.Views().size(), 1u);
}

TEST(TExplorerBarBinder, LeadsTheTabKeyFromTitleToLinksInOrder) {
  TBarWindow window;
  TEdit edit(&window, u"edt");
  const auto link = MakeIntf<TCommonExplorerBarLink>(NewGuid(), 0, u"Erste");
  window.Group.AddItem(TIntf<IExplorerBarItem>(link.Get()));
  window.Turn();
  window.Title().setFocus();
  QStringList walked;
  for (int i = 0; i < 3; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    auto* button = dynamic_cast<TLinkButton*>(QApplication::focusWidget());
    walked.append(button != nullptr ? button->text() : QApplication::focusWidget()->objectName());
  }
  EXPECT_EQ(walked, QStringList({"Erste", "Kategorie bearbeiten...", "edt"}));
}

TEST(TExplorerBarBinder, CutsNothingOffInANarrowPane) {
  TBarWindow window;
  window.Link->SetCaption(u"Höchstens 25 EUR bieten, denn das Glas hat einen kleinen Sprung");
  window.Link->SetWordWrap(true);
  window.Name->SetCaption(u"Letzte Aktualisierung:");
  window.Name->SetValue(u"21.11.2026, 01:56:26");
  window.Skin().Widget()->resize(200, 400);
  window.Turn();
  const QWidget& viewport = *window.Area().viewport();
  ASSERT_TRUE(CrankUntil([&] { return viewport.width() <= 200; }));
  EXPECT_LE(window.Area().widget()->width(), viewport.width());
  const TLinkButton& link = window.LinkButton();
  EXPECT_GT(link.heightForWidth(link.width()), 2 * link.fontMetrics().height());
  EXPECT_TRUE(CrankUntil([&] { return link.height() >= link.heightForWidth(link.width()); }));
}

TEST(TLinkButton, TakesAsManyLinesAsItsWordsNeed) {
  NeedQt();
  TLinkButton link(nullptr);
  link.setText(QStringLiteral("Eine Notiz aus sehr vielen Worten, die nicht in eine Zeile passt"));
  EXPECT_FALSE(link.hasHeightForWidth());
  EXPECT_EQ(link.heightForWidth(100), link.heightForWidth(1000));
  link.SetWordWrap(true);
  EXPECT_TRUE(link.hasHeightForWidth());
  EXPECT_GT(link.heightForWidth(100), 2 * link.heightForWidth(1000));
}

}  // namespace
}  // namespace kk
