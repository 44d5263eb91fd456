#include "apps/desktop/skin/TTabStripBinder.h"

#include <gmock/gmock.h>

#include <QMenu>
#include <QWheelEvent>

#include "TShownWindow.h"
#include "host/controls/TEdit.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Three heads, of which the first is selected, above an edit.
class TTabWindow : public TShownWindow {
 public:
  TTabWindow() {
    for (auto* head : {&A, &B, &C}) {
      head->SetOnClick(TNotifyEvent::Of<&TTabWindow::Clicked>(this));
      head->SetOnMouseEnter(TNotifyEvent::Of<&TTabWindow::Entered>(this));
      head->SetOnMouseLeave(TNotifyEvent::Of<&TTabWindow::Left>(this));
    }
    A.SetSelected(true);
    Strip.SetChevronMenu(&Chevron);
    Strip.SetOnChevronPopup(TNotifyEvent::Of<&TTabWindow::FillChevron>(this));
    Strip.SetOnBeforeChange(TTabStripQueryEvent::Of<&TTabWindow::BeforeChange>(this));
    ShowSkin();
  }
  QTabBar& Bar() { return ChildOf<QTabBar>(Strip); }
  QToolButton& ChevronButton() {
    return *WidgetOf<QWidget>(Strip).findChild<QToolButton*>({}, Qt::FindDirectChildrenOnly);
  }
  QStringList Texts() {
    QStringList texts;
    for (int i = 0; i < Bar().count(); ++i) {
      if (Bar().isTabVisible(i)) texts.append(Bar().tabText(i));
    }
    return texts;
  }

  TTabStrip Strip{this, u"tbcntrlWatchlist"};
  TEdit Edit{this, u"edt"};
  TKK5SkinHeaderItemTabExt A{Strip, u"Seiten"}, B{Strip, u"A & B"}, C{Strip, u"Bücher"};
  TMenuItem Chevron;
  TNotebook Book;
  bool MayChange = true;

 private:
  void Clicked(TObject* Sender) { Note("click ", Sender); }
  void Entered(TObject* Sender) { Note("enter ", Sender); }
  void Left(TObject* Sender) { Note("leave ", Sender); }
  void Note(const std::string& iWhat, TObject* Sender) {
    Book.Note(iWhat + ToUtf8(dynamic_cast<TKK5SkinHeaderItemTabExt*>(Sender)->Caption()));
  }
  void FillChevron(TObject*) {
    Chevron.Clear();
    Chevron.Add(u"Seiten");
  }
  void BeforeChange(TObject*, bool& ioResult) { ioResult = MayChange; }
};

TEST(TTabStripBinder, ShowsTheHeadsAsTheyAre) {
  TTabWindow window;
  EXPECT_EQ(window.Texts(), QStringList({"Seiten", "A && B", "Bücher"}));
  EXPECT_EQ(window.Bar().currentIndex(), 0);
  window.A.SetVisible(false);
  window.B.SetSelected(true);
  window.C.SetCaption(u"Hefte");
  window.C.SetEnabled(false);
  window.Strip.SetHint(u"Hinweis");
  window.Turn();
  EXPECT_EQ(window.Texts(), QStringList({"A && B", "Hefte"}));
  EXPECT_EQ(window.Bar().currentIndex(), 1);
  EXPECT_FALSE(window.Bar().isTabEnabled(2));
  EXPECT_EQ(window.Bar().accessibleTabName(1), QStringLiteral("A & B"));
  EXPECT_TRUE(window.Bar().toolTip().contains(QStringLiteral("Hinweis")));
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TTabStripBinder, ShowsTheOtherImageWhileAHeadIsSelected) {
  TTabWindow window;
  window.A.SetImage({u"SOURCE_PAGE"});
  window.A.SetImageSelected({u"SOURCE_PAGE_SELECTED"});
  window.Turn();
  const auto picture = [&] { return window.Bar().tabIcon(0).pixmap(16).toImage(); };
  const QImage selected = picture();
  EXPECT_FALSE(selected.isNull());
  window.B.SetSelected(true);
  window.Turn();
  EXPECT_NE(picture(), selected);
}

TEST(TTabStripBinder, SelectsWhereTheUserClicks) {
  TTabWindow window;
  QTest::mouseClick(&window.Bar(), Qt::LeftButton, {}, window.Bar().tabRect(2).center());
  EXPECT_TRUE(window.C.Selected());
  window.Turn();
  QTest::mouseClick(&window.Bar(), Qt::LeftButton, {}, window.Bar().tabRect(2).center());
  const TNotes notes = window.Book.Take();
  EXPECT_EQ(std::count(notes.begin(), notes.end(), "click Bücher"), 1);
}

TEST(TTabStripBinder, WalksByArrowKeysOnTheStripOnlyWhereItMay) {
  TTabWindow window;
  window.Bar().setFocus();
  QTest::keyClick(&window.Bar(), Qt::Key_Right);
  QTest::keyClick(&window.Bar(), Qt::Key_Left);
  QTest::keyClick(&window.Bar(), Qt::Key_Left);
  EXPECT_THAT(window.Book.Take(), ElementsAre("click A & B", "click Seiten", "click Bücher"));
  window.MayChange = false;
  QTest::keyClick(&window.Bar(), Qt::Key_Right);
  EXPECT_THAT(window.Book.Take(), IsEmpty());
  window.Turn();
  EXPECT_EQ(window.Bar().currentIndex(), 2);
}

TEST(TTabStripBinder, WalksByControlAndTabFromWhereverTheFocusStands) {
  TTabWindow window;
  QWidget& edit = window.WidgetOf<QWidget>(window.Edit);
  edit.setFocus();
  QTest::keyClick(&edit, Qt::Key_Tab, Qt::ControlModifier);
  QTest::keyClick(&edit, Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_THAT(window.Book.Take(), ElementsAre("click A & B", "click Seiten"));
}

TEST(TTabStripBinder, MovesAHeadThatIsDragged) {
  TTabWindow window;
  window.Bar().moveTab(0, 2);
  window.Turn();
  EXPECT_EQ(&window.Strip.GetItems(2), &window.A);
  EXPECT_EQ(window.Texts(), QStringList({"A && B", "Bücher", "Seiten"}));
  EXPECT_EQ(window.Bar().currentIndex(), 2);
  window.Bar().moveTab(2, 1);
  window.Turn();
  EXPECT_EQ(&window.Strip.GetItems(1), &window.A);
  EXPECT_EQ(window.Texts(), QStringList({"A && B", "Seiten", "Bücher"}));
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TTabStripBinder, OpensTheMenuOfItsChevron) {
  TTabWindow window;
  window.ChevronButton().click();
  QMenu* const menu = OpenMenu();
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->actions().front()->text(), QStringLiteral("Seiten"));
  menu->close();
  for (auto* head : {&window.A, &window.B, &window.C}) head->SetVisible(false);
  window.Turn();
  EXPECT_FALSE(window.ChevronButton().isVisible());
}

TEST(TTabStripBinder, BringsTheSelectedHeadIntoViewAgain) {
  TTabWindow window;
  std::vector<std::unique_ptr<TKK5SkinHeaderItemTabExt>> more;
  for (int i = 0; i < 20; ++i) {
    more.push_back(std::make_unique<TKK5SkinHeaderItemTabExt>(window.Strip, u"Quelle mit Namen"));
  }
  window.Turn();
  for (QToolButton* button : window.Bar().findChildren<QToolButton*>()) {
    for (int i = 0; i < 10 && button->arrowType() == Qt::RightArrow; ++i) button->click();
  }
  ASSERT_LT(window.Bar().tabRect(0).right(), 0);
  window.Strip.ScrollIntoView(window.A);
  window.Turn();
  EXPECT_GE(window.Bar().tabRect(0).left(), 0);
}

TEST(TTabStripBinder, DoesNotChangeTheTabByTheWheel) {
  TTabWindow window;
  const QPointF place = window.Bar().tabRect(0).center();
  QWheelEvent wheel(place, window.Bar().mapToGlobal(place), {}, {0, -120}, {}, {},
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&window.Bar(), &wheel);
  EXPECT_TRUE(window.A.Selected());
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TTabStripBinder, TellsHeadsWhenTheMouseComesAndGoes) {
  TTabWindow window;
  QTest::mouseMove(&window.Bar(), window.Bar().tabRect(0).center());
  QTest::mouseMove(&window.Bar(), window.Bar().tabRect(1).center());
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&window.Bar(), &leave);
  EXPECT_THAT(window.Book.Take(),
              ElementsAre("enter Seiten", "leave Seiten", "enter A & B", "leave A & B"));
}

TEST(TTabStripBinder, DoesNothingWhileItIsDisabled) {
  TTabWindow window;
  window.Strip.SetEnabled(false);
  window.Turn();
  QTest::mouseClick(&window.Bar(), Qt::LeftButton, {}, window.Bar().tabRect(1).center());
  window.Bar().setCurrentIndex(1);
  window.Turn();
  EXPECT_TRUE(window.A.Selected());
  EXPECT_EQ(window.Bar().currentIndex(), 0);
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TTabStripBinder, LosesAHeadThatDies) {
  TTabWindow window;
  {
    TKK5SkinHeaderItemTabExt more(window.Strip, u"Mehr");
    window.Turn();
    EXPECT_EQ(window.Bar().count(), 4);
  }
  window.Turn();
  EXPECT_EQ(window.Bar().count(), 3);
}

}  // namespace
}  // namespace kk
