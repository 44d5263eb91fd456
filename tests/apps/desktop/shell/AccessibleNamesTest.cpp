#include <QAccessible>
#include <QApplication>
#include <QWidget>

#include "TDesktopWorld.h"
#include "apps/desktop/skin/QtText.h"
#include "host/controls/TButton.h"
#include "host/controls/TComboBox.h"
#include "host/options/TfrmOptions.h"

namespace kk {
namespace {

using testing::IsEmpty;

/// What a user who does not see the screen gets to hear of the whole program.
class AccessibleNames : public testing::Test {
 protected:
  AccessibleNames() { World.Start(); }

  /// The parts on the screen that the Tab key reaches and that have no name.
  static std::vector<std::string> Nameless() {
    std::vector<std::string> result;
    for (QWidget* widget : QApplication::allWidgets()) {
      if (!widget->isVisible() || !(widget->focusPolicy() & Qt::TabFocus)) continue;
      if (widget->focusProxy() != nullptr || IsPartOfAField(*widget)) continue;
      QAccessibleInterface* const read = QAccessible::queryAccessibleInterface(widget);
      if (read != nullptr && !read->text(QAccessible::Name).trimmed().isEmpty()) {
        ++Named;
        continue;
      }
      result.push_back(std::string(widget->metaObject()->className()) + " in " +
                       ToUtf8(FromQt(widget->window()->windowTitle())));
    }
    return result;
  }
  /// The field inside a combo box or a number is read under the name of the whole.
  static bool IsPartOfAField(const QWidget& iWidget) {
    const QWidget* const outer = iWidget.parentWidget();
    return outer != nullptr &&
           (outer->inherits("QComboBox") || outer->inherits("QAbstractSpinBox"));
  }
  /// The next dialog of this name has none without a name, and is cancelled.
  void ExpectNamesIn(const std::string& iDialog) {
    World.Dialogs().Expect(iDialog, [iDialog](TForm& ioForm) {
      EXPECT_THAT(Nameless(), IsEmpty()) << iDialog;
      ioForm.CloseByUser();
    });
  }
  TResultTable& Found() { return TheControl<TResultTable>(World.Search()); }
  void SearchInTheShop() {
    ASSERT_TRUE(World.Search().lblTryExample.Click());
    ASSERT_TRUE(CrankUntil([&] {
      return FindControl<TResultTable>(World.Search(), {}) != nullptr && Found().GetCount() == 3;
    }));
    ASSERT_TRUE(Found().SelectRows({0, 1, 2}, 0));
    ASSERT_TRUE(Found().OpenPopupMenu(0, 0));
  }
  void FillTheList() {
    SearchInTheShop();
    World.Dialogs().Expect("TfrmWatchlistAddSearchResults", [](TForm& ioForm) {
      EXPECT_THAT(Nameless(), IsEmpty());
      EXPECT_TRUE(TheControl<TComboBox>(ioForm, u"cmbxCategory").EnterText(u"Küche"));
      EXPECT_TRUE(TheControl<TButton>(ioForm, u"btnAll").Click());
    });
    ASSERT_TRUE(ClickEntry(Found().PopupEntries(), u"Artikel beobachten..."));
    ASSERT_TRUE(CrankUntil([&] { return World.List().OpenUpdates() == 0; }));
    World.Go(u"Beobachten");
    ASSERT_TRUE(CrankUntil([&] { return World.Node(u"Küche") != nullptr; }));
    ASSERT_TRUE(World.Tree().FocusNode(*World.Node(u"Küche")));
    ASSERT_EQ(World.Items().GetCount(), 3);
    for (int i = 0; i < 3; ++i) {  // the auction has an end, for a reminder
      if (World.Items().Results(i)->GetName() == u"Wanduhr, um 1960") {
        ASSERT_TRUE(World.Items().SelectRows({i}, i));
        ASSERT_TRUE(World.Items().OpenPopupMenu(i, 0));
      }
    }
  }

  static inline int Named = 0;
  TDesktopWorld World;
};

TEST_F(AccessibleNames, EverythingOfTheSectionsHasOne) {
  Named = 0;
  EXPECT_THAT(Nameless(), IsEmpty());
  EXPECT_GT(Named, 2);
  FillTheList();
  Named = 0;
  EXPECT_THAT(Nameless(), IsEmpty());
  EXPECT_GT(Named, 5);
  World.Go(u"Suchen");
  EXPECT_THAT(Nameless(), IsEmpty());
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
}

TEST_F(AccessibleNames, EverythingOfTheDialogsHasOne) {
  FillTheList();
  const auto entry = [&](TStringView iCaption) {
    EXPECT_TRUE(ClickEntry(World.Items().PopupEntries(), iCaption)) << ToUtf8(iCaption);
  };
  ExpectNamesIn("TfrmKKWatchlistEditItemRemind");
  entry(u"Erinnerung einrichten...");
  ExpectNamesIn("TfrmKKWatchlistEditItemDescription");
  entry(u"Notiz bearbeiten...");
  ExpectNamesIn("TfrmKKCommonMessageDlg");
  entry(u"Löschen");
  ExpectNamesIn("TfrmKKPluginWatchlistEditCategory");
  EXPECT_TRUE(TheControl<TButton>(World.Watchlist(), u"btnNewGroup").Click());
  EXPECT_TRUE(World.Dialogs().IsDone());
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
}

TEST_F(AccessibleNames, EverythingOfEachPageOfTheSettingsHasOne) {
  World.Dialogs().Expect("TfrmOptions", [&](TForm& ioForm) {
    auto& pages = dynamic_cast<TfrmOptions&>(ioForm).vstPages;
    int count = 0;
    for (TVirtualNode* node = pages.First(); node != nullptr; node = node->NextSibling(), ++count) {
      EXPECT_TRUE(pages.FocusedNode() == node || pages.FocusNode(*node));
      QCoreApplication::processEvents();
      EXPECT_THAT(Nameless(), IsEmpty()) << ToUtf8(pages.Text(*node));
    }
    EXPECT_GE(count, 5);
    ioForm.CloseByUser();
  });
  World.Go(u"Einstellungen");
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
}

}  // namespace
}  // namespace kk
