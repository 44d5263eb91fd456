#include "apps/desktop/skin/TTreeBinder.h"

#include <gmock/gmock.h>

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>

#include "TShownWindow.h"
#include "host/base/Exception.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct TThing : TObject {
  explicit TThing(TStringView iName) : Name(iName) {}
  TString Name;
};

// "Autos" with "Alt" and "Neu" below it, and "Bücher".
class TTreeWindow : public TShownWindow {
 public:
  TTreeWindow() {
    Tree.SetOnGetText(TNodeTextEvent::Of<&TTreeWindow::GetText>(this));
    Tree.SetOnFocusChanged(TNotifyEvent::Of<&TTreeWindow::FocusChanged>(this));
    Tree.SetOnExpanded(TNodeEvent::Of<&TTreeWindow::Expanded>(this));
    Tree.SetOnCollapsed(TNodeEvent::Of<&TTreeWindow::Collapsed>(this));
    Tree.SetOnChecked(TNodeEvent::Of<&TTreeWindow::Checked>(this));
    Tree.SetOnDblClick(TNotifyEvent::Of<&TTreeWindow::DblClick>(this));
    Tree.SetOnContextPopup(TNotifyEvent::Of<&TTreeWindow::ContextPopup>(this));
    Tree.SetPopupMenu(&Menu);
    Menu.Add(u"Bearbeiten...", TNotifyEvent::Of<&TTreeWindow::Edit>(this)).SetShortCut(u"F2");
    ShowSkin();
  }

  QTreeView& View() { return WidgetOf<QTreeView>(Tree); }
  QModelIndex IndexOf(const TVirtualNode& iNode) {
    return dynamic_cast<const TTreeItemModel&>(*View().model()).IndexOf(&iNode);
  }
  QPoint PlaceOf(const TVirtualNode& iNode) { return View().visualRect(IndexOf(iNode)).center(); }
  void Click(const TVirtualNode& iNode, Qt::MouseButton iButton = Qt::LeftButton) {
    QTest::mouseClick(View().viewport(), iButton, {}, PlaceOf(iNode));
    Turn();
  }
  void AskForMenu(QContextMenuEvent::Reason iReason, const QPoint& iPos) {
    QContextMenuEvent event(iReason, iPos, View().viewport()->mapToGlobal(iPos));
    QCoreApplication::sendEvent(iReason == QContextMenuEvent::Mouse ? View().viewport() : &View(),
                                &event);
  }

  TThing FAutos{u"Autos"}, FAlt{u"Alt"}, FNeu{u"Neu"}, FBooks{u"Bücher"};
  TVirtualStringTree Tree{this, u"vstCategories"};
  TVirtualNode& Autos = Tree.AddChild(nullptr, &FAutos);
  TVirtualNode& Alt = Tree.AddChild(&Autos, &FAlt);
  TVirtualNode& Neu = Tree.AddChild(&Autos, &FNeu);
  TVirtualNode& Books = Tree.AddChild(nullptr, &FBooks);
  TMenuItem Menu;
  TNotebook Book;
  int Texts = 0;
  std::function<void()> OnFocus;

 private:
  static std::string NameOf(const TVirtualNode* iNode) {
    return iNode != nullptr ? ToUtf8(dynamic_cast<TThing&>(*iNode->Object()).Name) : "-";
  }
  void GetText(TObject*, TVirtualNode& iNode, TString& oText) {
    ++Texts;
    oText = dynamic_cast<TThing&>(*iNode.Object()).Name;
  }
  void FocusChanged(TObject*) {
    Book.Note("focus " + NameOf(Tree.FocusedNode()));
    if (OnFocus) OnFocus();
  }
  void Expanded(TObject*, TVirtualNode& iNode) { Book.Note("expanded " + NameOf(&iNode)); }
  void Collapsed(TObject*, TVirtualNode& iNode) { Book.Note("collapsed " + NameOf(&iNode)); }
  void Checked(TObject*, TVirtualNode& iNode) { Book.Note("checked " + NameOf(&iNode)); }
  void DblClick(TObject*) { Book.Note("double " + NameOf(Tree.NodeUnderPointer())); }
  void ContextPopup(TObject*) { Book.Note("popup " + NameOf(Tree.NodeUnderPointer())); }
  void Edit(TObject*) { Book.Note("edit"); }
};

TEST(TTreeBinder, ShowsSelectionFocusAndExpansionOfTheTree) {
  TTreeWindow window;
  window.Tree.SetExpanded(window.Autos, true);
  window.Tree.SetSelectedNode(&window.Neu);
  window.Tree.SetFocusedNode(&window.Neu);
  window.Turn();
  EXPECT_TRUE(window.View().isExpanded(window.IndexOf(window.Autos)));
  EXPECT_EQ(window.View().currentIndex(), window.IndexOf(window.Neu));
  EXPECT_EQ(window.View().selectionModel()->selectedIndexes(),
            QModelIndexList{window.IndexOf(window.Neu)});
  EXPECT_THAT(window.Book.Take(), ElementsAre("focus Neu"));
  window.Tree.SetExpanded(window.Autos, false);
  EXPECT_FALSE(window.View().isExpanded(window.IndexOf(window.Autos)));
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TTreeBinder, GoesWhereTheUserClicksWithEitherButton) {
  TTreeWindow window;
  window.Click(window.Books);
  EXPECT_EQ(window.Tree.FocusedNode(), &window.Books);
  EXPECT_EQ(window.Tree.SelectedNode(), &window.Books);
  window.Click(window.Autos, Qt::RightButton);
  EXPECT_EQ(window.Tree.SelectedNode(), &window.Autos);
  EXPECT_THAT(window.Book.Take(), ElementsAre("focus Bücher", "focus Autos"));
}

TEST(TTreeBinder, KeepsTheSelectionWhereTheUserClicksBesideTheNodes) {
  TTreeWindow window;
  window.Click(window.Books);
  QTest::mouseClick(window.View().viewport(), Qt::LeftButton, {}, QPoint(100, 300));
  QTest::mouseClick(window.View().viewport(), Qt::LeftButton, Qt::ControlModifier,
                    window.PlaceOf(window.Books));
  window.Turn();
  EXPECT_EQ(window.Tree.SelectedNode(), &window.Books);
  EXPECT_TRUE(window.View().selectionModel()->isSelected(window.IndexOf(window.Books)));
  EXPECT_THAT(window.Book.Take(), ElementsAre("focus Bücher"));
}

TEST(TTreeBinder, ExpandsAndCollapsesByTheKeyboard) {
  TTreeWindow window;
  window.Click(window.Autos);
  window.Book.Take();
  QTest::keyClick(&window.View(), Qt::Key_Right);
  EXPECT_TRUE(window.Autos.Expanded());
  QTest::keyClick(&window.View(), Qt::Key_Down);
  QTest::keyClick(&window.View(), Qt::Key_Left);
  QTest::keyClick(&window.View(), Qt::Key_Left);
  EXPECT_FALSE(window.Autos.Expanded());
  EXPECT_THAT(window.Book.Take(),
              ElementsAre("expanded Autos", "focus Alt", "focus Autos", "collapsed Autos"));
}

TEST(TTreeBinder, FindsANodeByItsFirstLetters) {
  TTreeWindow window;
  window.Click(window.Autos);
  QTest::keyClick(&window.View(), Qt::Key_B);
  EXPECT_EQ(window.Tree.FocusedNode(), &window.Books);
}

TEST(TTreeBinder, TogglesOnceOnADoubleClick) {
  TTreeWindow window;
  QTest::mouseDClick(window.View().viewport(), Qt::LeftButton, {}, window.PlaceOf(window.Autos));
  window.Turn();
  EXPECT_TRUE(window.Autos.Expanded());
  EXPECT_TRUE(window.View().isExpanded(window.IndexOf(window.Autos)));
  QTest::mouseDClick(window.View().viewport(), Qt::LeftButton, {}, QPoint(100, 300));
  EXPECT_THAT(window.Book.Take(),
              ElementsAre("focus Autos", "expanded Autos", "double Autos", "double -"));
}

TEST(TTreeBinder, OpensTheMenuAtTheMouseAndByTheKeyboard) {
  TTreeWindow window;
  window.AskForMenu(QContextMenuEvent::Mouse, window.PlaceOf(window.Books));
  ASSERT_NE(OpenMenu(), nullptr);
  OpenMenu()->close();
  window.AskForMenu(QContextMenuEvent::Keyboard, {});
  ASSERT_NE(OpenMenu(), nullptr);
  EXPECT_EQ(OpenMenu()->pos().x(),
            window.View()
                .viewport()
                ->mapToGlobal(window.View().visualRect(window.IndexOf(window.Books)).topLeft())
                .x());
  OpenMenu()->close();
  window.AskForMenu(QContextMenuEvent::Mouse, {100, 300});
  OpenMenu()->close();
  EXPECT_THAT(window.Book.Take(),
              ElementsAre("focus Bücher", "popup Bücher", "popup Bücher", "popup -"));
}

TEST(TTreeBinder, OpensTheMenuByShiftAndF10AsWell) {
  TTreeWindow window;
  window.Click(window.Books);
  QTest::keyClick(&window.View(), Qt::Key_F10, Qt::ShiftModifier);
  ASSERT_NE(OpenMenu(), nullptr);
  OpenMenu()->close();
  EXPECT_THAT(window.Book.Take(), ElementsAre("focus Bücher", "popup Bücher"));
  QTest::keyClick(&window.View(), Qt::Key_F10);
  EXPECT_EQ(OpenMenu(), nullptr);
}

TEST(TTreeBinder, PreparesTheMenuBeforeAShortCutClicksItsEntry) {
  TTreeWindow window;
  window.Click(window.Books);
  window.View().setFocus();
  window.Book.Take();
  QTest::keyClick(&window.View(), Qt::Key_F2);
  EXPECT_THAT(window.Book.Take(), ElementsAre("popup Bücher", "edit"));
}

TEST(TTreeBinder, TicksACheckBoxByMouseAndSpaceBar) {
  TTreeWindow window;
  window.Tree.SetHasCheckBox(window.Books, true);
  window.Click(window.Books);
  window.View().setFocus();
  QTest::keyClick(&window.View(), Qt::Key_Space);
  EXPECT_TRUE(window.Books.Checked());
  QStyleOptionViewItem option;
  option.initFrom(&window.View());
  option.rect = window.View().visualRect(window.IndexOf(window.Books));
  option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
  const QRect box =
      window.View().style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option);
  QTest::mouseClick(window.View().viewport(), Qt::LeftButton, {}, box.center());
  EXPECT_FALSE(window.Books.Checked());
  EXPECT_THAT(window.Book.Take(), ElementsAre("focus Bücher", "checked Bücher", "checked Bücher"));
}

TEST(TTreeBinder, AsksForTextsWhenItPaintsAndNotBefore) {
  TTreeWindow window;
  window.Turn();
  window.Texts = 0;
  window.Tree.InvalidateNode(window.Books);
  window.Tree.MoveTo(window.Alt, nullptr);
  window.Tree.SetSelectedNode(&window.Alt);
  window.Skin().Flush();
  EXPECT_EQ(window.Texts, 0);
  QCoreApplication::processEvents();
  EXPECT_GE(window.Texts, 3);
}

TEST(TTreeBinder, ShowsWhereTheTreeWentWhenANodeWithTheFocusDies) {
  TTreeWindow window;
  window.Tree.SetExpanded(window.Autos, true);
  window.Click(window.Alt);
  window.Book.Take();
  window.Tree.DeleteNode(window.Alt);
  EXPECT_THAT(window.Book.Take(), ElementsAre("focus Neu"));
  window.Turn();
  EXPECT_EQ(window.View().currentIndex(), window.IndexOf(window.Neu));
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TTreeBinder, ShowsTheExpansionAgainAfterARebuild) {
  TTreeWindow window;
  {
    const TVirtualStringTree::TUpdate update(window.Tree);
    window.Tree.SetExpanded(window.Autos, true);
  }
  window.Turn();
  EXPECT_TRUE(window.View().isExpanded(window.IndexOf(window.Autos)));
  EXPECT_TRUE(window.View().visualRect(window.IndexOf(window.Neu)).isValid());
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TTreeBinder, BringsANodeIntoView) {
  TTreeWindow window;
  for (int i = 0; i < 100; ++i) window.Tree.AddChild(&window.Books, &window.FAlt);
  window.Turn();
  TVirtualNode& last = window.Books.GetItems(99);
  window.Tree.ScrollIntoView(last);
  EXPECT_TRUE(window.View().viewport()->rect().contains(window.PlaceOf(last)));
}

TEST(TTreeBinder, DoesNothingWhileItIsDisabled) {
  TTreeWindow window;
  window.Tree.SetEnabled(false);
  window.Turn();
  EXPECT_FALSE(window.View().isEnabled());
  window.Click(window.Books);
  QTest::mouseDClick(window.View().viewport(), Qt::LeftButton, {}, window.PlaceOf(window.Autos));
  window.View().expand(window.IndexOf(window.Autos));
  window.AskForMenu(QContextMenuEvent::Mouse, window.PlaceOf(window.Books));
  EXPECT_EQ(OpenMenu(), nullptr);
  EXPECT_THAT(window.Book.Take(), IsEmpty());
  EXPECT_FALSE(window.Autos.Expanded());
}

TEST(TTreeBinder, SurvivesASkinThatGoesInTheMiddleOfAClick) {
  TTreeWindow window;
  const QPointer<QTreeView> view = &window.View();
  window.OnFocus = [&] { window.DropSkin(); };
  QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, window.PlaceOf(window.Books));
  EXPECT_EQ(window.Tree.FocusedNode(), &window.Books);
  window.Tree.DeleteNode(window.Autos);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(view.isNull());
}

TEST(TTreeBinder, SurvivesAWindowThatDiesFirstAndAFocusThatRebuildsTheTree) {
  auto window = std::make_unique<TTreeWindow>();
  window->OnFocus = [&] {
    window->OnFocus = nullptr;
    window->Tree.Clear();
  };
  window->Click(window->Books);
  EXPECT_EQ(window->Tree.First(), nullptr);
  window.reset();
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace kk
