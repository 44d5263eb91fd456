#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "TCliProcess.h"
#include "TTestShop.h"
#include "host/base/TString.h"
#include "tests/support/TTempFolder.h"

// The program as a user starts it: in a process of its own, with the packages that were built, and
// with a shop on the loopback address.

namespace kk {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using testing::UnorderedElementsAre;
using TJson = nlohmann::json;

constexpr char cUnassigned[] = "<Keiner Kategorie zugewiesen>";

class TKaufkoboldeCli : public testing::Test {
 protected:
  /// Whatever a run did, nothing of a package may outlive it.
  void TearDown() override {
    if (!Data.Has(u"kaufkobolde.log")) return;
    EXPECT_THAT(Data.Read(u"kaufkobolde.log"), Not(HasSubstr("Es leben noch")));
  }

  std::vector<std::string> WithData(const std::vector<std::string>& iArguments) const {
    std::vector<std::string> words = {"--data", Data.Path()};
    words.insert(words.end(), iArguments.begin(), iArguments.end());
    return words;
  }
  TCliOutcome Run(const std::vector<std::string>& iArguments,
                  const TCliProcess::TOptions& iOptions = {}) const {
    return RunCli(WithData(iArguments), iOptions);
  }
  /// A call that has to go well; answers what it printed.
  std::string Do(const std::vector<std::string>& iArguments) const {
    const TCliOutcome outcome = Run(iArguments);
    EXPECT_EQ(outcome.Exit, 0) << iArguments[0] << ": " << outcome.Error;
    EXPECT_THAT(outcome.Error, IsEmpty()) << iArguments[0];
    return outcome.Out;
  }
  TJson Tree() const { return TJson::parse(Do({"list", "--json"})); }
  TJson Category(const std::string& iName) const {
    const TJson tree = Tree();
    for (const TJson& category : tree["categories"]) {
      if (category["name"] == iName) return category;
    }
    return nullptr;
  }
  TJson Show(const std::string& iItem) const { return TJson::parse(Do({"show", iItem, "--json"})); }
  std::string Value(const std::string& iItem, const std::string& iTitle) const {
    const TJson item = Show(iItem);
    for (const TJson& value : item["values"]) {
      if (value["title"] == iTitle) return value["value"];
    }
    return "";
  }
  void AddLampInto(const std::string& iCategory) {
    const std::string address = Shop.Put("/lampe", "Lampe", "19.90");
    Do({"add", address, "--category", iCategory, "--create"});
  }
  /// What the copies hold that no save writes over.
  std::vector<std::string> PutAside() const {
    std::vector<std::string> result;
    for (const std::string& name : Data.Names()) {
      if (!name.starts_with("watchlist.da")) continue;
      if (name != "watchlist.dat" && name != "watchlist.da~") {
        result.push_back(Data.Read(FromUtf8(name)));
      }
    }
    return result;
  }

  TTempFolder Data;
  TTestShop Shop;
};

TEST_F(TKaufkoboldeCli, WithoutArgumentsItHelps) {
  const TCliOutcome outcome = RunCli({});
  EXPECT_EQ(outcome.Exit, 0);
  EXPECT_THAT(outcome.Out, AllOf(StartsWith("kaufkobolde-cli"), HasSubstr("Beispiele:")));
  EXPECT_EQ(RunCli({"--help"}).Out, outcome.Out);
  EXPECT_EQ(RunCli({"--version"}).Out, "kaufkobolde-cli 7.0\n");
}

TEST_F(TKaufkoboldeCli, WrongCallsEndWithTwoAndAHint) {
  const std::vector<std::vector<std::string>> calls = {
      {"unfug"},          {"show"},           {"add"},
      {"list", "--jsn"},  {"category"},       {"settings", "get", "Watchlist"},
      {"list", "--data"}, {"category", "add"}};
  for (const auto& words : calls) {
    const TCliOutcome outcome = RunCli(words);
    EXPECT_EQ(outcome.Exit, 2) << words[0];
    EXPECT_THAT(outcome.Error, StartsWith("Fehler: ")) << words[0];
    EXPECT_GE(std::count(outcome.Error.begin(), outcome.Error.end(), '\n'), 2) << words[0];
    EXPECT_THAT(outcome.Out, IsEmpty());
  }
}

TEST_F(TKaufkoboldeCli, AFreshListHasTheCategoryForEverything) {
  const TJson tree = Tree();
  ASSERT_EQ(tree["categories"].size(), 1u);
  EXPECT_EQ(tree["categories"][0]["id"], "{00000000-0000-0000-0000-000000000000}");
  EXPECT_EQ(tree["categories"][0]["name"], cUnassigned);
  EXPECT_EQ(tree["reminders"], TJson::array());
}

TEST_F(TKaufkoboldeCli, AddedArticleStandsInTheList) {
  const std::string address = Shop.Put("/lampe", "Lampe", "19.90");
  EXPECT_EQ(Do({"add", address, "--category", "Haus", "--create"}),
            "Aufgenommen: Lampe (in Haus)\n");
  const TJson house = Category("Haus");
  ASSERT_EQ(house["groups"].size(), 1u);
  const TJson item = house["groups"][0]["items"][0];
  EXPECT_EQ(item["name"], "Lampe");
  EXPECT_EQ(item["endTime"], nullptr);
  EXPECT_THAT(item["lastUpdate"].get<std::string>(), HasSubstr("T"));
  EXPECT_EQ(item["note"], TJson::array());
  EXPECT_THAT(Do({"list"}), AllOf(HasSubstr("19,90 EUR"), HasSubstr("Lampe")));
}

TEST_F(TKaufkoboldeCli, WithoutATerminalNewArticlesGoWhereTheWindowProposes) {
  const TCliOutcome outcome = Run({"add", Shop.Put("/lampe", "Lampe", "19.90")});
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
  EXPECT_EQ(outcome.Out, std::string("Aufgenommen: Lampe (in ") + cUnassigned + ")\n");
}

TEST_F(TKaufkoboldeCli, AddTellsWhatWasAddedAndWhatFailed) {
  const std::string lamp = Shop.Put("/lampe", "Lampe", "19.90");
  Shop.SetStatus("/weg", 404);
  const std::string clock = Shop.Put("/uhr", "Uhr", "29.90");
  const TCliOutcome outcome = Run(
      {"add", lamp, Shop.Address("/weg"), "unfug", clock, lamp, "--category", "Haus", "--create"});
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_EQ(outcome.Out,
            "Aufgenommen: Lampe (in Haus)\nAufgenommen: Uhr (in Haus)\n2 von 5 aufgenommen.\n");
  EXPECT_THAT(outcome.Error,
              AllOf(HasSubstr("nicht aufgenommen: " + Shop.Address("/weg")), HasSubstr("404"),
                    HasSubstr("Keine Quelle kennt diese Adresse: unfug"),
                    HasSubstr("Der Artikel wird schon beobachtet: " + lamp)));
  EXPECT_EQ(Category("Haus")["groups"][0]["items"].size(), 2u);
}

TEST_F(TKaufkoboldeCli, AnUnknownCategoryWithoutCreateIsAWrongCall) {
  const std::string address = Shop.Put("/lampe", "Lampe", "19.90");
  const TCliOutcome outcome = Run({"add", address, "--category", "Haus"});
  EXPECT_EQ(outcome.Exit, 2);
  EXPECT_THAT(outcome.Error, HasSubstr("--create"));
  EXPECT_EQ(Shop.Requests("/lampe"), 0);
}

TEST_F(TKaufkoboldeCli, TheCategoryIsHonouredWithTheQuestionSwitchedOff) {
  Do({"settings", "set", "Watchlist", "ShowAddDialog", "nein"});
  AddLampInto("Haus");
  EXPECT_EQ(Category("Haus")["groups"][0]["items"][0]["name"], "Lampe");
  EXPECT_EQ(Category(cUnassigned)["groups"], TJson::array());
}

TEST_F(TKaufkoboldeCli, TheHostsCommandLineReachesTheWatchList) {
  const TCliOutcome outcome = Run({"-rem", Shop.Put("/lampe", "Lampe", "19.90")});
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
  EXPECT_THAT(outcome.Out, StartsWith("Aufgenommen: Lampe"));
  const TCliOutcome missing = Run({"-remimport", Data.Path() + "/gibt es nicht.wch"});
  EXPECT_EQ(missing.Exit, 1);
  EXPECT_THAT(missing.Error, HasSubstr("gibt es nicht.wch"));
}

TEST_F(TKaufkoboldeCli, RefreshBringsTheNewPrice) {
  AddLampInto("Haus");
  EXPECT_EQ(Value("Lampe", "Preis"), "19,90 EUR");
  Shop.Put("/lampe", "Lampe", "14.50");
  EXPECT_EQ(Do({"refresh"}), "1 von 1: Lampe: aktualisiert\n");
  EXPECT_EQ(Value("lampe", "Preis"), "14,50 EUR");
  Shop.Put("/lampe", "Lampe", "12.00");
  Do({"refresh", "HAUS"});
  EXPECT_EQ(Value("Lampe", "Preis"), "12,00 EUR");
  Shop.Put("/lampe", "Lampe", "11.00");
  Do({"refresh", "Lampe"});
  EXPECT_EQ(Value("Lampe", "Preis"), "11,00 EUR");
}

TEST_F(TKaufkoboldeCli, AFailedRefreshKeepsTheOldPriceAndLetsTheOthersGoOn) {
  AddLampInto("Haus");
  Do({"add", Shop.Put("/uhr", "Uhr", "29.90"), "--category", "Haus"});
  Shop.SetStatus("/lampe", 404);
  Shop.Put("/uhr", "Uhr", "27.00");
  const TCliOutcome outcome = Run({"refresh"});
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Out,
              AllOf(HasSubstr("Lampe: fehlgeschlagen"), HasSubstr("Uhr: aktualisiert")));
  EXPECT_THAT(outcome.Error, AllOf(HasSubstr(Shop.Address("/lampe")), HasSubstr("404"),
                                   EndsWith("1 von 2 konnten nicht aktualisiert werden.\n")));
  EXPECT_EQ(Value("Lampe", "Preis"), "19,90 EUR");
  EXPECT_EQ(Value("Uhr", "Preis"), "27,00 EUR");
}

TEST_F(TKaufkoboldeCli, RefreshOfNothingIsDone) {
  EXPECT_EQ(Do({"refresh"}), "Es gibt nichts zu aktualisieren.\n");
}

TEST_F(TKaufkoboldeCli, UnknownAndAmbiguousNamesAreWrongCalls) {
  AddLampInto("Haus");
  Do({"add", Shop.Put("/zweite", "LAMPE", "9.90"), "--category", "Flur", "--create"});
  const TCliOutcome unknown = Run({"show", "Uhr"});
  EXPECT_EQ(unknown.Exit, 2);
  EXPECT_THAT(unknown.Error, HasSubstr("Den Artikel gibt es nicht: Uhr"));
  const TCliOutcome ambiguous = Run({"show", "lampe"});
  EXPECT_EQ(ambiguous.Exit, 2);
  const std::string id = Category("Flur")["groups"][0]["items"][0]["id"];
  EXPECT_THAT(ambiguous.Error,
              AllOf(HasSubstr(id), HasSubstr("(in Haus)"), HasSubstr("(in Flur)")));
  EXPECT_EQ(Show(id)["category"], "Flur");
}

TEST_F(TKaufkoboldeCli, CategoriesAreMadeChangedAndMoved) {
  Do({"category", "add", "Haus", "--text", "Alles fürs Haus"});
  Do({"category", "add", "Flur", "--in", "haus"});
  Do({"category", "describe", "Flur", "eins", "zwei"});
  TJson house = Category("Haus");
  EXPECT_EQ(house["description"], TJson({"Alles fürs Haus"}));
  EXPECT_EQ(house["categories"][0]["name"], "Flur");
  EXPECT_EQ(house["categories"][0]["description"], TJson({"eins", "zwei"}));
  Do({"category", "rename", "Flur", "Diele"});
  Do({"category", "move", "Diele", "--top"});
  EXPECT_EQ(Category("Diele")["description"], TJson({"eins", "zwei"}));
  Do({"category", "move", "Haus", "Diele"});
  EXPECT_EQ(Category("Diele")["categories"][0]["name"], "Haus");
}

TEST_F(TKaufkoboldeCli, WhatTheListRefusesFailsAndChangesNothing) {
  Do({"category", "add", "Haus"});
  Do({"category", "add", "Flur", "--in", "Haus"});
  const TJson before = Tree();
  const std::vector<std::vector<std::string>> calls = {
      {"category", "add", "haus"},
      {"category", "rename", cUnassigned, "Neu"},
      {"category", "move", "Haus", "Flur"},
      {"category", "delete", cUnassigned, "--yes"}};
  for (const auto& call : calls) {
    const TCliOutcome outcome = Run(call);
    EXPECT_EQ(outcome.Exit, 1) << call[1];
    EXPECT_THAT(outcome.Error, StartsWith("Fehler: ")) << call[1];
  }
  EXPECT_EQ(Tree(), before);
}

TEST_F(TKaufkoboldeCli, DeletesAreConfirmedFirst) {
  AddLampInto("Haus");
  const TCliOutcome outcome = Run({"category", "delete", "Haus"});
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, AllOf(HasSubstr("wirklich gelöscht"), HasSubstr("--yes")));
  EXPECT_EQ(Run({"delete", "Lampe"}).Exit, 1);
  EXPECT_EQ(Category("Haus")["groups"][0]["items"].size(), 1u);
  Do({"delete", "Lampe", "--yes"});
  EXPECT_EQ(Category("Haus")["groups"], TJson::array());
  Do({"category", "delete", "Haus", "--yes"});
  EXPECT_EQ(Category("Haus"), nullptr);
}

TEST_F(TKaufkoboldeCli, ItemsAreMovedAndGetNotes) {
  AddLampInto("Haus");
  Do({"category", "add", "Flur"});
  EXPECT_EQ(Do({"move", "Lampe", "Flur"}), "1 Artikel verschoben: nach Flur\n");
  EXPECT_EQ(Show("Lampe")["category"], "Flur");
  Do({"note", "Lampe", "für den Tisch", "blau"});
  EXPECT_EQ(Show("Lampe")["note"], TJson({"für den Tisch", "blau"}));
  Do({"refresh"});
  EXPECT_EQ(Show("Lampe")["note"], TJson({"für den Tisch", "blau"})) << "a refresh keeps the note";
  Do({"note", "Lampe", ""});
  EXPECT_EQ(Show("Lampe")["note"], TJson::array());
}

TEST_F(TKaufkoboldeCli, ShowTellsAllThatIsKnown) {
  AddLampInto("Haus");
  Do({"note", "Lampe", "blau"});
  EXPECT_THAT(Do({"show", "Lampe"}),
              AllOf(HasSubstr("Lampe\n"), HasSubstr("Haus\n"), HasSubstr("19,90 EUR\n"),
                    HasSubstr(Shop.Address("/lampe") + "\n"), HasSubstr("blau\n")));
}

TEST_F(TKaufkoboldeCli, NamesFromTheNetworkCanNotSteerTheTerminal) {
  Do({"add", Shop.Put("/boese", "Lam&#x1B;[2Jpe&#x202E;&#x9B;31m", "1.00"), "--category", "A",
      "--create"});
  for (const std::vector<std::string>& call :
       {std::vector<std::string>{"list"}, {"list", "--json"}, {"refresh"}}) {
    const TCliOutcome outcome = Run(call);
    for (const std::string& text : {outcome.Out, outcome.Error}) {
      EXPECT_EQ(text.find('\x1B'), std::string::npos) << call.back();
      EXPECT_EQ(text.find("\xC2\x9B"), std::string::npos) << call.back();
    }
  }
  EXPECT_EQ(Do({"list"}).find("\xE2\x80\xAE"), std::string::npos);
}

TEST_F(TKaufkoboldeCli, SettingsAreListedReadAndSet) {
  EXPECT_THAT(Do({"settings", "list"}),
              AllOf(HasSubstr("[Watchlist]\n"), HasSubstr("CategoryTreeWidth=220  (50 bis 500")));
  Do({"settings", "set", "Watchlist", "CategoryTreeWidth", "300"});
  EXPECT_EQ(Do({"settings", "get", "watchlist", "categorytreewidth"}), "300\n");
  const TCliOutcome wrong = Run({"settings", "set", "Watchlist", "CategoryTreeWidth", "501"});
  EXPECT_EQ(wrong.Exit, 2);
  EXPECT_THAT(wrong.Error, HasSubstr("50 bis 500"));
  EXPECT_EQ(Do({"settings", "get", "Watchlist", "CategoryTreeWidth"}), "300\n");
}

TEST_F(TKaufkoboldeCli, ADamagedFileIsPutAsideAndTold) {
  AddLampInto("Haus");
  Data.Write(u"watchlist.dat", "das ist kein Archiv");
  Data.Write(u"watchlist.da~", "und das auch nicht");
  const TCliOutcome outcome = Run({"list", "--restore-backup"});
  EXPECT_THAT(outcome.Error, AllOf(HasSubstr("beschädigt"), HasSubstr("Eine Kopie liegt in "),
                                   HasSubstr("nichts wiederherzustellen")));
  EXPECT_THAT(PutAside(), UnorderedElementsAre("das ist kein Archiv", "und das auch nicht"));
  EXPECT_EQ(Run({"list"}).Exit, 0) << "and from then on all is well";
}

TEST_F(TKaufkoboldeCli, ADamagedFileIsRestoredFromItsBackupOnRequest) {
  AddLampInto("Haus");
  Do({"list"});
  const TJson before = Tree();
  const std::string backup = Data.Read(u"watchlist.da~");
  Data.Write(u"watchlist.dat", "das ist kein Archiv");
  const TCliOutcome outcome = Run({"list"});
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, AllOf(HasSubstr("beschädigt"), HasSubstr("Mit --restore-backup")));
  EXPECT_EQ(Data.Read(u"watchlist.dat"), "das ist kein Archiv");
  EXPECT_EQ(Data.Read(u"watchlist.da~"), backup) << "nothing is written over the backup";
  const TCliOutcome restored = Run({"list", "--json", "--restore-backup"});
  EXPECT_EQ(restored.Exit, 0);
  EXPECT_THAT(restored.Error, HasSubstr("wiederhergestellt"));
  EXPECT_EQ(TJson::parse(restored.Out), before);
  EXPECT_THAT(PutAside(), UnorderedElementsAre("das ist kein Archiv", backup));
}

TEST_F(TKaufkoboldeCli, AMissingFileIsRestoredFromItsBackupOnRequest) {
  AddLampInto("Haus");
  Do({"list"});
  const TJson before = Tree();
  ASSERT_TRUE(Data.Has(u"watchlist.da~"));
  fs::remove(Data.Path() + "/watchlist.dat");
  const TCliOutcome outcome = Run({"list"});
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, HasSubstr("--restore-backup"));
  EXPECT_FALSE(Data.Has(u"watchlist.dat")) << "nothing is written over the backup";
  const TCliOutcome restored = Run({"list", "--json", "--restore-backup"});
  EXPECT_EQ(restored.Exit, 0);
  EXPECT_THAT(restored.Error, HasSubstr("wiederhergestellt"));
  EXPECT_EQ(TJson::parse(restored.Out), before);
  EXPECT_THAT(Run({"list", "--restore-backup"}).Error, HasSubstr("nichts wiederherzustellen"));
}

TEST_F(TKaufkoboldeCli, ASaveThatFailsIsSeen) {
  Do({"category", "add", "Haus"});
  const std::string before = Data.Read(u"watchlist.dat");
  fs::create_directory(Data.Path() + "/watchlist.dat.tmp");
  const TCliOutcome outcome = Run({"category", "add", "Flur"});
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, AllOf(HasSubstr("Fehler: Datei konnte nicht gespeichert werden"),
                                   HasSubstr("Mit --restore-backup")));
  EXPECT_EQ(Data.Read(u"watchlist.da~"), before) << "the last state is the backup then";
  fs::remove(Data.Path() + "/watchlist.dat.tmp");
  EXPECT_EQ(Run({"list", "--restore-backup"}).Exit, 0);
  EXPECT_NE(Category("Haus"), nullptr);
}

TEST_F(TKaufkoboldeCli, OutputThatCanNotBeWrittenIsAFailure) {
  TCliProcess::TOptions options;
  options.OutFile = "/dev/full";
  const TCliOutcome outcome = Run({"list"}, options);
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, HasSubstr("Die Ausgabe konnte nicht geschrieben werden."));
}

TEST_F(TKaufkoboldeCli, WithAClosedOutputNothingIsPrintedIntoTheData) {
  AddLampInto("Haus");
  TCliProcess::TOptions options;
  options.Closed = true;
  EXPECT_EQ(Run({"category", "add", "Flur"}, options).Exit, 0);
  EXPECT_EQ(Run({"list"}, options).Exit, 0);
  EXPECT_EQ(Category("Haus")["groups"][0]["items"].size(), 1u);
  for (const std::string& name : Data.Names()) {
    EXPECT_THAT(Data.Read(FromUtf8(name)), Not(HasSubstr("Beobachten: 1 Artikel"))) << name;
  }
}

TEST_F(TKaufkoboldeCli, AFolderThatCanNotBeUsedIsTold) {
  Data.Write(u"datei", "x");
  const TCliOutcome outcome = RunCli({"--data", Data.Path() + "/datei/x", "list"});
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, HasSubstr("kann nicht angelegt werden"));
}

TEST_F(TKaufkoboldeCli, CtrlCEndsARefreshOfAServerThatNeverAnswers) {
  AddLampInto("Haus");
  Shop.Hang("/lampe");
  const int requests = Shop.Requests("/lampe");
  TCliProcess process(WithData({"refresh"}));
  ASSERT_TRUE(Shop.WaitForRequests("/lampe", requests + 1));
  const auto start = std::chrono::steady_clock::now();
  process.Signal(SIGINT);
  const TCliOutcome outcome = process.Wait();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, HasSubstr("Abgebrochen."));
  EXPECT_EQ(Value("Lampe", "Preis"), "19,90 EUR");
}

TEST_F(TKaufkoboldeCli, CtrlCEndsAnAddAndKeepsWhatWasAddedBefore) {
  const std::string lamp = Shop.Put("/lampe", "Lampe", "19.90");
  Shop.Put("/uhr", "Uhr", "29.90");
  Shop.Hang("/uhr");
  TCliProcess process(WithData({"add", lamp, Shop.Address("/uhr"), "--category", "A", "--create"}));
  ASSERT_TRUE(Shop.WaitForRequests("/uhr", 1));
  process.Signal(SIGTERM);
  EXPECT_EQ(process.Wait().Exit, 1);
  ASSERT_EQ(Category("A")["groups"].size(), 1u);
  EXPECT_EQ(Category("A")["groups"][0]["items"].size(), 1u);
}

TEST_F(TKaufkoboldeCli, OneProcessAtATimeHasTheFolder) {
  AddLampInto("Haus");
  Shop.Hang("/lampe");
  const int requests = Shop.Requests("/lampe");
  TCliProcess first(WithData({"refresh"}));
  ASSERT_TRUE(Shop.WaitForRequests("/lampe", requests + 1));
  const TCliOutcome second = Run({"list"});
  EXPECT_EQ(second.Exit, 1);
  EXPECT_THAT(second.Error, HasSubstr("in einem anderen Aufruf offen"));
  first.Signal(SIGINT);
  first.Wait();
  EXPECT_EQ(Run({"list"}).Exit, 0);
}

TEST_F(TKaufkoboldeCli, AKillAtAnyMomentLosesNothingThatWasSaved) {
  AddLampInto("Haus");
  const TJson before = Tree();
  const int requests = Shop.Requests("/lampe");
  Shop.Hang("/lampe");
  for (int i = 1; i <= 3; ++i) {
    TCliProcess process(WithData({"refresh"}));
    ASSERT_TRUE(Shop.WaitForRequests("/lampe", requests + i));
    process.Signal(SIGKILL);
    EXPECT_EQ(process.Wait().Exit, 128 + SIGKILL);
  }
  EXPECT_EQ(Tree(), before);
  // The moment of a save: an add prints its line when the item is in, and saves around it.
  for (int i = 0; i < 8; ++i) {
    const std::string number = std::to_string(i);
    const std::string address = Shop.Put("/" + number, "Artikel " + number, "1.00");
    TCliProcess process(WithData({"add", address, "--category", "Haus"}));
    if (i % 2 == 0) process.WaitForOutput("Aufgenommen");
    if (i % 2 == 1) Shop.WaitForRequests("/" + number, 1);
    process.Signal(SIGKILL);
    process.Wait();
    TCliOutcome outcome = Run({"show", "Lampe"});
    // Between the rename to the backup and the one to the new file there is the backup alone.
    if (outcome.Exit == 1) outcome = Run({"show", "Lampe", "--restore-backup"});
    EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
    EXPECT_THAT(outcome.Error, Not(HasSubstr("beschädigt")));
  }
}

TEST_F(TKaufkoboldeCli, OnATerminalADeleteIsAskedFor) {
  AddLampInto("Haus");
  TCliProcess::TOptions options;
  options.Terminal = true;
  {
    TCliProcess process(WithData({"delete", "Lampe"}), options);
    ASSERT_TRUE(process.WaitForOutput("Auswahl [2] "));
    process.Type("\n");
    const TCliOutcome outcome = process.Wait();
    EXPECT_EQ(outcome.Exit, 1);
    EXPECT_THAT(outcome.Error, HasSubstr("Ja, löschen - Die Einträge werden gelöscht."));
  }
  EXPECT_EQ(Category("Haus")["groups"].size(), 1u);
  TCliProcess process(WithData({"delete", "Lampe"}), options);
  ASSERT_TRUE(process.WaitForOutput("Auswahl [2] "));
  process.Type("j\n");
  EXPECT_EQ(process.Wait().Exit, 0);
  EXPECT_EQ(Category("Haus")["groups"], TJson::array());
}

TEST_F(TKaufkoboldeCli, OnATerminalAnAddAsksForTheCategory) {
  const std::string address = Shop.Put("/lampe", "Lampe", "19.90");
  TCliProcess::TOptions options;
  options.Terminal = true;
  TCliProcess process(WithData({"add", address}), options);
  ASSERT_TRUE(process.WaitForOutput("Nummer oder neuer Name"));
  process.Type("Küche\n\n\n1\n");
  const TCliOutcome outcome = process.Wait();
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
  EXPECT_THAT(outcome.Out, HasSubstr("Aufgenommen: Lampe (in Küche)"));
}

TEST_F(TKaufkoboldeCli, CtrlCInAQuestionLeavesItAndNothingHappens) {
  AddLampInto("Haus");
  TCliProcess::TOptions options;
  options.Terminal = true;
  TCliProcess process(WithData({"category", "delete", "Haus"}), options);
  ASSERT_TRUE(process.WaitForOutput("Auswahl [2] "));
  process.Type("\x03");
  const TCliOutcome outcome = process.Wait();
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, HasSubstr("Abgebrochen."));
  EXPECT_EQ(Category("Haus")["groups"].size(), 1u);
}

TEST_F(TKaufkoboldeCli, TheEndOfTheInputInAQuestionLeavesIt) {
  AddLampInto("Haus");
  TCliProcess::TOptions options;
  options.Terminal = true;
  TCliProcess process(WithData({"delete", "Lampe"}), options);
  ASSERT_TRUE(process.WaitForOutput("Auswahl [2] "));
  process.Type("\x04");
  EXPECT_EQ(process.Wait().Exit, 1);
  EXPECT_EQ(Category("Haus")["groups"].size(), 1u);
}

TEST_F(TKaufkoboldeCli, VerboseShowsTheLogAndItIsInTheFolder) {
  EXPECT_THAT(Run({"--verbose", "list"}).Error, HasSubstr("Integration erkannt"));
  EXPECT_THAT(Data.Read(u"kaufkobolde.log"), HasSubstr("Integration erkannt"));
}

TEST_F(TKaufkoboldeCli, WithoutDataTheFoldersOfTheUserAreTaken) {
  TCliProcess::TOptions options;
  options.Environment = {{"XDG_DATA_HOME", Data.Path() + "/data"},
                         {"XDG_CONFIG_HOME", Data.Path() + "/config"},
                         {"XDG_STATE_HOME", Data.Path() + "/state"}};
  EXPECT_EQ(RunCli({"category", "add", "Haus"}, options).Exit, 0);
  EXPECT_EQ(RunCli({"settings", "set", "General", "DelayedStart", "0"}, options).Exit, 0);
  EXPECT_TRUE(fs::exists(Data.Path() + "/data/kaufkobolde/watchlist.dat"));
  EXPECT_TRUE(fs::exists(Data.Path() + "/config/kaufkobolde/kaufkobolde.ini"));
  EXPECT_TRUE(fs::exists(Data.Path() + "/state/kaufkobolde/kaufkobolde.log"));
}

TEST_F(TKaufkoboldeCli, APackageThatIsRefusedIsToldAndTheOthersAreUsed) {
  const std::string folder = Data.Path() + "/pakete";
  fs::create_directory(folder);
  for (const auto& entry :
       fs::directory_iterator(std::string(KK_BIN_DIR) + "/../lib/kaufkobolde")) {
    fs::create_symlink(fs::canonical(entry.path()),
                       folder + "/" + entry.path().filename().string());
  }
  Data.Write(u"pakete/kaputt.so", "kein Paket");
  TCliProcess::TOptions options;
  options.Environment = {{"KAUFKOBOLDE_PLUGINS", folder}};
  const TCliOutcome outcome = Run({"list"}, options);
  EXPECT_EQ(outcome.Exit, 0);
  EXPECT_THAT(outcome.Error, AllOf(StartsWith("Hinweis: Das Paket "), HasSubstr("kaputt.so")));
  EXPECT_EQ(std::count(outcome.Error.begin(), outcome.Error.end(), '\n'), 1) << outcome.Error;
}

TEST_F(TKaufkoboldeCli, ACategoryIsPrintedAsAPdf) {
  AddLampInto("Küche");
  const std::string file = Data.Path() + "/Küche.pdf";
  EXPECT_EQ(Do({"print", "--category", "küche", "--pdf", file}),
            "Gedruckt: \"Küche\" in " + file + "\n");
  EXPECT_THAT(Data.Read(u"Küche.pdf"), StartsWith("%PDF-"));
  const TCliOutcome nothing = Run({"print", "--category", cUnassigned, "--pdf", file + "2"});
  EXPECT_EQ(nothing.Exit, 1);
  EXPECT_FALSE(fs::exists(file + "2"));
  EXPECT_EQ(Run({"print", "--category", "Bad", "--pdf", file}).Exit, 2);
}

TEST_F(TKaufkoboldeCli, WithoutTheWatchListNothingGoes) {
  const std::string folder = Data.Path() + "/leer";
  fs::create_directory(folder);
  TCliProcess::TOptions options;
  options.Environment = {{"KAUFKOBOLDE_PLUGINS", folder}};
  const TCliOutcome outcome = Run({"list"}, options);
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, AllOf(HasSubstr("libwatchlist.so"), HasSubstr(folder)));
}

TEST_F(TKaufkoboldeCli, TheDemonstrationShowsPricesThatChange) {
  const std::string out = Do({"demo"});
  EXPECT_THAT(out, AllOf(HasSubstr("3 von 3 aufgenommen."),
                         HasSubstr("Tischlampe Luna: Preis 49,90 EUR -> 44,90 EUR"),
                         HasSubstr("Kaffeemühle Mokka: Preis 79,00 EUR -> 69,00 EUR"),
                         HasSubstr("Wanduhr, um 1960: Preis 15,00 EUR -> 18,50 EUR"),
                         HasSubstr("liegt in " + Data.Path()), HasSubstr("Shop schließt")));
  EXPECT_THAT(out, Not(HasSubstr("Auf Lager ->"))) << "only what has changed";
  EXPECT_THAT(Do({"list"}), HasSubstr("endet "));
  EXPECT_THAT(Do({"list"}), HasSubstr("uhrenfreund"));
}

TEST_F(TKaufkoboldeCli, TheDemonstrationLeavesTheUsersListAlone) {
  fs::create_directory(Data.Path() + "/tmp");
  TCliProcess::TOptions options;
  options.Environment = {{"XDG_DATA_HOME", Data.Path() + "/data"},
                         {"XDG_CONFIG_HOME", Data.Path() + "/config"},
                         {"XDG_STATE_HOME", Data.Path() + "/state"},
                         {"TMPDIR", Data.Path() + "/tmp"}};
  const TCliOutcome outcome = RunCli({"demo"}, options);
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
  EXPECT_THAT(outcome.Out, HasSubstr("liegt in " + Data.Path() + "/tmp/kaufkobolde-beispiel-"));
  EXPECT_FALSE(fs::exists(Data.Path() + "/data"));
  fs::remove_all(Data.Path() + "/tmp");
  EXPECT_EQ(RunCli({"demo"}, options).Exit, 1) << "without a folder there is no demonstration";
}

class TKaufkoboldeCliExchange : public TKaufkoboldeCli {
 protected:
  std::string File(const std::string& iName) const { return Other.Path() + "/" + iName; }
  /// A call on another list.
  TCliOutcome Elsewhere(std::vector<std::string> iWords,
                        const TCliProcess::TOptions& iOptions = {}) const {
    iWords.insert(iWords.begin(), {"--data", Other.Path() + "/andere"});
    return RunCli(iWords, iOptions);
  }

  TTempFolder Other;
};

TEST_F(TKaufkoboldeCliExchange, AListGoesFromOneFolderToAnother) {
  AddLampInto("Wohnzimmer");
  Do({"note", "Lampe", "für Oma"});
  Do({"category", "add", "Leer"});
  EXPECT_EQ(Do({"export", File("alles.wch")}),
            "1 Artikel geschrieben: " + File("alles.wch") + "\n");
  const TCliOutcome came = Elsewhere({"import", File("alles.wch")});
  EXPECT_EQ(came.Exit, 0) << came.Error;
  EXPECT_EQ(came.Out, "Übernommen: 1 Artikel, 2 Kategorien, 0 Erinnerungen\n");
  EXPECT_THAT(Elsewhere({"list"}).Out, AllOf(HasSubstr("Wohnzimmer"), HasSubstr("Leer")));
  EXPECT_THAT(Elsewhere({"show", "Lampe"}).Out, AllOf(HasSubstr("für Oma"), HasSubstr("19,90")));
  EXPECT_EQ(Elsewhere({"import", File("alles.wch")}).Out, "Es ist nichts darin, was neu wäre.\n");
}

TEST_F(TKaufkoboldeCliExchange, AnImportCanGoIntoOneCategory) {
  AddLampInto("Wohnzimmer");
  Do({"export", File("alles.wch"), "--category", "wohnzimmer", "--source", "Produktseiten"});
  EXPECT_EQ(Elsewhere({"import", File("alles.wch"), "--category", "Geerbt"}).Exit, 0);
  const std::string list = Elsewhere({"list"}).Out;
  EXPECT_THAT(list, AllOf(HasSubstr("Geerbt"), HasSubstr("Lampe"), Not(HasSubstr("Wohnzimmer"))));
}

TEST_F(TKaufkoboldeCliExchange, WhatTheExportRefusesLeavesNoFile) {
  const TCliOutcome empty = Run({"export", File("alles.wch")});
  EXPECT_EQ(empty.Exit, 1);
  EXPECT_EQ(empty.Error, "Fehler: Es liegen keine Einträge vor, die exportiert werden können.\n");
  AddLampInto("Wohnzimmer");
  EXPECT_EQ(Run({"export", File("alles.wch"), "--category", "Keller"}).Exit, 2);
  const TCliOutcome own = Run({"export", Data.Path() + "/watchlist.dat", "--yes"});
  EXPECT_EQ(own.Exit, 1);
  EXPECT_THAT(own.Error, HasSubstr("steht die Beobachtenliste selbst"));
  EXPECT_THAT(Other.Names(), IsEmpty());
  EXPECT_THAT(Do({"list"}), HasSubstr("Lampe"));
}

TEST_F(TKaufkoboldeCliExchange, AnExportThatDoesNotReachTheDiskFails) {
  AddLampInto("Wohnzimmer");
  const TCliOutcome outcome = Run({"export", File("weg/alles.wch")});
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, AllOf(StartsWith("Fehler: "), HasSubstr(File("weg/alles.wch"))));
  EXPECT_THAT(outcome.Out, IsEmpty());
  EXPECT_EQ(Run({"mobile", "export", File("weg/alles.xml")}).Exit, 1);
}

TEST_F(TKaufkoboldeCliExchange, AnExistingFileIsAskedAboutFirst) {
  AddLampInto("Wohnzimmer");
  Other.Write(u"alles.wch", "alt");
  const TCliOutcome refused = Run({"export", File("alles.wch")});
  EXPECT_EQ(refused.Exit, 1);
  EXPECT_THAT(refused.Error, HasSubstr("bleibt, wie sie ist (--yes ersetzt sie)"));
  EXPECT_EQ(Other.Read(u"alles.wch"), "alt");
  Do({"export", File("alles.wch"), "--yes"});
  EXPECT_THAT(Other.Read(u"alles.wch"), StartsWith("PK"));
  EXPECT_THAT(Other.Names(), testing::ElementsAre("alles.wch"));
}

TEST_F(TKaufkoboldeCliExchange, DamagedFilesAreTold) {
  Other.Write(u"kaputt.wch", "nichts");
  const TCliOutcome file = Run({"import", File("kaputt.wch")});
  EXPECT_EQ(file.Exit, 1);
  EXPECT_THAT(file.Error, AllOf(HasSubstr(File("kaputt.wch")),
                                HasSubstr("Fehler: Es ist nichts übernommen worden.")));
  const TCliOutcome document = Run({"mobile", "import", File("kaputt.wch")});
  EXPECT_EQ(document.Exit, 1);
  EXPECT_THAT(document.Error, HasSubstr("Fehler: Es ist nichts übernommen worden."));
  EXPECT_EQ(Run({"import", File("weg.wch")}).Error,
            "Fehler: Datei nicht vorhanden: " + File("weg.wch") + "\n");
}

TEST_F(TKaufkoboldeCliExchange, TheMobileDocumentGoesFromOneFolderToAnother) {
  AddLampInto("Wohnzimmer");
  Do({"mobile", "export", File("mobil.xml")});
  EXPECT_THAT(Other.Read(u"mobil.xml"),
              AllOf(HasSubstr("<name>Lampe</name>"), HasSubstr("<price>19.9</price>")));
  EXPECT_EQ(Elsewhere({"mobile", "import", File("mobil.xml")}).Exit, 0);
  EXPECT_THAT(Elsewhere({"show", "Lampe"}).Out, AllOf(HasSubstr("Wohnzimmer"), HasSubstr("19,90")));
}

TEST_F(TKaufkoboldeCliExchange, TheHostsCommandLineImports) {
  AddLampInto("Wohnzimmer");
  Do({"export", File("alles.wch")});
  const TCliOutcome came = Elsewhere({"-remimport", File("alles.wch")});
  EXPECT_EQ(came.Exit, 0) << came.Error;
  EXPECT_EQ(came.Out, "Aufgenommen: Lampe (in Wohnzimmer)\n");
  EXPECT_EQ(Elsewhere({"-remimport", File("weg.wch")}).Exit, 1);
}

TEST_F(TKaufkoboldeCliExchange, ARunningHostWritesAndReadsInTheCallersFolder) {
  AddLampInto("Wohnzimmer");
  TCliProcess host(WithData({"run"}));
  ASSERT_TRUE(host.WaitForOutput("Bereit"));
  TCliProcess::TOptions options;
  options.Folder = Other.Path();
  EXPECT_EQ(Run({"export", "alles.wch"}, options).Exit, 0);
  EXPECT_EQ(Run({"delete", "Lampe", "--yes"}).Exit, 0);
  const TCliOutcome came = Run({"import", "alles.wch"}, options);
  EXPECT_EQ(came.Exit, 0) << came.Error;
  EXPECT_THAT(Run({"list"}).Out, HasSubstr("Lampe"));
  host.Signal(SIGTERM);
  EXPECT_EQ(host.Wait().Exit, 0);
  EXPECT_THAT(Do({"list"}), HasSubstr("Lampe"));
}

TEST_F(TKaufkoboldeCliExchange, OnATerminalAnExistingFileCanBeReplaced) {
  AddLampInto("Wohnzimmer");
  Other.Write(u"alles.wch", "alt");
  TCliProcess::TOptions options;
  options.Terminal = true;
  TCliProcess call(WithData({"export", File("alles.wch")}), options);
  ASSERT_TRUE(call.WaitForOutput("Soll sie ersetzt werden?"));
  call.Type("j\n");
  EXPECT_EQ(call.Wait().Exit, 0);
  EXPECT_THAT(Other.Read(u"alles.wch"), StartsWith("PK"));
}

}  // namespace
}  // namespace kk
