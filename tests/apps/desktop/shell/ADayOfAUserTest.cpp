#include <QApplication>

#include "TDesktopWorld.h"
#include "host/controls/TButton.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TMemo.h"
#include "host/program/TExampleShop.h"

namespace kk {
namespace {

using testing::HasSubstr;
using testing::Not;

bool Press(TForm& ioForm, TStringView iButton) {
  return TheControl<TButton>(ioForm, iButton).Click();
}

class ADayOfAUser : public testing::Test {
 protected:
  TResultTable& Found() { return TheControl<TResultTable>(World.Search()); }
  void SearchFor(const std::vector<TString>& iAddresses) {
    TString text;
    for (const TString& address : iAddresses) text += address + u"\n";
    World.Go(u"Suchen");
    ASSERT_TRUE(World.Search().mmText.EnterText(Trim(text)));
    ASSERT_TRUE(World.Search().btnSearch.Click());
    ASSERT_TRUE(CrankUntil([&] {
      return FindControl<TResultTable>(World.Search(), {}) != nullptr &&
             Found().GetCount() == static_cast<int>(iAddresses.size());
    }));
  }
  /// All that was found goes into the list.
  void Watch(TStringView iCategory) {
    std::vector<int> rows;
    for (int i = 0; i < Found().GetCount(); ++i) rows.push_back(i);
    ASSERT_TRUE(Found().SelectRows(rows, 0));
    World.Dialogs().Expect("TfrmWatchlistAddSearchResults", [&](TForm& ioForm) {
      EXPECT_TRUE(TheControl<TComboBox>(ioForm, u"cmbxCategory").EnterText(iCategory));
      EXPECT_TRUE(Press(ioForm, u"btnAll"));
    });
    ASSERT_TRUE(Found().OpenPopupMenu(0, 0));
    ASSERT_TRUE(ClickEntry(Found().PopupEntries(), u"Artikel beobachten..."));
    ASSERT_TRUE(CrankUntil([&] { return World.List().OpenUpdates() == 0; }));
  }
  void NewCategory(TStringView iParent, TStringView iName) {
    ASSERT_NE(World.Node(iParent), nullptr);
    ASSERT_TRUE(World.Tree().FocusNode(*World.Node(iParent)));
    World.Dialogs().Expect("TfrmKKPluginWatchlistEditCategory", [&](TForm& ioForm) {
      EXPECT_TRUE(TheControl<TEdit>(ioForm, u"edtName").EnterText(iName));
      EXPECT_TRUE(Press(ioForm, u"btnOK"));
    });
    ASSERT_TRUE(ClickNew());
    ASSERT_NE(World.Node(iName), nullptr);
  }
  bool ClickNew() {
    for (TButton* button : Buttons(World.Watchlist())) {
      if (button->Caption() == u"Neu" || button->Caption() == u"&Neu") return button->Click();
    }
    return false;
  }
  static std::vector<TButton*> Buttons(TControl& ioRoot) {
    std::vector<TButton*> result;
    if (auto* const button = dynamic_cast<TButton*>(&ioRoot)) result.push_back(button);
    for (TControl* child : ioRoot.Children()) {
      const auto more = Buttons(*child);
      result.insert(result.end(), more.begin(), more.end());
    }
    return result;
  }
  int RowOf(TStringView iName) {
    for (int i = 0; i < World.Items().GetCount(); ++i) {
      if (World.Items().Results(i)->GetName() == iName) return i;
    }
    return -1;
  }
  void ClickOnItem(TStringView iName, TStringView iEntry) {
    const int row = RowOf(iName);
    ASSERT_GE(row, 0) << ToUtf8(iName);
    ASSERT_TRUE(World.Items().SelectRows({row}, row));
    ASSERT_TRUE(World.Items().OpenPopupMenu(row, 0));
    ASSERT_TRUE(ClickEntry(World.Items().PopupEntries(), iEntry)) << ToUtf8(iEntry);
  }
  void ShowCategory(TStringView iName) {
    ASSERT_NE(World.Node(iName), nullptr) << World.TreeText();
    ASSERT_TRUE(World.Tree().FocusNode(*World.Node(iName)));
  }

  TExampleShop Shop;
  TDesktopWorld World;
};

TEST_F(ADayOfAUser, IsAllThereTheNextDay) {
  World.Start();
  SearchFor({Shop.Articles()[0], Shop.Articles()[2]});
  Watch(u"Wohnzimmer");

  World.Go(u"Beobachten");
  ASSERT_TRUE(CrankUntil([&] { return World.Tree().First() != nullptr; }));
  NewCategory(u"Wohnzimmer", u"Licht");
  ShowCategory(u"Wohnzimmer");
  ClickOnItem(u"Tischlampe Luna", u"Licht");
  ShowCategory(u"Licht");
  EXPECT_EQ(World.Items().GetCount(), 1);

  ASSERT_TRUE(World.Items().OpenPopupMenu(0, 0));
  ASSERT_TRUE(ClickEntry(World.Items().PopupEntries(), u"Aktualisieren"));
  EXPECT_GT(World.List().OpenUpdates(), 0);
  ASSERT_TRUE(CrankUntil([&] { return World.List().OpenUpdates() == 0; }));

  ShowCategory(u"Wohnzimmer");
  World.Dialogs().Expect("TfrmKKWatchlistEditItemRemind",
                         [&](TForm& ioForm) { EXPECT_TRUE(Press(ioForm, u"btnOK")); });
  ClickOnItem(u"Wanduhr, um 1960", u"Erinnerung einrichten...");
  ASSERT_EQ(World.List().GetTree().Reminders.size(), 1u);
  const std::string tree = World.TreeText();
  const TWatchlistReminderInfo reminder = World.List().GetTree().Reminders[0];
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);

  World.Start();
  EXPECT_EQ(World.Window().Section(), &World.Watchlist());
  ASSERT_TRUE(CrankUntil([&] { return World.Tree().First() != nullptr; }));
  EXPECT_EQ(World.TreeText(), tree);
  ASSERT_EQ(World.List().GetTree().Reminders.size(), 1u);
  EXPECT_EQ(World.List().GetTree().Reminders[0].Id, reminder.Id);
  EXPECT_EQ(World.List().GetTree().Reminders[0].Time, reminder.Time);
  ShowCategory(u"Licht");
  EXPECT_GE(RowOf(u"Tischlampe Luna"), 0);
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
}

TEST_F(ADayOfAUser, TriesTheExampleShopWithOneClick) {
  World.Start();
  ASSERT_TRUE(World.Search().lblTryExample.Click());
  ASSERT_TRUE(CrankUntil([&] {
    return FindControl<TResultTable>(World.Search(), {}) != nullptr && Found().GetCount() == 3;
  }));
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
}

TEST_F(ADayOfAUser, PackagesAreTakenOutOfMemoryAtTheEnd) {
  World.Start();
  SearchFor({Shop.Articles()[0]});
  Watch(u"Wohnzimmer");
  World.Go(u"Beobachten");
  ASSERT_TRUE(CrankUntil([&] { return World.Tree().First() != nullptr; }));
  ShowCategory(u"Wohnzimmer");
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
  EXPECT_THAT(World.Folder.Read(u"kaufkobolde.log"), Not(HasSubstr("bleiben im Speicher")));
}

}  // namespace
}  // namespace kk
