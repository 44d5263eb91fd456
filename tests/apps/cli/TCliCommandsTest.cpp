#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TCliWorld.h"
#include "apps/cli/ECliUsage.h"
#include "apps/cli/TCliAdd.h"
#include "apps/cli/TCliHostLine.h"
#include "apps/cli/TCliRefresh.h"
#include "apps/cli/TCliShow.h"
#include "apps/cli/TCliStructure.h"
#include "host/base/Exception.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class TCliCommands : public testing::Test {
 protected:
  TCliCommands() { World.Start(); }

  template <class TCommand>
  bool Run(std::initializer_list<TString> iWords) {
    return TCommand(World.Context).Run(TCliArguments::Parse(std::vector<TString>(iWords)));
  }
  /// Message and hint of a call that is refused as wrong.
  template <class TCommand>
  std::string Refusal(std::initializer_list<TString> iWords) {
    try {
      Run<TCommand>(iWords);
    } catch (const ECliUsage& e) {
      return ToUtf8(e.Message() + u" | " + e.Hint());
    }
    return "accepted";
  }

  TCliWorld World;
};

using TCliAddTest = TCliCommands;

TEST_F(TCliAddTest, TakesTheArticleIntoTheCategoryThatTheWindowProposes) {
  EXPECT_TRUE(Run<TCliAdd>({u"add", u"fake:Lampe"}));
  EXPECT_THAT(World.Console.Printed(),
              ElementsAre("Aufgenommen: Lampe (in <Keiner Kategorie zugewiesen>)"));
}

TEST_F(TCliAddTest, AnAddressThatNoSourceKnowsFails) {
  EXPECT_FALSE(Run<TCliAdd>({u"add", u"gopher:Lampe"}));
  EXPECT_THAT(World.Console.Complained(),
              ElementsAre("Fehler: Keine Quelle kennt diese Adresse: gopher:Lampe"));
}

TEST_F(TCliAddTest, WhatIsWatchedAlreadyIsRefused) {
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  EXPECT_FALSE(Run<TCliAdd>({u"add", u"fake:Lampe"}));
  EXPECT_THAT(World.Console.Complained(),
              ElementsAre("Fehler: Der Artikel wird schon beobachtet: fake:Lampe"));
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliAddTest, ARefreshThatFailsAddsNothing) {
  World.List().Failing = {u"Lampe"};
  EXPECT_FALSE(Run<TCliAdd>({u"add", u"fake:Lampe"}));
  EXPECT_THAT(World.Console.Complained(),
              Contains("Fehler: Der Artikel konnte nicht abgerufen werden und ist nicht "
                       "aufgenommen: fake:Lampe"));
}

TEST_F(TCliAddTest, EachIsWaitedForBeforeTheNext) {
  World.List().Failing = {u"Zwei"};
  size_t most = 0;
  World.List().OnRequest = [&] {
    most = std::max(most, static_cast<size_t>(World.List().OpenUpdates()));
  };
  EXPECT_FALSE(Run<TCliAdd>({u"add", u"fake:Eins", u"fake:Zwei", u"fake:Drei"}));
  EXPECT_EQ(most, 1u);
  EXPECT_THAT(World.Console.Printed(),
              ElementsAre(HasSubstr("Aufgenommen: Eins"), HasSubstr("Aufgenommen: Drei"),
                          "2 von 3 aufgenommen."));
  EXPECT_THAT(World.Console.Progressed(), Contains("2 von 3: fake:Zwei"));
}

TEST_F(TCliAddTest, ACategoryThatIsNamedIsChosenInTheWindow) {
  World.List().Category(u"Haus");
  EXPECT_TRUE(Run<TCliAdd>({u"add", u"fake:Lampe", u"--category", u"haus"}));
  EXPECT_THAT(World.Console.Printed(), ElementsAre("Aufgenommen: Lampe (in Haus)"));
  EXPECT_THAT(World.List().Calls, ElementsAre("AddItem Lampe"));
}

TEST_F(TCliAddTest, AnUnknownCategoryIsAWrongCall) {
  EXPECT_THAT(Refusal<TCliAdd>({u"add", u"fake:Lampe", u"--category", u"Haus"}),
              HasSubstr("Mit --create wird sie angelegt."));
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliAddTest, ANewCategoryIsTypedIntoTheWindow) {
  EXPECT_TRUE(
      Run<TCliAdd>({u"add", u"fake:Eins", u"fake:Zwei", u"--category", u" Haus ", u"--create"}));
  EXPECT_THAT(World.Console.Printed(),
              ElementsAre("Aufgenommen: Eins (in Haus)", "Aufgenommen: Zwei (in Haus)",
                          "2 von 2 aufgenommen."));
  EXPECT_THAT(World.List().Calls, ElementsAre("AddItem Eins", "AddItem Zwei"));
}

TEST_F(TCliAddTest, CreateTakesACategoryThatIsThere) {
  World.List().Category(u"Haus");
  EXPECT_TRUE(Run<TCliAdd>({u"add", u"fake:Lampe", u"--category", u"Haus", u"--create"}));
  EXPECT_EQ(World.List().Tree.Categories.size(), 2u);
}

TEST_F(TCliAddTest, CategoryByIdOfTwoWithTheSameName) {
  const TGuid first = World.List().Category(u"Haus").Id;
  World.List().Tree.Categories.push_back({NewGuid(), u"Haus", {}, false, {}, {}});
  const TGuid second = World.List().Tree.Categories.back().Id;
  EXPECT_THAT(Refusal<TCliAdd>({u"add", u"fake:Lampe", u"--category", u"Haus"}),
              HasSubstr(ToUtf8(GUIDToString(first))));
  EXPECT_TRUE(Run<TCliAdd>({u"add", u"fake:Lampe", u"--category", GUIDToString(second)}));
  EXPECT_EQ(World.List().Tree.Categories.back().Groups.at(0).Items.size(), 1u);
}

TEST_F(TCliAddTest, WithoutTheWindowTheItemIsMovedBehindTheAdd) {
  World.List().ShowsDialog = false;
  World.List().Category(u"Haus");
  EXPECT_TRUE(Run<TCliAdd>({u"add", u"fake:Lampe", u"--category", u"Haus"}));
  EXPECT_THAT(World.List().Calls, ElementsAre("AddItem Lampe", "MoveItems Lampe -> Haus"));
  EXPECT_THAT(World.Console.Printed(), ElementsAre("Aufgenommen: Lampe (in Haus)"));
}

TEST_F(TCliAddTest, WithoutTheWindowANewCategoryIsMadeOnce) {
  World.List().ShowsDialog = false;
  EXPECT_TRUE(
      Run<TCliAdd>({u"add", u"fake:Eins", u"fake:Zwei", u"--category", u"Haus", u"--create"}));
  EXPECT_THAT(World.List().Calls,
              ElementsAre("AddItem Eins", "AddCategory - Haus", "MoveItems Eins -> Haus",
                          "AddItem Zwei", "MoveItems Zwei -> Haus"));
}

TEST_F(TCliAddTest, OnATerminalTheWindowIsAskedInText) {
  World.List().Category(u"Haus");
  World.Console.Answer({u"2", u"n", u"1"});
  EXPECT_TRUE(Run<TCliAdd>({u"add", u"fake:Lampe"}));
  EXPECT_THAT(World.Console.Printed(), ElementsAre("Aufgenommen: Lampe (in Haus)"));
}

TEST_F(TCliAddTest, AWindowThatIsLeftRefusesTheArticle) {
  World.Console.Answer({});
  EXPECT_FALSE(Run<TCliAdd>({u"add", u"fake:Lampe"}));
  EXPECT_THAT(World.Console.Complained(),
              Contains(HasSubstr("die Frage nach der Kategorie wurde abgebrochen: fake:Lampe")));
}

TEST_F(TCliAddTest, CtrlCInAQuestionLeavesTheWholeCommand) {
  World.Console.Answer({});
  World.Console.Interrupt();
  EXPECT_FALSE(Run<TCliAdd>({u"add", u"fake:Eins", u"fake:Zwei"}));
  EXPECT_THAT(World.List().Calls, ElementsAre("AddItem Eins"));
  EXPECT_THAT(World.Console.Complained(), Contains("Abgebrochen."));
}

TEST_F(TCliAddTest, CtrlCEndsTheWorkAndTakesNoMore) {
  World.List().NeverEnds = true;
  World.List().OnRequest = [this] { World.Console.Interrupt(); };
  EXPECT_FALSE(Run<TCliAdd>({u"add", u"fake:Eins", u"fake:Zwei"}));
  EXPECT_THAT(World.Console.Complained(), Contains("Abgebrochen."));
  EXPECT_THAT(World.List().Calls, ElementsAre("AddItem Eins", "TerminateThreads"));
  EXPECT_EQ(World.Shop().Terminated, 1);
}

using TCliRefreshTest = TCliCommands;

TEST_F(TCliRefreshTest, TellsEachThatIsThrough) {
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  World.List().Item(u"Haus", u"Uhr", World.ShopId());
  EXPECT_TRUE(Run<TCliRefresh>({u"refresh"}));
  EXPECT_THAT(World.Console.Printed(),
              ElementsAre("1 von 2: Lampe: aktualisiert", "2 von 2: Uhr: aktualisiert"));
}

TEST_F(TCliRefreshTest, OneFailureLetsTheOthersGoOn) {
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  World.List().Item(u"Haus", u"Uhr", World.ShopId());
  World.List().Failing = {u"Lampe"};
  EXPECT_FALSE(Run<TCliRefresh>({u"refresh"}));
  EXPECT_THAT(World.Console.Printed(),
              ElementsAre("1 von 2: Lampe: fehlgeschlagen", "2 von 2: Uhr: aktualisiert"));
  EXPECT_THAT(World.Console.Complained(),
              ElementsAre("Fehler: 1 von 2 konnten nicht aktualisiert werden."));
}

TEST_F(TCliRefreshTest, TakesACategoryOrAnItem) {
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  EXPECT_TRUE(Run<TCliRefresh>({u"refresh", u"haus"}));
  EXPECT_TRUE(Run<TCliRefresh>({u"refresh", u"LAMPE"}));
  EXPECT_THAT(World.List().Calls, ElementsAre("RefreshCategory Haus", "RefreshItems Lampe"));
}

TEST_F(TCliRefreshTest, ANameThatBothBearIsAmbiguous) {
  World.List().Item(u"Lampe", u"Lampe", World.ShopId());
  EXPECT_THAT(Refusal<TCliRefresh>({u"refresh", u"Lampe"}), HasSubstr("gibt es 2-mal"));
}

TEST_F(TCliRefreshTest, WithNothingToDoItSaysSo) {
  EXPECT_TRUE(Run<TCliRefresh>({u"refresh"}));
  EXPECT_THAT(World.Console.Printed(), ElementsAre("Es gibt nichts zu aktualisieren."));
}

TEST_F(TCliRefreshTest, CtrlCEndsTheWork) {
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  World.List().NeverEnds = true;
  World.Console.Interrupt();
  EXPECT_FALSE(Run<TCliRefresh>({u"refresh"}));
  EXPECT_THAT(World.Console.Complained(), ElementsAre("Abgebrochen."));
  EXPECT_EQ(World.Shop().Terminated, 1);
}

using TCliStructureTest = TCliCommands;

TEST_F(TCliStructureTest, AddsACategoryAtTheTopOrInAnother) {
  EXPECT_TRUE(Run<TCliStructure>({u"category", u"add", u"Haus", u"--text", u"Alles"}));
  EXPECT_TRUE(Run<TCliStructure>({u"category", u"add", u"Flur", u"--in", u"haus"}));
  EXPECT_THAT(World.List().Calls,
              ElementsAre("AddCategory - Haus <Alles>", "AddCategory Haus Flur"));
  EXPECT_THAT(World.Console.Printed(), Contains(HasSubstr("Kategorie angelegt: Haus {")));
}

TEST_F(TCliStructureTest, WhatTheListRefusesPasses) {
  World.List().Category(u"Haus");
  EXPECT_THROW(Run<TCliStructure>({u"category", u"add", u"Haus"}), Exception);
}

TEST_F(TCliStructureTest, RenamesDescribesAndMovesACategory) {
  World.List().Category(u"Haus");
  World.List().Category(u"Flur");
  EXPECT_TRUE(Run<TCliStructure>({u"category", u"rename", u"Haus", u"Heim"}));
  EXPECT_TRUE(Run<TCliStructure>({u"category", u"describe", u"Haus", u"eins", u"zwei"}));
  EXPECT_TRUE(Run<TCliStructure>({u"category", u"describe", u"Haus", u""}));
  EXPECT_TRUE(Run<TCliStructure>({u"category", u"describe", u"Haus", u"--text", u"drei"}));
  EXPECT_TRUE(Run<TCliStructure>({u"category", u"move", u"Flur", u"Haus"}));
  EXPECT_TRUE(Run<TCliStructure>({u"category", u"move", u"Flur", u"--top"}));
  EXPECT_THAT(World.List().Calls,
              ElementsAre("RenameCategory Haus Heim", "DescribeCategory Haus <eins> <zwei>",
                          "DescribeCategory Haus", "DescribeCategory Haus <drei>",
                          "MoveCategory Flur Haus", "MoveCategory Flur -"));
}

TEST_F(TCliStructureTest, WithoutATerminalADeleteIsNotConfirmed) {
  World.List().Category(u"Haus");
  EXPECT_FALSE(Run<TCliStructure>({u"category", u"delete", u"Haus"}));
  EXPECT_THAT(World.Console.Complained(), Contains(HasSubstr("--yes sagt ja")));
  EXPECT_THAT(World.Console.Printed(), IsEmpty());
}

TEST_F(TCliStructureTest, YesAnswersTheQuestion) {
  World.List().Item(u"Haus", u"Lampe");
  World.Forms.SetYesToAll(true);
  EXPECT_TRUE(Run<TCliStructure>({u"delete", u"Lampe"}));
  EXPECT_TRUE(Run<TCliStructure>({u"category", u"delete", u"Haus"}));
  EXPECT_THAT(World.List().Calls, ElementsAre("DeleteItems Lampe", "DeleteCategory Haus"));
  EXPECT_THAT(World.Console.Printed(),
              ElementsAre("1 Artikel gelöscht.", "Kategorie gelöscht: Haus"));
}

TEST_F(TCliStructureTest, OnATerminalTheUserDecides) {
  World.List().Item(u"Haus", u"Lampe");
  World.Console.Answer({u"n"});
  EXPECT_FALSE(Run<TCliStructure>({u"delete", u"Lampe"}));
  EXPECT_THAT(World.Console.Complained(), Contains("Abgebrochen."));
  World.Console.Answer({u"j"});
  EXPECT_TRUE(Run<TCliStructure>({u"delete", u"Lampe"}));
}

TEST_F(TCliStructureTest, MovesSeveralItemsEachOnce) {
  World.List().Item(u"Haus", u"Lampe");
  World.List().Item(u"Haus", u"Uhr");
  World.List().Category(u"Flur");
  EXPECT_TRUE(Run<TCliStructure>({u"move", u"Lampe", u"Uhr", u"lampe", u"Flur"}));
  EXPECT_THAT(World.List().Calls, ElementsAre("MoveItems Lampe Uhr -> Flur"));
  EXPECT_THAT(World.Console.Printed(), ElementsAre("2 Artikel verschoben: nach Flur"));
}

TEST_F(TCliStructureTest, SetsANoteForOneOrForSeveral) {
  World.List().Item(u"Haus", u"Lampe");
  World.List().Item(u"Haus", u"Uhr");
  EXPECT_TRUE(Run<TCliStructure>({u"note", u"Lampe", u"eins", u"zwei"}));
  EXPECT_TRUE(Run<TCliStructure>({u"note", u"Lampe", u""}));
  EXPECT_FALSE(Run<TCliStructure>({u"note", u"Lampe", u"Uhr", u"--text", u"drei"}));
  EXPECT_THAT(World.List().Calls, ElementsAre("SetNote Lampe <eins> <zwei>", "SetNote Lampe",
                                              "SetNote Lampe Uhr <drei>"));
}

TEST_F(TCliStructureTest, AWordWithLineBreaksIsSeveralLines) {
  World.List().Item(u"Haus", u"Lampe");
  EXPECT_TRUE(Run<TCliStructure>({u"note", u"Lampe", u"eins\nzwei", u"drei\r\n\r\nvier"}));
  EXPECT_TRUE(Run<TCliStructure>({u"note", u"Lampe", u"--text=eins\nzwei"}));
  EXPECT_TRUE(Run<TCliStructure>({u"note", u"Lampe", u"eins", u"", u"zwei"}));
  EXPECT_THAT(World.List().Calls,
              ElementsAre("SetNote Lampe <eins> <zwei> <drei> <> <vier>",
                          "SetNote Lampe <eins> <zwei>", "SetNote Lampe <eins> <> <zwei>"));
}

TEST_F(TCliStructureTest, UnknownAndAmbiguousNamesAreWrongCalls) {
  World.List().Item(u"Haus", u"Lampe");
  World.List().Item(u"Flur", u"lampe");
  EXPECT_THAT(Refusal<TCliStructure>({u"delete", u"Uhr"}), HasSubstr("gibt es nicht: Uhr"));
  const std::string refusal = Refusal<TCliStructure>({u"delete", u"Lampe"});
  EXPECT_THAT(refusal, HasSubstr("gibt es 2-mal: Lampe"));
  EXPECT_THAT(refusal, HasSubstr("(in Flur)"));
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

using TCliHostLineTest = TCliCommands;

TEST_F(TCliHostLineTest, GoesToEveryPluginAsItStands) {
  EXPECT_TRUE(Run<TCliHostLine>({u"-rem", u"fake:Lampe"}));
  EXPECT_EQ(World.Shop().CommandLine, u"-rem fake:Lampe");
  EXPECT_THAT(World.Console.Printed(),
              ElementsAre("Aufgenommen: Lampe (in <Keiner Kategorie zugewiesen>)"));
}

TEST_F(TCliHostLineTest, ArgumentsWithBlanksComeThroughWhole) {
  Run<TCliHostLine>({u"-rem", u"zwei Worte", u"-REMIMPORT", u"/gibt es/nicht.wch"});
  EXPECT_EQ(World.Shop().CommandLine, u"-rem \"zwei Worte\" -REMIMPORT \"/gibt es/nicht.wch\"");
  EXPECT_THAT(World.Console.Complained(),
              ElementsAre("Fehler: Datei nicht vorhanden: /gibt es/nicht.wch",
                          "Fehler: Es ist nichts in die Beobachtenliste gekommen."));
}

TEST_F(TCliHostLineTest, CtrlCEndsTheWork) {
  World.List().NeverEnds = true;
  World.Console.Interrupt();
  EXPECT_FALSE(Run<TCliHostLine>({u"-rem", u"fake:Lampe"}));
  EXPECT_THAT(World.Console.Complained(), ElementsAre("Abgebrochen."));
}

using TCliShowTest = TCliCommands;

TEST_F(TCliShowTest, ListAsTextHasTheValuesOfTheSource) {
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  TCliShow(World.Context).List(false);
  EXPECT_THAT(World.Console.Printed(), Contains(HasSubstr("10,00 EUR")));
  EXPECT_THAT(World.Console.Printed(), Not(Contains(HasSubstr("sehr/langer"))));
}

TEST_F(TCliShowTest, ListAsJson) {
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  TCliShow(World.Context).List(true);
  EXPECT_THAT(World.Console.Printed(), ElementsAre(HasSubstr("\"name\": \"Lampe\"")));
}

TEST_F(TCliShowTest, ItemHasAllThatIsKnown) {
  TWatchlistItemInfo& item = World.List().Item(u"Haus", u"Lampe", World.ShopId());
  item.Note = {u"eins", u"zwei"};
  World.List().Tree.Reminders = {{item.Id, EncodeDateTime({2026, 12, 24, 18, 0, 0, 0}), {1, 4}}};
  TCliShow(World.Context).Item(u"lampe", false);
  EXPECT_THAT(
      World.Console.Printed(),
      testing::IsSupersetOf({"Name:       Lampe", "Kategorie:  Haus", "Preis:      10,00 EUR",
                             "Notiz:      eins", "Notiz:      zwei", "Stand:      nie"}));
  EXPECT_THAT(World.Console.Printed(), Contains(HasSubstr("(Meldungsfenster, E-Mail)")));
}

TEST_F(TCliShowTest, ItemAsJson) {
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  TCliShow(World.Context).Item(u"Lampe", true);
  EXPECT_THAT(World.Console.Printed(), ElementsAre(HasSubstr("\"title\": \"Preis\"")));
}

}  // namespace
}  // namespace kk
