#include "apps/cli/TCliArguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apps/cli/ECliUsage.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TCliArguments Parse(std::initializer_list<TString> iWords) {
  return TCliArguments::Parse(std::vector<TString>(iWords));
}

/// Message and hint of a call that is refused.
std::string Refusal(std::initializer_list<TString> iWords) {
  try {
    Parse(iWords);
  } catch (const ECliUsage& e) {
    return ToUtf8(e.Message() + u" | " + e.Hint());
  }
  return "accepted";
}

TEST(TCliArguments, NoArgumentsAskForHelp) {
  EXPECT_TRUE(Parse({}).Help);
  EXPECT_TRUE(Parse({u"--help"}).Help);
  EXPECT_TRUE(Parse({u"list", u"--help"}).Help);
}

TEST(TCliArguments, HelpGoesBeforeEveryMistake) {
  EXPECT_TRUE(Parse({u"--help", u"unfug"}).Help);
  EXPECT_TRUE(Parse({u"add", u"--help"}).Help);
}

TEST(TCliArguments, AskForTheVersion) { EXPECT_TRUE(Parse({u"--version"}).Version); }

TEST(TCliArguments, CommandTakesItsWords) {
  const TCliArguments call = Parse({u"add", u"http://a", u"http://b"});
  ASSERT_NE(call.Command, nullptr);
  EXPECT_EQ(call.Command->Name, u"add");
  EXPECT_THAT(call.Words, ElementsAre(u"http://a", u"http://b"));
}

TEST(TCliArguments, OptionsStandBeforeAndBehindTheCommand) {
  const TCliArguments call =
      Parse({u"--data", u"/tmp/x", u"--verbose", u"list", u"--json", u"--restore-backup"});
  EXPECT_EQ(call.Data, u"/tmp/x");
  EXPECT_TRUE(call.Verbose);
  EXPECT_TRUE(call.Json);
  EXPECT_TRUE(call.RestoreBackup);
}

TEST(TCliArguments, ValueFollowsOrStandsBehindAnEqualsSign) {
  EXPECT_EQ(Parse({u"list", u"--data=/tmp/x=y"}).Data, u"/tmp/x=y");
  EXPECT_EQ(Parse({u"add", u"x", u"--category=Haus"}).Category, u"Haus");
  EXPECT_EQ(Parse({u"add", u"x", u"--category", u"--seltsam"}).Category, u"--seltsam");
}

TEST(TCliArguments, CommandOfAFamilyHasTwoWords) {
  const TCliArguments call = Parse({u"category", u"rename", u"Alt", u"Neu"});
  EXPECT_EQ(call.Command->Name, u"category rename");
  EXPECT_THAT(call.Words, ElementsAre(u"Alt", u"Neu"));
}

TEST(TCliArguments, TextCanBeGivenLineByLine) {
  const TCliArguments call = Parse({u"note", u"a", u"b", u"--text", u"eins", u"--text", u""});
  EXPECT_THAT(call.Words, ElementsAre(u"a", u"b"));
  EXPECT_THAT(*call.Text, ElementsAre(u"eins", u""));
}

TEST(TCliArguments, BehindTwoDashesEverythingIsAWord) {
  const TCliArguments call = Parse({u"show", u"--", u"--json"});
  EXPECT_THAT(call.Words, ElementsAre(u"--json"));
  EXPECT_FALSE(call.Json);
  EXPECT_THAT(Parse({u"show", u"--", u"--"}).Words, ElementsAre(u"--"));
}

TEST(TCliArguments, HostLineIsKeptAsItStands) {
  const TCliArguments call =
      Parse({u"--data", u"/tmp/x", u"-rem", u"http://a", u"-remimport", u"--json", u"--verbose"});
  EXPECT_EQ(call.Command, nullptr);
  EXPECT_EQ(call.Data, u"/tmp/x");
  EXPECT_FALSE(call.Verbose);
  EXPECT_THAT(call.HostLine,
              ElementsAre(u"-rem", u"http://a", u"-remimport", u"--json", u"--verbose"));
}

TEST(TCliArguments, OneDashBehindACommandIsAWord) {
  EXPECT_THAT(Parse({u"show", u"-5 Grad"}).Words, ElementsAre(u"-5 Grad"));
}

TEST(TCliArguments, UnknownCommandIsRefusedWithTheNearOnes) {
  EXPECT_THAT(Refusal({u"lst"}), HasSubstr("Unbekannter Befehl: lst | Meinten Sie \"list\"?"));
  EXPECT_THAT(Refusal({u"xyzzy"}), "Unbekannter Befehl: xyzzy | Hilfe: kaufkobolde-cli --help");
  EXPECT_THAT(Refusal({u"category", u"ad", u"x"}), HasSubstr("Meinten Sie \"category add\"?"));
}

TEST(TCliArguments, FamilyAloneIsRefusedWithItsCommands) {
  const std::string refusal = Refusal({u"settings"});
  EXPECT_THAT(refusal, HasSubstr("Was soll \"settings\" tun?"));
  EXPECT_THAT(refusal, HasSubstr("kaufkobolde-cli settings set ABSCHNITT SCHLÜSSEL [WERT]"));
  EXPECT_THAT(refusal, testing::Not(HasSubstr("category")));
}

TEST(TCliArguments, OptionsWithoutACommandAreRefused) {
  EXPECT_THAT(Refusal({u"--verbose"}), HasSubstr("Es fehlt ein Befehl."));
}

TEST(TCliArguments, MissingArgumentIsRefusedWithTheRightForm) {
  EXPECT_EQ(Refusal({u"show"}),
            "Es fehlt eine Angabe. | Richtig wäre: kaufkobolde-cli show ARTIKEL [--json]");
  EXPECT_THAT(Refusal({u"move", u"Lampe"}), HasSubstr("Es fehlt eine Angabe."));
  EXPECT_THAT(Refusal({u"category", u"move", u"A"}), HasSubstr("Es fehlt das Ziel."));
  EXPECT_THAT(Refusal({u"note", u"A"}), HasSubstr("Es fehlt der Text"));
  EXPECT_THAT(Refusal({u"category", u"describe", u"A"}), HasSubstr("Es fehlt der Text"));
}

TEST(TCliArguments, ArgumentTooManyIsRefused) {
  EXPECT_THAT(Refusal({u"list", u"alles"}), HasSubstr("Eine Angabe zu viel: alles"));
  EXPECT_THAT(Refusal({u"category", u"move", u"A", u"B", u"--top"}), HasSubstr("Entweder"));
  EXPECT_THAT(Refusal({u"category", u"describe", u"A", u"B", u"--text", u"C"}),
              HasSubstr("Entweder"));
}

TEST(TCliArguments, TopLevelIsATarget) {
  EXPECT_TRUE(Parse({u"category", u"move", u"A", u"--top"}).Top);
}

TEST(TCliArguments, OptionOfAnotherCommandIsRefused) {
  EXPECT_THAT(Refusal({u"refresh", u"--json"}),
              HasSubstr("\"refresh\" kennt die Option --json nicht."));
  EXPECT_THAT(Refusal({u"--json", u"-rem", u"x"}), HasSubstr("--json gehört nicht vor -rem."));
}

TEST(TCliArguments, UnknownOptionIsRefused) {
  EXPECT_THAT(Refusal({u"list", u"--jsn"}), HasSubstr("Unbekannte Option: --jsn"));
}

TEST(TCliArguments, OptionWithoutItsValueIsRefused) {
  EXPECT_THAT(Refusal({u"list", u"--data"}), HasSubstr("--data braucht einen Wert."));
  EXPECT_THAT(Refusal({u"list", u"--data="}), HasSubstr("--data braucht einen Ordner."));
  EXPECT_THAT(Refusal({u"add", u"x", u"--category", u" "}), HasSubstr("--category braucht"));
}

TEST(TCliArguments, FlagTakesNoValue) {
  EXPECT_THAT(Refusal({u"list", u"--json=1"}), HasSubstr("--json nimmt keinen Wert."));
}

TEST(TCliArguments, CreateNeedsACategory) {
  EXPECT_THAT(Refusal({u"add", u"x", u"--create"}), HasSubstr("--create braucht --category"));
}

TEST(TCliArguments, AReminderHasOneTimeAndItsWays) {
  const TCliArguments call =
      Parse({u"remind", u"Lampe", u"--at", u"18:30", u"--kind=sound", u"--sound", u"ton.wav"});
  EXPECT_EQ(call.At, u"18:30");
  EXPECT_EQ(call.Kind, u"sound");
  EXPECT_EQ(call.Sound, u"ton.wav");
  EXPECT_FALSE(call.Delete);
  EXPECT_EQ(Parse({u"remind", u"Lampe", u"--in", u"90s"}).In, u"90s");
  EXPECT_EQ(Parse({u"remind", u"Lampe", u"--before-end", u"10m"}).BeforeEnd, u"10m");
  EXPECT_TRUE(Parse({u"remind", u"Lampe", u"--delete", u"--yes"}).Delete);
}

TEST(TCliArguments, AReminderWithTwoTimesIsRefused) {
  EXPECT_THAT(Refusal({u"remind", u"A", u"--in", u"1m", u"--at", u"18:30"}),
              HasSubstr("Nur eine Zeit"));
  EXPECT_THAT(Refusal({u"remind", u"A", u"--before-end", u"1m", u"--at", u"18:30"}),
              HasSubstr("Nur eine Zeit"));
}

TEST(TCliArguments, ADeletedReminderTakesNoTime) {
  for (const TString option :
       {u"--in=1m", u"--at=18:30", u"--before-end=1m", u"--kind=sound", u"--sound=x"}) {
    EXPECT_THAT(Refusal({u"remind", u"A", u"--delete", option}),
                HasSubstr("--delete steht allein."));
  }
  EXPECT_THAT(Refusal({u"remind", u"A", u"--sound", u" "}), HasSubstr("--sound braucht"));
}

TEST(TCliCommandInfo, HelpPageNamesEveryCommand) {
  const TString page = CliHelpPage();
  for (const TCliCommandInfo& command : CliCommands()) {
    EXPECT_NE(page.find(u"\n  " + TString(command.Name)), TString::npos) << ToUtf8(command.Name);
    EXPECT_NE(page.find(command.Meaning), TString::npos) << ToUtf8(command.Name);
  }
}

TEST(TCliCommandInfo, NoLineOfTheHelpPageIsWiderThanATerminal) {
  for (const TString& line : Split(CliHelpPage(), u'\n'))
    EXPECT_LE(line.size(), 100u) << ToUtf8(line);
}

TEST(TCliCommandInfo, AVeryLongWordIsNearToNothing) {
  EXPECT_EQ(SimilarCliCommands(TString(100000, u'a')), u"");
  EXPECT_EQ(SimilarCliCommands(u""), u"");
}

}  // namespace
}  // namespace kk
