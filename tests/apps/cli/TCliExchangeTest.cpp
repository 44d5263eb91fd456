#include "apps/cli/TCliExchange.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TCliWorld.h"
#include "apps/cli/ECliUsage.h"
#include "apps/cli/TCliCommands.h"
#include "host/base/Exception.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class TCliExchangeTest : public testing::Test {
 protected:
  TCliExchangeTest() {
    World.Start();
    World.List().Item(u"Haus", u"Lampe", World.ShopId());
    World.List().Item(u"Haus", u"Sieb", World.ShopId());
    World.List().Item(u"Garten", u"Harke", World.ShopId());
    World.List().Calls.clear();
  }
  bool Run(std::initializer_list<TString> iWords) {
    const TCliArguments call = TCliArguments::Parse(std::vector<TString>(iWords));
    World.Forms.SetYesToAll(call.Yes);
    return kk::TCliCommands::Run(World.Context, call);
  }
  template <class TFailure = Exception>
  std::string Refusal(std::initializer_list<TString> iWords) {
    try {
      Run(iWords);
    } catch (const TFailure& e) {
      return ToUtf8(e.Message());
    }
    return "accepted";
  }
  TString File() const { return Folder.File(u"teil.wch"); }
  std::string FileText() const { return ToUtf8(File()); }
  const std::vector<std::string>& Calls() { return World.List().Calls; }

  TCliWorld World;
  TTempFolder Folder;
};

TEST_F(TCliExchangeTest, AnExportTellsHowManyArticlesWentWhere) {
  EXPECT_TRUE(Run({u"export", File()}));
  EXPECT_THAT(Calls(), ElementsAre("ExportToFile " + FileText()));
  EXPECT_THAT(World.Console.Printed(), ElementsAre("3 Artikel geschrieben: " + FileText()));
}

TEST_F(TCliExchangeTest, CategoriesAndSourcesMayBeNamedSeveralTimes) {
  World.List().Category(u"Haus").Categories.emplace_back().Name = u"Regal";
  EXPECT_TRUE(Run({u"export", File(), u"--category", u"haus", u"--category=Garten", u"--source",
                   World.Shop().GetDescription()}));
  const std::string id = ToUtf8(GUIDToString(World.ShopId()));
  EXPECT_THAT(Calls(), ElementsAre("ExportToFile " + FileText() + " Haus Garten " + id));
}

TEST_F(TCliExchangeTest, OnlyWhatIsChosenIsCounted) {
  EXPECT_TRUE(Run({u"export", File(), u"--category", u"Haus"}));
  EXPECT_TRUE(Run({u"export", File(), u"--source", GUIDToString(World.ShopId())}));
  EXPECT_THAT(World.Console.Printed(), ElementsAre("2 Artikel geschrieben: " + FileText(),
                                                   "3 Artikel geschrieben: " + FileText()));
}

TEST_F(TCliExchangeTest, AnUnknownCategoryOrSourceIsAWrongCall) {
  EXPECT_EQ(Refusal<ECliUsage>({u"export", File(), u"--category", u"Keller"}),
            "Die Kategorie gibt es nicht: Keller");
  EXPECT_EQ(Refusal<ECliUsage>({u"export", File(), u"--source", u"Markt"}),
            "Die Quelle gibt es nicht: Markt");
  EXPECT_EQ(
      Refusal<ECliUsage>({u"export", File(), u"--source", GUIDToString(NewGuid())}).substr(0, 27),
      "Die Quelle gibt es nicht: {");
  EXPECT_EQ(Refusal<ECliUsage>({u"export", File(), u"--category", u" "}),
            "--category braucht einen Namen.");
  EXPECT_EQ(Refusal<ECliUsage>({u"export"}), "Es fehlt eine Angabe.");
  EXPECT_EQ(Refusal<ECliUsage>({u"import", File(), u"--source", u"x"}),
            "\"import\" kennt die Option --source nicht.");
  EXPECT_EQ(Refusal<ECliUsage>({u"mobile"}), "Was soll \"mobile\" tun?");
  EXPECT_EQ(Refusal<ECliUsage>({u"mobile", u"senden"}), "Unbekannter Befehl: mobile senden");
  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(TCliExchangeTest, AnExistingFileIsReplacedOnlyOnRequest) {
  Folder.Write(u"teil.wch", "alt");
  for (const TStringView command : {u"export", u"mobile export"}) {
    std::vector<TString> words = Split(command, u' ');
    words.push_back(File());
    const TCliArguments call = TCliArguments::Parse(words);
    EXPECT_THROW(TCliExchange(World.Context).Run(call), Exception);
  }
  EXPECT_THAT(Calls(), IsEmpty());
  EXPECT_EQ(Refusal({u"export", File()}),
            "Die Datei " + FileText() + " bleibt, wie sie ist (--yes ersetzt sie).");
  EXPECT_TRUE(Run({u"export", File(), u"--yes"}));
  EXPECT_TRUE(Run({u"mobile", u"export", File(), u"--yes"}));
  EXPECT_THAT(Calls(), ElementsAre("ExportToFile " + FileText(), "ExportToMobile " + FileText()));
}

TEST_F(TCliExchangeTest, AnExportThatFailsSaysNothingOfSuccess) {
  World.List().ExchangeFails = true;
  EXPECT_FALSE(Run({u"export", File()}));
  EXPECT_EQ(Refusal({u"mobile", u"export", File()}), "Kein Platz");
  EXPECT_THAT(World.Console.Printed(), IsEmpty());
}

TEST_F(TCliExchangeTest, AnImportTellsWhatCame) {
  Folder.Write(u"teil.wch", "x");
  World.List().OnImport = [this] {
    auto& item = World.List().Item(u"Keller", u"Wein", World.ShopId());
    World.List().Reminder(item.Id, TDateTime::FromMs(1));
    World.List().Calls.clear();
  };
  EXPECT_TRUE(Run({u"import", File()}));
  EXPECT_THAT(World.Console.Printed(),
              ElementsAre("Übernommen: 1 Artikel, 1 Kategorie, 1 Erinnerung"));
}

TEST_F(TCliExchangeTest, AnImportOfWhatIsThereSaysSo) {
  Folder.Write(u"teil.wch", "x");
  EXPECT_TRUE(Run({u"import", File()}));
  EXPECT_TRUE(Run({u"mobile", u"import", File()}));
  EXPECT_THAT(Calls(),
              ElementsAre("ImportFromFile " + FileText(), "ImportFromMobile " + FileText()));
  EXPECT_THAT(World.Console.Printed(), ElementsAre("Es ist nichts darin, was neu wäre.",
                                                   "Es ist nichts darin, was neu wäre."));
}

TEST_F(TCliExchangeTest, AnImportIntoACategoryTakesItsNameOrItsId) {
  Folder.Write(u"teil.wch", "x");
  EXPECT_TRUE(Run({u"import", File(), u"--category", u" Neu "}));
  EXPECT_TRUE(Run({u"import", File(), u"--category", u"haus"}));
  EXPECT_TRUE(
      Run({u"import", File(), u"--category", GUIDToString(World.List().Category(u"Garten").Id)}));
  EXPECT_EQ(
      Refusal<ECliUsage>({u"import", File(), u"--category", GUIDToString(NewGuid())}).substr(0, 27),
      "Die Kategorie gibt es nicht");
  EXPECT_THAT(Calls(), ElementsAre("ImportFromFile " + FileText() + " Neu",
                                   "ImportFromFile " + FileText() + " Haus",
                                   "ImportFromFile " + FileText() + " Garten"));
}

TEST_F(TCliExchangeTest, AMissingFileFails) {
  for (const TStringView name : {u"weg.wch", u"."}) {
    const TString file = Folder.File(name);
    EXPECT_EQ(Refusal({u"import", file}), "Datei nicht vorhanden: " + ToUtf8(file));
    EXPECT_EQ(Refusal({u"mobile", u"import", file}), "Datei nicht vorhanden: " + ToUtf8(file));
  }
  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(TCliExchangeTest, AnImportThatFailsTellsWhatStandsAllTheSame) {
  Folder.Write(u"teil.wch", "x");
  World.List().ExchangeFails = true;
  EXPECT_FALSE(Run({u"import", File()}));
  World.List().OnImport = [this] { World.List().Item(u"Haus", u"Wein", World.ShopId()); };
  EXPECT_FALSE(Run({u"import", File()}));
  EXPECT_THAT(World.Console.Printed(), IsEmpty());
  EXPECT_THAT(World.Console.Complained(),
              ElementsAre("Fehler: Es ist nichts übernommen worden.",
                          "Hinweis: Nicht alles ist übernommen, nur: 1 Artikel, 0 Kategorien, 0 "
                          "Erinnerungen"));
}

TEST_F(TCliExchangeTest, AReminderThatComesDueMeanwhileIsNoImport) {
  Folder.Write(u"teil.wch", "x");
  World.List().Reminder(NewGuid(), TDateTime::FromMs(1));
  World.List().OnImport = [this] { World.List().Tree.Reminders.clear(); };
  EXPECT_TRUE(Run({u"import", File()}));
  EXPECT_THAT(World.Console.Printed(), ElementsAre("Es ist nichts darin, was neu wäre."));
}

TEST_F(TCliExchangeTest, OnlyImportsChangeTheList) {
  const auto changes = [](std::initializer_list<TString> iWords) {
    return kk::TCliCommands::ChangesList(TCliArguments::Parse(std::vector<TString>(iWords)));
  };
  EXPECT_FALSE(changes({u"export", u"x"}));
  EXPECT_FALSE(changes({u"mobile", u"export", u"x"}));
  EXPECT_TRUE(changes({u"import", u"x"}));
  EXPECT_TRUE(changes({u"mobile", u"import", u"x"}));
}

}  // namespace
}  // namespace kk
