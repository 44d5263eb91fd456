#include "apps/desktop/shell/TDesktopSession.h"

#include <unistd.h>
#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QWheelEvent>

#include <algorithm>
#include <csignal>
#include <future>

#include "TDesktopWorld.h"
#include "apps/desktop/shell/TIniFileSectionMainWindow.h"
#include "apps/desktop/skin/QtText.h"
#include "host/contract/TPlugins.h"
#include "host/controls/IMouseWheel.h"
#include "host/controls/TMemo.h"
#include "host/controls/TfrmMSNPopUpBase.h"
#include "host/controls/TfrmMessageDlg.h"
#include "host/program/TExampleShop.h"
#include "host/program/THostClient.h"
#include "tests/support/TFakeSourcePlugin.h"
#include "tests/support/TFaultyFileLayer.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TRawTestServer.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using TEnd = THostClient::THandOver::TEnd;

std::string TextOf(TForm& ioForm) { return ToUtf8(dynamic_cast<TfrmMessageDlg&>(ioForm).Text()); }
void Press(TForm& ioForm, TMsgDlgBtn iButton) {
  EXPECT_TRUE(dynamic_cast<TfrmMessageDlg&>(ioForm).Button(iButton)->Click());
}

// Sends the wheel on, and notes what it is shown on the way.
class TWheelSection : public TfrmKKCommonSectionBase {
 public:
  TWheelSection() : TfrmKKCommonSectionBase(nullptr, u"TWheelSection", u"Rad") {
    mmLong.SetStretches(true);
    TStringList lines;
    for (int i = 0; i < 500; ++i) lines.Add(u"Zeile");
    mmLong.SetLines(lines);
  }
  TGuid GetFormID() const override { return FId; }
  TString GetIniSectionName() const override { return u"Wheel"; }
  void MouseWheelHandler(IMouseWheel& ioWheel) override {
    TControl* target = this;
    while (TControl* const child = ioWheel.ControlAtPointer(*target)) {
      Seen.push_back(child);
      target = child;
    }
    Seen.push_back(nullptr);
    if (ioWheel.Perform(*target) == 0) ioWheel.PerformDefault();
  }

  TLabel lblPlain{this, u"lblPlain", u"Darüber"};
  TMemo mmLong{this, u"mmLong"};
  std::vector<TControl*> Seen;

 private:
  TGuid FId = NewGuid();
};

/// Whether it was taken.
bool TurnWheel(QWidget& ioWidget) {
  const QPointF at(ioWidget.rect().center());
  QWheelEvent turn(at, ioWidget.mapToGlobal(at), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&ioWidget, &turn);
  return turn.isAccepted();
}

class TDesktopSessionTest : public testing::Test {
 protected:
  ~TDesktopSessionTest() override { Plugins().Clear(); }

  /// A message box comes up that says this, and the user presses a button.
  void ExpectMessage(const std::string& iText, TMsgDlgBtn iButton = TMsgDlgBtn::mbOK) {
    World.Dialogs().Expect("TfrmMessageDlg", [iText, iButton](TForm& ioForm) {
      EXPECT_THAT(TextOf(ioForm), HasSubstr(iText));
      Press(ioForm, iButton);
    });
  }
  THostClient::THandOver HandOver(const std::vector<TString>& iWords) {
    auto answer = std::async(std::launch::async, [&] {
      return THostClient::HandOver(FromUtf8(World.Folder.Path()), iWords, u"token", 20000);
    });
    EXPECT_TRUE(CrankUntil(
        [&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    return answer.get();
  }
  size_t ItemCount() {
    size_t count = 0;
    for (const TWatchlistCategoryInfo& category : World.List().GetTree().Categories) {
      for (const TWatchlistGroupInfo& group : category.Groups) count += group.Items.size();
    }
    return count;
  }
  /// A file with an article that the list had and has no more.
  TString ExportedArticle() {
    const TExampleShop shop;
    World.Open({u"-rem", shop.Articles()[0]});
    World.Dialogs().Expect("TfrmWatchlistAddSearchResults", [](TForm& ioForm) {
      EXPECT_TRUE(TheControl<TButton>(ioForm, u"btnAll").Click());
    });
    EXPECT_TRUE(CrankUntil([&] { return World.Session().IsRunning() && ItemCount() == 1; }));
    const TString file = World.Folder.File(u"Liste.wch");
    EXPECT_TRUE(World.List().ExportToFile(file, {}));
    World.Dialogs().Expect("TfrmKKCommonMessageDlg", [](TForm& ioForm) {
      EXPECT_TRUE(TheControl<TButton>(ioForm, u"btnYes").Click());
    });
    const TWatchlistInfo tree = World.List().GetTree();
    EXPECT_TRUE(World.List().DeleteItems({tree.Categories[0].Groups[0].Items[0].Id}));
    return file;
  }
  /// The file of a list with the category "Bücher"; there is none afterwards.
  std::string SavedList() {
    World.Start();
    World.List().AddCategory(std::nullopt, u"Bücher", {});
    EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
    std::string list = World.Folder.Read(u"watchlist.dat");
    EXPECT_EQ(unlink((World.Folder.Path() + "/watchlist.dat").c_str()), 0);
    return list;
  }
  bool HasCopy(std::string_view iName, std::string_view iBytes) {
    return std::ranges::any_of(World.Folder.Names(), [&](const std::string& iFile) {
      return iFile.starts_with(iName) && World.Folder.Read(FromUtf8(iFile)) == iBytes;
    });
  }
  std::string SearchText() {
    return ToUtf8(ReplaceAll(World.Search().mmText.Lines().GetText(), u"\r\n", u"\n"));
  }
  QAction* MenuEntry(const QString& iText) {
    for (QAction* menu : World.Window().menuBar()->actions()) {
      for (QAction* entry : menu->menu()->actions()) {
        if (entry->text() == iText) return entry;
      }
    }
    return nullptr;
  }
  void Drop(QWidget* iOn, const QMimeData& iData) {
    QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &iData, Qt::LeftButton, {});
    QCoreApplication::sendEvent(iOn, &enter);
    QDropEvent drop({5, 5}, Qt::CopyAction | Qt::MoveAction, &iData, Qt::LeftButton, {});
    QCoreApplication::sendEvent(iOn, &drop);
  }

  TDesktopWorld World;
};

TEST_F(TDesktopSessionTest, WindowStandsBeforeTheListIsLoadedAndSaysSo) {
  World.Open();
  EXPECT_TRUE(World.Window().isVisible());
  EXPECT_FALSE(World.Session().IsRunning());
  const QList<QLabel*> labels = World.Window().findChildren<QLabel*>();
  EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel* iLabel) {
    return iLabel->text() == ToQt(u"Die Beobachtenliste wird geladen...");
  }));
  EXPECT_TRUE(CrankUntil([&] { return World.Session().IsRunning(); }));
  EXPECT_EQ(World.Window().Section(), &World.Search());
  EXPECT_EQ(World.Window().windowTitle(), ToQt(u"Suchen — Kaufkobolde"));
}

TEST_F(TDesktopSessionTest, EachSectionTakesThePlaceOfTheOneBefore) {
  World.Start();
  World.Go(u"Beobachten");
  EXPECT_EQ(World.Window().Section(), &World.Watchlist());
  EXPECT_FALSE(World.Search().Visible());
  World.Go(u"Suchen");
  EXPECT_TRUE(World.Search().Visible());
  EXPECT_FALSE(World.Watchlist().Visible());
  World.Go(u"Beobachten");
  EXPECT_TRUE(World.Watchlist().Visible());
  EXPECT_EQ(World.Window().windowTitle(), ToQt(u"Beobachten — Kaufkobolde"));
}

TEST_F(TDesktopSessionTest, WindowIsNeverLargerThanTheScreenWhateverSectionsWant) {
  World.Start();
  const QSize screen = World.Window().screen()->availableGeometry().size();
  EXPECT_LE(World.Window().width(), screen.width());
  EXPECT_LE(World.Window().height(), screen.height());
  World.Go(u"Beobachten");
  World.Watchlist().SetMinSize(9000, 9000);
  TSkin::Of(World.Watchlist())->Flush();
  QCoreApplication::processEvents();
  EXPECT_LE(World.Window().minimumSizeHint().height(), screen.height());
  EXPECT_LE(World.Window().minimumSizeHint().width(), screen.width());
}

TEST_F(TDesktopSessionTest, SectionKnowsItsSizeAndKeepsItAtTheEnd) {
  World.Start();
  EXPECT_EQ(World.Watchlist().ShownWidth(), 0) << "it was not on the screen yet";
  World.Go(u"Beobachten");
  World.Window().resize(780, 640);
  ASSERT_TRUE(CrankUntil([&] { return World.Watchlist().ShownWidth() == 780; }));
  const int height = World.Watchlist().ShownHeight();
  EXPECT_EQ(height, World.Window().centralWidget()->height());
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
  const std::string settings = World.Folder.Read(u"kaufkobolde.ini");
  EXPECT_THAT(settings, HasSubstr("WindowWidth=780\n"));
  EXPECT_THAT(settings, HasSubstr("WindowHeight=" + std::to_string(height) + "\n"));
}

TEST_F(TDesktopSessionTest, WheelGoesThroughTheSectionToWhatStandsUnderThePointer) {
  World.Start();
  TWheelSection section;
  section.Initialize(TIntf<IApplication>(MakeIntf<TDesktopApplication>(World.Desktop())));
  section.Show();
  TSkin& skin = *TSkin::Of(section);
  auto& list = dynamic_cast<QPlainTextEdit&>(*skin.WidgetOf(section.mmLong));
  ASSERT_TRUE(CrankUntil([&] { return list.verticalScrollBar()->maximum() > 0; }));

  EXPECT_TRUE(TurnWheel(*list.viewport()));
  EXPECT_THAT(section.Seen, ElementsAre(&section.mmLong, nullptr));
  EXPECT_GT(list.verticalScrollBar()->value(), 0);
  const int once = list.verticalScrollBar()->value();
  EXPECT_TRUE(TurnWheel(*list.viewport()));
  EXPECT_EQ(list.verticalScrollBar()->value(), 2 * once) << "one turn is one turn";

  section.Seen.clear();
  section.mmLong.SetEnabled(false);
  skin.Flush();
  EXPECT_FALSE(TurnWheel(*skin.WidgetOf(section.lblPlain)));
  EXPECT_FALSE(TurnWheel(list));
  EXPECT_THAT(section.Seen, ElementsAre(&section.lblPlain, nullptr, nullptr));
  EXPECT_EQ(list.verticalScrollBar()->value(), 2 * once);
  section.Uninitialize();
}

TEST_F(TDesktopSessionTest, ClosedSectionGivesWayToSuchen) {
  World.Start();
  World.Go(u"Beobachten");
  World.Watchlist().Close();
  EXPECT_EQ(World.Window().Section(), &World.Search());
}

TEST_F(TDesktopSessionTest, ToolbarHasSuchenThePlugInsAndEinstellungenInThisOrder) {
  World.Start();
  std::vector<std::string> captions;
  for (const auto& button : World.Desktop().ToolbarButtons()) {
    captions.push_back(ToUtf8(button->GetCaption()));
  }
  EXPECT_THAT(captions, ElementsAre("Suchen", "Beobachten", "Einstellungen"));
  EXPECT_EQ(World.Search().tlbrNavigation.Children().size(), 3u);
}

TEST_F(TDesktopSessionTest, KeysLeadToTheSections) {
  World.Start();
  QAction* const watch = MenuEntry(ToQt(u"Beobachten"));
  ASSERT_NE(watch, nullptr);
  EXPECT_EQ(watch->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_2));
  watch->trigger();
  EXPECT_EQ(World.Window().Section(), &World.Watchlist());
  MenuEntry(ToQt(u"Suchen"))->trigger();
  EXPECT_EQ(World.Window().Section(), &World.Search());
  EXPECT_EQ(MenuEntry(ToQt(u"&Beenden"))->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

TEST_F(TDesktopSessionTest, SettingsOpenAndHelpTellsTheVersion) {
  World.Start();
  World.Dialogs().Expect("TfrmOptions", [](TForm& ioForm) { ioForm.CloseByUser(); });
  World.Go(u"Einstellungen");
  EXPECT_TRUE(CrankUntil([&] { return World.Dialogs().IsDone(); }));
  ExpectMessage("Kaufkobolde 7.0");
  MenuEntry(ToQt(u"Ü&ber Kaufkobolde"))->trigger();
  EXPECT_TRUE(CrankUntil([&] { return World.Dialogs().IsDone(); }));
}

TEST_F(TDesktopSessionTest, ExampleShopCanBeTriedByTheMenu) {
  World.Start();
  MenuEntry(ToQt(u"Beispielladen &ausprobieren"))->trigger();
  EXPECT_THAT(SearchText(), HasSubstr("http://127.0.0.1:"));
}

TEST_F(TDesktopSessionTest, SecondStartIsTakenOver) {
  const TExampleShop shop;
  World.Start();
  World.Go(u"Beobachten");
  World.Window().hide();
  EXPECT_EQ(HandOver({shop.Articles()[0]}).End, TEnd::Done);
  EXPECT_TRUE(CrankUntil([&] { return World.Window().Section() == &World.Search(); }));
  EXPECT_TRUE(World.Window().isVisible());
  EXPECT_THAT(SearchText(), HasSubstr(ToUtf8(shop.Articles()[0])));
}

TEST_F(TDesktopSessionTest, SecondStartWithAWrongCallIsToldSo) {
  World.Start();
  const auto answer = HandOver({u"--falsch"});
  EXPECT_EQ(answer.End, TEnd::Refused);
  EXPECT_THAT(ToUtf8(answer.Text), HasSubstr("Unbekannte Option: --falsch"));
}

TEST_F(TDesktopSessionTest, SecondStartWaitsForADialog) {
  World.Start();
  World.Dialogs().Expect("TfrmOptions", [this](TForm& ioForm) {
    EXPECT_EQ(HandOver({u"lampe"}).End, TEnd::Done);
    EXPECT_THAT(SearchText(), IsEmpty());
    ioForm.CloseByUser();
  });
  World.Go(u"Einstellungen");
  EXPECT_TRUE(CrankUntil([&] { return !SearchText().empty(); }));
}

TEST_F(TDesktopSessionTest, ArticleOfTheCommandLineComesIntoTheList) {
  const TExampleShop shop;
  World.Open({u"-rem", shop.Articles()[0]});
  World.Dialogs().Expect("TfrmWatchlistAddSearchResults", [](TForm& ioForm) {
    EXPECT_TRUE(TheControl<TButton>(ioForm, u"btnAll").Click());
  });
  ASSERT_TRUE(CrankUntil([&] { return World.Session().IsRunning() && World.Dialogs().IsDone(); }));
  EXPECT_TRUE(CrankUntil([&] {
    const auto tree = World.List().GetTree();
    return !tree.Categories.empty() && !tree.Categories[0].Groups.empty() &&
           !tree.Categories[0].Groups[0].Items.empty();
  }));
  EXPECT_EQ(World.Window().Section(), &World.Watchlist());
}

TEST_F(TDesktopSessionTest, AddressOfTheCommandLineIsLookedAt) {
  World.Start({u"https://shop.example/lampe"});
  EXPECT_TRUE(CrankUntil([&] { return !SearchText().empty(); }));
  EXPECT_EQ(SearchText(), "https://shop.example/lampe\n");
  World.Search().btnCancel.Click();
}

TEST_F(TDesktopSessionTest, DroppedAddressesAreLookedForAnywhere) {
  const TExampleShop shop;
  World.Start();
  World.Go(u"Beobachten");
  QMimeData addresses;
  addresses.setUrls({QUrl(ToQt(shop.Articles()[0])), QUrl(ToQt(shop.Articles()[1]))});
  Drop(&World.Window(), addresses);
  EXPECT_EQ(World.Window().Section(), &World.Search());
  EXPECT_EQ(SearchText(), ToUtf8(shop.Articles()[0] + u"\n" + shop.Articles()[1] + u"\n"));
}

TEST_F(TDesktopSessionTest, FileIsNoTextForAField) {
  World.Start();
  ASSERT_TRUE(CrankUntil([&] { return World.Window().findChild<QPlainTextEdit*>() != nullptr; }));
  QMimeData file;
  file.setUrls({QUrl::fromLocalFile(ToQt(World.Folder.File(u"bild.png")))});
  ExpectMessage("Mit dieser Datei kann das Programm nichts anfangen");
  Drop(World.Window().findChild<QPlainTextEdit*>(), file);
  EXPECT_TRUE(CrankUntil([&] { return World.Dialogs().IsDone(); }));
  EXPECT_THAT(SearchText(), IsEmpty());
}

TEST_F(TDesktopSessionTest, MissingExportFileIsToldOf) {
  World.Open({u"-remimport", World.Folder.File(u"weg.wch")});
  ExpectMessage("Datei nicht vorhanden");
  EXPECT_TRUE(CrankUntil([&] { return World.Session().IsRunning() && World.Dialogs().IsDone(); }));
}

TEST_F(TDesktopSessionTest, ExportFileThatIsNoneIsToldOf) {
  World.Folder.Write(u"kaputt.wch", "nichts");
  World.Start();
  QMimeData file;
  file.setUrls({QUrl::fromLocalFile(ToQt(World.Folder.File(u"kaputt.wch")))});
  ExpectMessage("Diese Datei ist keine Beobachtenliste oder beschädigt");
  Drop(&World.Window(), file);
  EXPECT_TRUE(CrankUntil([&] { return World.Dialogs().IsDone(); }));
}

TEST_F(TDesktopSessionTest, HostLineImportsNothingOfAFileThatIsNone) {
  World.Folder.Write(u"kaputt.wch", "nichts");
  World.Open({u"-remimport", World.Folder.File(u"kaputt.wch")});
  ExpectMessage("Diese Datei ist nicht oder nicht ganz übernommen worden");
  EXPECT_TRUE(CrankUntil([&] { return World.Session().IsRunning() && World.Dialogs().IsDone(); }));
}

TEST_F(TDesktopSessionTest, OfADroppedExportFileTheUserChoosesWhatToImport) {
  const TString file = ExportedArticle();
  World.Search().Show();
  QMimeData dropped;
  dropped.setUrls({QUrl::fromLocalFile(ToQt(file))});
  World.Dialogs().Expect("TfrmKKWatchlistImport", [this](TForm& ioForm) {
    World.Dialogs().Expect("TfrmWatchlistImportProgress", [](TForm&) {});
    EXPECT_TRUE(TheControl<TButton>(ioForm, u"btnOK").Click());
  });
  Drop(&World.Window(), dropped);
  EXPECT_FALSE(World.Dialogs().IsDone());  // nothing stands in the way of the drop's own end
  EXPECT_TRUE(CrankUntil([&] { return ItemCount() == 1; }));
  EXPECT_TRUE(CrankUntil([&] { return World.Window().Section() == &World.Watchlist(); }));
}

TEST_F(TDesktopSessionTest, OfAnExportFileOnTheCommandLineTheUserChoosesWhatToImport) {
  const TString file = ExportedArticle();
  World.Dialogs().Expect("TfrmKKWatchlistImport", [](TForm& ioForm) { ioForm.CloseByUser(); });
  EXPECT_EQ(HandOver({file}).End, TEnd::Done);
  EXPECT_TRUE(CrankUntil([&] { return World.Dialogs().IsDone(); }));
  EXPECT_EQ(ItemCount(), 0u);
}

TEST_F(TDesktopSessionTest, HostLineImportsWithoutAQuestion) {
  const TString file = ExportedArticle();
  World.Search().Show();
  EXPECT_EQ(HandOver({u"-remimport", file}).End, TEnd::Done);
  EXPECT_TRUE(CrankUntil([&] { return ItemCount() == 1; }));
  EXPECT_TRUE(CrankUntil([&] { return World.Window().Section() == &World.Watchlist(); }));
}

TEST_F(TDesktopSessionTest, PasteOutsideOfFieldsIsLookedFor) {
  World.Start();
  World.Go(u"Beobachten");
  QGuiApplication::clipboard()->setText(ToQt(u"  ftp://nichts.example \n\n"));
  for (QShortcut* shortcut : World.Window().findChildren<QShortcut*>()) {
    Q_EMIT shortcut->activated();
  }
  EXPECT_EQ(World.Window().Section(), &World.Search());
  EXPECT_EQ(SearchText(), "ftp://nichts.example\n");
}

TEST_F(TDesktopSessionTest, WithoutATrayClosingTheWindowEndsTheProgram) {
  World.Start();
  TIniFileSectionGeneral().SetCloseToTray(true);
  World.Window().close();
  EXPECT_TRUE(CrankUntil([&] { return World.Session().MustEnd(); }));
  EXPECT_EQ(World.End(), TDesktopExit::deDone);
}

TEST_F(TDesktopSessionTest, GoesOnInTheTrayIfTheSettingSaysSo) {
  World.TrayIsAvailable = true;
  World.Start();
  TIniFileSectionGeneral().SetCloseToTray(true);
  World.Window().close();
  EXPECT_FALSE(World.Window().isVisible());
  EXPECT_FALSE(World.Session().MustEnd());
  World.Tray().Menu().actions()[0]->trigger();
  EXPECT_TRUE(World.Window().isVisible());
  World.Tray().Menu().actions()[0]->trigger();
  EXPECT_FALSE(World.Window().isVisible());
  World.Tray().Menu().actions()[1]->trigger();
  EXPECT_TRUE(CrankUntil([&] { return World.Session().MustEnd(); }));
}

TEST_F(TDesktopSessionTest, StartsInTheTrayIfTheSettingSaysSo) {
  World.Folder.Write(u"kaufkobolde.ini", "[General]\nStartInTray=1\n");
  World.TrayIsAvailable = true;
  World.Start();
  EXPECT_FALSE(World.Window().isVisible());
  EXPECT_EQ(HandOver({}).End, TEnd::Done);
  EXPECT_TRUE(CrankUntil([&] { return World.Window().isVisible(); }));
}

/// A source that does not let the program go to the tray.
class TStayingPlugin : public TFakeSourcePlugin {
 public:
  TStayingPlugin() : TFakeSourcePlugin(u"Bleibt") {}
  void MinimizeToTrayQuery(bool& ioAllowed) override { ioAllowed = false; }
};

TEST_F(TDesktopSessionTest, PlugInCanKeepTheProgramOutOfTheTray) {
  NeedQt();
  World.TrayIsAvailable = true;
  World.Open();
  Plugins().Add(MakeIntf<TStayingPlugin>());
  ASSERT_TRUE(CrankUntil([&] { return World.Session().IsRunning(); }));
  EXPECT_FALSE(World.Desktop().GoToTray());
  EXPECT_TRUE(World.Window().isVisible());
}

TEST_F(TDesktopSessionTest, EndsWhileARefreshRuns) {
  const TRawTestServer silent({}, TRawTestServer::TMode::moSilent);
  World.Open({u"-rem", FromUtf8(silent.Address("/nie"))});
  World.Dialogs().Expect("TfrmWatchlistAddSearchResults", [](TForm& ioForm) {
    EXPECT_TRUE(TheControl<TButton>(ioForm, u"btnAll").Click());
  });
  ASSERT_TRUE(
      CrankUntil([&] { return World.Session().IsRunning() && World.List().OpenUpdates() > 0; }));
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
}

TEST_F(TDesktopSessionTest, SystemEndsItAndTheListIsSaved) {
  World.Start();
  World.List().AddCategory(std::nullopt, u"Neu", {});
  raise(SIGTERM);
  EXPECT_TRUE(CrankUntil([&] { return World.Session().MustEnd(); }));
  EXPECT_EQ(World.End(), TDesktopExit::deDone);
  World.Start();
  ASSERT_EQ(World.List().GetTree().Categories.size(), 2u);
}

TEST_F(TDesktopSessionTest, SystemEndsItOverAnOpenDialog) {
  World.Start();
  World.Dialogs().Expect("TfrmOptions", [](TForm&) { raise(SIGTERM); });
  World.Go(u"Einstellungen");
  EXPECT_TRUE(CrankUntil([&] { return World.Session().MustEnd(); }));
  EXPECT_TRUE(World.Folder.Has(u"watchlist.dat"));
  EXPECT_EQ(World.End(), TDesktopExit::deDone);
}

TEST_F(TDesktopSessionTest, MissingListIsRestoredFromItsBackup) {
  World.Start();
  World.List().AddCategory(std::nullopt, u"Alt", {});
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
  World.Folder.Write(u"watchlist.da~", World.Folder.Read(u"watchlist.dat"));
  ASSERT_EQ(std::remove((World.Folder.Path() + "/watchlist.dat").c_str()), 0);

  World.Open();
  ExpectMessage("Soll sie wiederhergestellt werden?", TMsgDlgBtn::mbYes);
  ASSERT_TRUE(CrankUntil([&] { return World.Session().IsRunning(); }));
  EXPECT_EQ(World.List().GetTree().Categories.size(), 2u);
}

TEST_F(TDesktopSessionTest, BackupThatIsNotWantedIsKeptAsACopy) {
  World.Start();
  World.List().AddCategory(std::nullopt, u"Alt", {});
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
  const std::string list = World.Folder.Read(u"watchlist.dat");
  World.Folder.Write(u"watchlist.da~", list);
  ASSERT_EQ(std::remove((World.Folder.Path() + "/watchlist.dat").c_str()), 0);
  World.Open();
  ExpectMessage("Sicherung", TMsgDlgBtn::mbNo);
  ASSERT_TRUE(CrankUntil([&] { return World.Session().IsRunning(); }));
  EXPECT_TRUE(HasCopy("watchlist.da~.2", list));
}

TEST_F(TDesktopSessionTest, BackupQuestionCanBeLeft) {
  World.Folder.Write(u"watchlist.da~", "etwas");
  World.Open();
  ExpectMessage("Sicherung", TMsgDlgBtn::mbCancel);
  ASSERT_TRUE(CrankUntil([&] { return World.Session().MustEnd(); }));
  EXPECT_FALSE(World.Session().IsRunning());
  EXPECT_EQ(World.End(), TDesktopExit::deDone);
  EXPECT_FALSE(World.Folder.Has(u"watchlist.dat"));
}

TEST_F(TDesktopSessionTest, DamagedListIsRestoredFromASoundBackup) {
  const std::string list = SavedList();
  World.Folder.Write(u"watchlist.da~", list);
  World.Folder.Write(u"watchlist.dat", "kein Archiv");
  World.Open();
  ExpectMessage("Soll der Stand vor dem letzten Speichern wiederhergestellt werden?",
                TMsgDlgBtn::mbYes);
  ASSERT_TRUE(CrankUntil([&] { return World.Session().IsRunning(); }));
  EXPECT_EQ(World.List().GetTree().Categories.back().Name, u"Bücher");
  EXPECT_TRUE(HasCopy("watchlist.dat.2", "kein Archiv"));
}

TEST_F(TDesktopSessionTest, DamagedListCanBeginEmptyAndItsBackupIsKeptAsACopy) {
  const std::string list = SavedList();
  World.Folder.Write(u"watchlist.da~", list);
  World.Folder.Write(u"watchlist.dat", "kein Archiv");
  World.Open();
  ExpectMessage("wiederhergestellt", TMsgDlgBtn::mbNo);
  ASSERT_TRUE(CrankUntil([&] { return World.Session().IsRunning(); }));
  EXPECT_EQ(World.List().GetTree().Categories.size(), 1u);
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
  EXPECT_TRUE(HasCopy("watchlist.da~.2", list));
  EXPECT_TRUE(HasCopy("watchlist.dat.2", "kein Archiv"));
}

TEST_F(TDesktopSessionTest, QuestionForADamagedListCanBeLeft) {
  World.Folder.Write(u"watchlist.da~", SavedList());
  World.Folder.Write(u"watchlist.dat", "kein Archiv");
  World.Open();
  ExpectMessage("wiederhergestellt", TMsgDlgBtn::mbCancel);
  ASSERT_TRUE(CrankUntil([&] { return World.Session().MustEnd(); }));
  EXPECT_EQ(World.End(), TDesktopExit::deDone);
  EXPECT_EQ(World.Folder.Read(u"watchlist.dat"), "kein Archiv");
}

TEST_F(TDesktopSessionTest, ListThatCantBeCopiedIsNotBegunByReturn) {
  ASSERT_EQ(symlink("nirgends", (World.Folder.Path() + "/watchlist.dat").c_str()), 0);
  World.Open();
  World.Dialogs().Expect("TfrmMessageDlg", [](TForm& ioForm) {
    EXPECT_THAT(TextOf(ioForm), HasSubstr("Soll das Programm trotzdem beginnen"));
    EXPECT_TRUE(ioForm.DefaultButton()->Click());
  });
  ASSERT_TRUE(CrankUntil([&] { return World.Session().MustEnd(); }));
  EXPECT_EQ(World.End(), TDesktopExit::deDone);
  World.Open();
  ExpectMessage("Soll das Programm trotzdem beginnen", TMsgDlgBtn::mbYes);
  ASSERT_TRUE(CrankUntil([&] { return World.Session().IsRunning(); }));
  ASSERT_EQ(unlink((World.Folder.Path() + "/watchlist.dat").c_str()), 0);
}

TEST_F(TDesktopSessionTest, DamagedListIsPutAsideAndTold) {
  World.Folder.Write(u"watchlist.dat", "kein Archiv");
  World.Open();
  ExpectMessage("watchlist.dat");
  ASSERT_TRUE(CrankUntil([&] { return World.Session().IsRunning(); }));
}

TEST_F(TDesktopSessionTest, RefusedPackagesAreToldOnce) {
  const TTempFolder packages;
  packages.Write(u"libkaputt.so", "nichts");
  qputenv("KAUFKOBOLDE_PLUGINS", packages.Path().c_str());
  World.Open();
  ExpectMessage("libkaputt.so");
  ExpectMessage("libwatchlist.so) ist nicht geladen");
  EXPECT_TRUE(CrankUntil([&] { return World.Session().MustEnd(); }));
  qunsetenv("KAUFKOBOLDE_PLUGINS");
  EXPECT_EQ(World.End(), TDesktopExit::deFailed);
}

TEST_F(TDesktopSessionTest, FailedSaveIsToldAndTheExitSaysSo) {
  World.Start();
  World.List().AddCategory(std::nullopt, u"Neu", {});
  ASSERT_EQ(mkdir((World.Folder.Path() + "/watchlist.dat").c_str(), 0700), 0);
  // The last dialog comes when the session's own form host stands.
  World.Dialogs().Expect("TfrmMessageDlg", [](TForm& ioForm) {
    EXPECT_THAT(TextOf(ioForm), HasSubstr("nicht gespeichert"));
    Press(ioForm, TMsgDlgBtn::mbOK);
  });
  EXPECT_EQ(World.Quit(), TDesktopExit::deFailed);
}

TEST_F(TDesktopSessionTest, UserIsAskedBeforeTheProgramEndsWithoutASave) {
  World.Start();
  {
    TFaultyFileLayer layer;
    layer.FailAll("write", ENOSPC);
    World.Dialogs().Expect("TfrmMessageDlg", [](TForm& ioForm) {
      EXPECT_THAT(TextOf(ioForm), HasSubstr("Soll das Programm trotzdem enden?"));
      EXPECT_THAT(TextOf(ioForm), HasSubstr("Der Datenträger ist voll"));
      EXPECT_TRUE(ioForm.DefaultButton()->Click());
    });
    World.Session().RequestEnd();
    EXPECT_TRUE(World.Dialogs().IsDone());
    EXPECT_FALSE(World.Session().MustEnd());
    EXPECT_EQ(HandOver({}).End, TEnd::Done) << "it takes second starts again";
    ExpectMessage("trotzdem enden", TMsgDlgBtn::mbYes);
    World.Session().RequestEnd();
    EXPECT_TRUE(World.Session().MustEnd());
  }
  EXPECT_EQ(World.End(), TDesktopExit::deDone);
  EXPECT_TRUE(World.Folder.Has(u"watchlist.dat"));
}

TEST_F(TDesktopSessionTest, SystemEndsItOverTheQuestionOfASave) {
  World.Start();
  TFaultyFileLayer layer;
  layer.FailAll("write", ENOSPC);
  World.Dialogs().Expect("TfrmMessageDlg", [this](TForm& ioForm) {
    EXPECT_THAT(TextOf(ioForm), HasSubstr("trotzdem enden"));
    World.Session().RequestSystemEnd();
  });
  World.Session().RequestEnd();
  EXPECT_TRUE(CrankUntil([&] { return World.Session().MustEnd(); }));
  EXPECT_EQ(World.End(), TDesktopExit::deFailed);
}

TEST_F(TDesktopSessionTest, WindowComesBackInItsPlaceWithItsSection) {
  World.Start();
  World.Window().resize(760, 555);
  World.Go(u"Beobachten");
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
  World.Start();
  EXPECT_EQ(World.Window().size(), QSize(760, 555));
  EXPECT_EQ(World.Window().Section(), &World.Watchlist());
}

TEST_F(TDesktopSessionTest, FirstPlaceOfTheWindowIsLeftToTheDesktop) {
  World.Open();
  EXPECT_FALSE(World.Window().testAttribute(Qt::WA_Moved));
  ASSERT_TRUE(CrankUntil([&] { return World.Session().IsRunning(); }));
  World.Window().move(20, 50);
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
  World.Open();
  EXPECT_TRUE(World.Window().testAttribute(Qt::WA_Moved));
}

TEST_F(TDesktopSessionTest, WindowComesBackOntoASmallerScreen) {
  World.Start();
  const QRect screen = World.Window().screen()->availableGeometry();
  World.Window().setGeometry({screen.right() - 300, screen.bottom() - 200, 700, 600});
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
  World.Open();
  EXPECT_EQ(World.Window().size(), QSize(700, 600)) << "there is room for it";
  EXPECT_TRUE(screen.contains(World.Window().frameGeometry()));
  World.Window().setGeometry({-100, -100, screen.width() + 200, screen.height() + 200});
  ASSERT_TRUE(CrankUntil([&] { return World.Session().IsRunning(); }));
  EXPECT_EQ(World.Quit(), TDesktopExit::deDone);
  World.Start();
  EXPECT_TRUE(screen.contains(World.Window().frameGeometry()));
}

TEST_F(TDesktopSessionTest, PopUpOfAPlugInIsShownAndFreedLater) {
  World.Start();
  auto form = std::make_unique<TfrmMSNPopUpBase>(nullptr, u"popup");
  TfrmMSNPopUpBase& popUp = *form.release();
  const auto plugin = MakeIntf<TDesktopApplication>(World.Desktop());
  EXPECT_TRUE(plugin->ShowNotificationWindow(&popUp));
  ASSERT_EQ(World.Desktop().PopUps().Windows().size(), 1u);
  EXPECT_TRUE(World.Desktop().PopUps().Windows()[0]->isVisible());
  popUp.Close();
  EXPECT_THAT(World.Desktop().PopUps().Windows(), IsEmpty());
  QCoreApplication::processEvents();
  EXPECT_FALSE(plugin->ShowNotificationWindow(nullptr));
  plugin->Leave();
  EXPECT_FALSE(plugin->ShowNotificationWindow(&popUp));
  EXPECT_EQ(plugin->GetCount(), 0);
}

}  // namespace
}  // namespace kk
