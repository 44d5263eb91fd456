#include "apps/cli/TCliSettingsText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "TCliProcess.h"
#include "TFakeConsole.h"
#include "apps/cli/TCliSettings.h"
#include "host/base/Exception.h"
#include "tests/support/TFaultyFileLayer.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestIniFile.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using TLines = std::vector<std::string>;

// A plug-in that takes any line but one.
class TPublisher : public TInterfaced<ISettingsPublisher> {
 public:
  TPublisher(TStringView iNode, TStringView iName, const TStringList& iSettings)
      : FNode(iNode), FName(iName) {
    FSettings.Assign(iSettings);
  }
  TString GetSettingsNode() const override { return FNode; }
  const TStringList& GetSettings() override { return FSettings; }
  TString GetSettingsName() const override { return FName; }
  void SetSettings(const TStringList& iSettings) override {
    for (const TString& line : iSettings.Lines()) {
      if (line == u"Zahl=viele") throw EConvertError(u"'viele' ist keine gültige ganze Zahl");
      Taken.push_back(ToUtf8(line));
    }
  }

  TLines Taken;

 private:
  TString FNode;
  TString FName;
  TStringList FSettings;
};

class TCliSettingsTextTest : public testing::Test {
 public:
  void DoChange(TObject*) { ++Changes; }

 protected:
  void Run(TStringView iWord, TStringView iFileName) {
    TCliSettings(Console, {}, Publishers)
        .Run(TCliArguments::Parse({u"settings", TString(iWord), TString(iFileName)}));
  }
  std::string Failure(TStringView iWord, TStringView iFileName) {
    try {
      Run(iWord, iFileName);
    } catch (const Exception& e) {
      return ToUtf8(e.Message());
    }
    return "done";
  }
  void Import(const std::string& iBytes) {
    Folder.Write(u"e.txt", iBytes);
    Run(u"import", Folder.File(u"e.txt"));
  }
  std::string ImportFailure(const std::string& iBytes) {
    Folder.Write(u"e.txt", iBytes);
    return Failure(u"import", Folder.File(u"e.txt"));
  }
  TTempFolder Folder;
  TTestIniFile File{Folder.File(u"test.ini")};
  TFakeConsole Console;
  TScriptedFormHost User;
  TIntf<TPublisher> One = MakeIntf<TPublisher>(u"Eins", u"Das Erste",
                                               TStringList{u"[Eins]", u"Name=Das Erste", u"a=ä"});
  TIntf<TPublisher> Two =
      MakeIntf<TPublisher>(u"Zwei", u"Das Zweite", TStringList{u"[Zwei]", u"b=2"});
  TCliSettingsText::TPublishers Publishers = {One, Two};
  int Changes = 0;
};

TEST_F(TCliSettingsTextTest, ExportWritesWhatAllPlugInsTell) {
  const TString file = Folder.File(u"e.txt");
  Run(u"export", file);
  EXPECT_EQ(Folder.Read(u"e.txt"), "[Eins]\nName=Das Erste\na=ä\n\n[Zwei]\nb=2\n");
  EXPECT_THAT(Console.Printed(), ElementsAre("Einstellungen geschrieben: " + ToUtf8(file)));
}

TEST_F(TCliSettingsTextTest, AFileThatIsThereIsReplacedOnlyWithConsent) {
  Folder.Write(u"e.txt", "alt");
  const TString file = Folder.File(u"e.txt");
  const TString question = Format(u"Die Datei %s gibt es schon. Soll sie ersetzt werden?", {file});
  User.ExpectMessage(question, TMsgDlgBtn::mbNo);
  EXPECT_EQ(Failure(u"export", file),
            "Die Datei " + ToUtf8(file) + " bleibt, wie sie ist (--yes ersetzt sie).");
  EXPECT_EQ(Folder.Read(u"e.txt"), "alt");
  User.ExpectMessage(question, TMsgDlgBtn::mbYes);
  Run(u"export", file);
  EXPECT_THAT(Folder.Read(u"e.txt"), HasSubstr("[Eins]"));
}

TEST_F(TCliSettingsTextTest, AFileThatCantBeWrittenIsToldAndLeftAsItWas) {
  EXPECT_EQ(Failure(u"export", Folder.File(u"fehlt/e.txt")),
            "Die Datei " + Folder.Path() +
                "/fehlt/e.txt lässt sich nicht schreiben: Datei oder Ordner nicht gefunden");
  EXPECT_NE(Failure(u"export", FromUtf8(Folder.Path())), "done");
  Folder.Write(u"e.txt", "alt");
  User.ExpectMessage(
      Format(u"Die Datei %s gibt es schon. Soll sie ersetzt werden?", {Folder.File(u"e.txt")}),
      TMsgDlgBtn::mbYes);
  TFaultyFileLayer layer;
  layer.FailAll("write", ENOSPC);
  EXPECT_THAT(Failure(u"export", Folder.File(u"e.txt")), HasSubstr("e.txt"));
  EXPECT_EQ(Folder.Read(u"e.txt"), "alt");
  EXPECT_THAT(Console.Printed(), IsEmpty());
}

TEST_F(TCliSettingsTextTest, WithoutAPlugInThereIsNothingToExport) {
  Publishers.clear();
  EXPECT_EQ(Failure(u"export", Folder.File(u"e.txt")),
            "Kein Plug-in hat Einstellungen zum Mitnehmen.");
  EXPECT_THAT(Folder.Names(), IsEmpty());
}

TEST_F(TCliSettingsTextTest, ImportGivesEachPlugInItsSection) {
  File.AddNotifyOnChange(TNotifyEvent::Of<&TCliSettingsTextTest::DoChange>(this));
  Import("[zwei]\r\nb=3\r\n\r\nunbekannt\r\n  [ Eins ] \r\na=ö\r\n[Zwei]\r\nc=4");
  EXPECT_THAT(One->Taken, ElementsAre("  [ Eins ] ", "a=ö"));
  EXPECT_THAT(Two->Taken, ElementsAre("[zwei]", "b=3", "", "unbekannt", "[Zwei]", "c=4"));
  EXPECT_THAT(Console.Printed(), ElementsAre("Einstellungen übernommen: Das Erste",
                                             "Einstellungen übernommen: Das Zweite"));
  EXPECT_THAT(Console.Complained(), IsEmpty());
  EXPECT_EQ(Changes, 1) << "those who show them are told";
}

TEST_F(TCliSettingsTextTest, WhatWasExportedCanBeImported) {
  Run(u"export", Folder.File(u"e.txt"));
  Run(u"import", Folder.File(u"e.txt"));
  EXPECT_THAT(One->Taken, ElementsAre("[Eins]", "Name=Das Erste", "a=ä", ""));
  EXPECT_THAT(Two->Taken, ElementsAre("[Zwei]", "b=2"));
}

TEST_F(TCliSettingsTextTest, AMarkOfItsEncodingIsNoPartOfTheText) {
  Import("\xEF\xBB\xBF[Eins]\na=1\n");
  EXPECT_THAT(One->Taken, ElementsAre("[Eins]", "a=1"));
}

TEST_F(TCliSettingsTextTest, LinesMayEndInAnyWay) {
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    One->Taken.clear();
    Import("[Eins]" + end + "a=1" + end + end + "b=2");
    EXPECT_THAT(One->Taken, ElementsAre("[Eins]", "a=1", "", "b=2"));
  }
}

TEST_F(TCliSettingsTextTest, BytesThatAreNoTextAreSignsForThat) {
  using namespace std::string_literals;
  Import("[Eins]\na=\xFF\n\0b=\xED\xA0\x80\n[\xC3\n"s);
  EXPECT_THAT(One->Taken, ElementsAre("[Eins]", "a=\uFFFD", "\0b=\uFFFD\uFFFD\uFFFD"s, "[\uFFFD"));
}

TEST_F(TCliSettingsTextTest, SectionsOfNobodyAreToldOnceAndPassedOver) {
  Import("davor=1\n[Drei]\na=1\n[Eins]\na=2\n[Drei]\na=3\n[]\n[Vier\na=4\n");
  EXPECT_THAT(One->Taken, ElementsAre("[Eins]", "a=2"));
  EXPECT_THAT(Two->Taken, IsEmpty());
  EXPECT_THAT(Console.Complained(),
              ElementsAre("Hinweis: Den Abschnitt [Drei] kennt kein Plug-in, er wird übergangen.",
                          "Hinweis: Den Abschnitt [] kennt kein Plug-in, er wird übergangen."));
}

TEST_F(TCliSettingsTextTest, ALineThatCantBeTakenEndsTheImport) {
  File.AddNotifyOnChange(TNotifyEvent::Of<&TCliSettingsTextTest::DoChange>(this));
  EXPECT_EQ(ImportFailure("[Eins]\na=1\nZahl=viele\nb=2\n[Zwei]\nc=3\n"),
            "Die Einstellungen von \"Das Erste\" sind nicht alle zu verstehen: 'viele' ist keine "
            "gültige ganze Zahl. Was in der Datei davor steht, ist übernommen, was danach kommt, "
            "nicht.");
  EXPECT_THAT(One->Taken, ElementsAre("[Eins]", "a=1"));
  EXPECT_THAT(Two->Taken, IsEmpty());
  EXPECT_THAT(Console.Printed(), IsEmpty());
  EXPECT_EQ(Changes, 1) << "some were stored";
}

TEST_F(TCliSettingsTextTest, AFileWithoutASectionOfAPlugInIsNone) {
  for (const std::string bytes : {"", "a=1\n", "[Drei]\na=1\n", "\xFF\xFE[\0E"}) {
    EXPECT_EQ(ImportFailure(bytes), Folder.Path() +
                                        "/e.txt enthält keine Einstellungen, mit denen ein "
                                        "Plug-in etwas anfangen kann.");
  }
  EXPECT_THAT(One->Taken, IsEmpty());
}

TEST_F(TCliSettingsTextTest, AFileThatCantBeReadIsTold) {
  EXPECT_EQ(Failure(u"import", Folder.File(u"fehlt.txt")),
            "Die Datei " + Folder.Path() +
                "/fehlt.txt lässt sich nicht lesen: Datei oder Ordner nicht gefunden");
  EXPECT_THAT(Failure(u"import", FromUtf8(Folder.Path())), HasSubstr(Folder.Path()));
  EXPECT_EQ(ImportFailure("[Eins]\n" + std::string(TCliSettingsText::cMaxSize, 'x')),
            Folder.Path() + "/e.txt ist zu groß für eine Datei mit Einstellungen.");
  EXPECT_THAT(One->Taken, IsEmpty());
}

// The program itself, with its packages.

TEST(KaufkoboldeCliSettings, GoFromOneInstallationToAnother) {
  const TTempFolder first;
  const TTempFolder second;
  const auto run = [](const TTempFolder& iFolder, std::vector<std::string> iWords) {
    iWords.insert(iWords.begin(), {"--data", iFolder.Path(), "settings"});
    return RunCli(iWords, {});
  };
  const std::string file = first.Path() + "/e.txt";
  EXPECT_EQ(run(first, {"set", "Watchlist", "UpdateIntervalInHrs", "7"}).Exit, 0);
  EXPECT_EQ(run(first, {"set", "Watchlist", "SoundFile", "/x.wav"}).Exit, 0);
  TCliOutcome outcome = run(first, {"export", file});
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
  EXPECT_THAT(
      first.Read(u"e.txt"),
      testing::AllOf(testing::StartsWith("[Watchlist]\nName=Beobachten\n"),
                     HasSubstr("\nUpdateIntervalInHrs=7\n"), testing::Not(HasSubstr("wav"))));
  outcome = run(first, {"export", file});
  EXPECT_EQ(outcome.Exit, 1) << "nobody has agreed";
  EXPECT_THAT(outcome.Error, HasSubstr("(--yes ersetzt sie)"));
  EXPECT_EQ(run(first, {"export", file, "--yes"}).Exit, 0);
  outcome = run(second, {"import", file});
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
  EXPECT_EQ(outcome.Out, "Einstellungen übernommen: Beobachten\n");
  EXPECT_EQ(run(second, {"get", "Watchlist", "UpdateIntervalInHrs"}).Out, "7\n");
  first.Write(u"e.txt", "[Watchlist]\nUpdateOnStartup=-1\nUpdateIntervalInHrs=oft\n");
  outcome = run(second, {"import", file});
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(
      outcome.Error,
      HasSubstr("'oft' ist keine gültige ganze Zahl (UpdateIntervalInHrs). Was in der Datei"));
  EXPECT_EQ(run(second, {"get", "Watchlist", "UpdateOnStartup"}).Out, "1\n");
}

}  // namespace
}  // namespace kk
