#include "apps/cli/TCliRemind.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "TCliWorld.h"
#include "apps/cli/ECliUsage.h"
#include "apps/cli/TCliRemindEditor.h"
#include "host/controls/TfrmMessageDlg.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr int64_t cHour = TDateTime::cMsPerHour;

class TCliRemindTest : public testing::Test {
 protected:
  TCliRemindTest() {
    World.Start();
    World.List().Item(u"Haus", u"Lampe").EndTime = Clock.Now().PlusMs(48 * cHour);
  }
  bool Run(std::vector<TString> iOptions) {
    std::vector<TString> words = {u"remind", u"Lampe"};
    words.insert(words.end(), iOptions.begin(), iOptions.end());
    return TCliRemind(World.Context).Run(TCliArguments::Parse(words));
  }
  std::string Refusal(const std::vector<TString>& iOptions) {
    try {
      Run(iOptions);
    } catch (const ECliUsage& e) {
      return ToUtf8(e.Message() + u" | " + e.Hint());
    }
    return "accepted";
  }
  const TWatchlistReminderInfo& Reminder() { return World.List().Tree.Reminders.at(0); }
  std::string Iso(TDateTime iTime) { return ToUtf8(DateTimeToIso(iTime)); }

  TTestClock Clock;
  TCliWorld World;
};

TEST_F(TCliRemindTest, InCountsFromTheMomentOfTheEditor) {
  EXPECT_TRUE(Run({u"--in", u"1h30m"}));
  EXPECT_EQ(Iso(Reminder().Time), "2026-11-20T20:00:00");
  EXPECT_EQ(Reminder().Types, std::vector<int>{1}) << "the kind that the editor proposes";
  EXPECT_THAT(World.Console.Printed(),
              ElementsAre("Erinnerung eingerichtet: Lampe am " +
                          ToUtf8(DateTimeToStr(Reminder().Time)) + " (Meldungsfenster)"));
}

TEST_F(TCliRemindTest, AtIsThatVerySecondWhateverTheEditorStartedWith) {
  for (const int64_t late : {0, 1, 999, 1000, 2500}) {
    World.List().EditorStartsLate = late;
    Clock.Advance(333);
    EXPECT_TRUE(Run({u"--at", u"21.11.2026 18:30:15"}));
    EXPECT_EQ(Iso(Reminder().Time), "2026-11-21T18:30:15") << late;
  }
}

TEST_F(TCliRemindTest, BeforeEndIsOneOfTheList) {
  EXPECT_TRUE(Run({u"--before-end", u"10m"}));
  EXPECT_EQ(Iso(Reminder().Time), "2026-11-22T18:20:00");
  EXPECT_TRUE(Run({u"--before-end", u"60m"}));
  EXPECT_EQ(Iso(Reminder().Time), "2026-11-22T17:30:00");
  EXPECT_TRUE(Run({u"--before-end", u"24h"}));
  EXPECT_EQ(Iso(Reminder().Time), "2026-11-21T18:30:00");
  ASSERT_THAT(World.List().Tree.Reminders, SizeIs(1));
}

TEST_F(TCliRemindTest, AnotherTimeBeforeTheEndIsRefusedWithTheList) {
  EXPECT_EQ(Refusal({u"--before-end", u"7m"}),
            "Diese Zeit vor dem Ende gibt es nicht: 7m | Möglich sind: 1m 2m 5m 10m 15m 30m 1h 2h "
            "3h 4h 5h 6h 12h 1d");
  EXPECT_THAT(Refusal({u"--before-end", u"bald"}), HasSubstr("keine Dauer"));
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliRemindTest, TimesThatAreNoneAreRefused) {
  EXPECT_THAT(Refusal({u"--in", u"bald"}), HasSubstr("90s, 10m"));
  EXPECT_THAT(Refusal({u"--at", u"bald"}), HasSubstr("Das ist keine Zeit: bald | Richtig wären"));
  EXPECT_THAT(Refusal({u"--at", u"01.01.1900 10:00"}), HasSubstr("Das ist keine Zeit"));
  EXPECT_THAT(Refusal({u"--at", u"01.01.2999 10:00"}), HasSubstr("Das ist keine Zeit"));
  EXPECT_THAT(Refusal({u"--in", u"1m", u"--kind", u"brief"}),
              HasSubstr("Möglich sind: sound window email sms calendar"));
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliRemindTest, EachKindIsTheEditorsOwn) {
  const std::vector<std::pair<TString, int>> kinds = {
      {u"window", 1}, {u"sms", 2}, {u"calendar", 3}, {u"email", 4}};
  for (const auto& [word, type] : kinds) {
    EXPECT_TRUE(Run({u"--in", u"1m", u"--kind", word}));
    EXPECT_EQ(Reminder().Types, std::vector<int>{type}) << ToUtf8(word);
  }
}

TEST_F(TCliRemindTest, OnlyWhatThisProgramDeliversNeedsItToRun) {
  EXPECT_TRUE(Run({u"--in", u"1m", u"--kind", u"sms"}));
  EXPECT_THAT(World.Console.Complained(), IsEmpty());
  EXPECT_TRUE(Run({u"--in", u"1m", u"--kind", u"window"}));
  EXPECT_THAT(World.Console.Complained(), Contains(HasSubstr("\"kaufkobolde-cli run\"")).Times(1));
}

TEST_F(TCliRemindTest, AHostThatDeliversNeedsNoHint) {
  TCliWorld world;
  world.Show = [](const TForm&) {};
  world.Start();
  world.List().Item(u"Haus", u"Lampe").EndTime = Clock.Now().PlusMs(cHour);
  TCliRemind(world.Context).Run(TCliArguments::Parse({u"remind", u"Lampe", u"--in", u"1m"}));
  EXPECT_THAT(world.Console.Complained(), IsEmpty());
}

TEST_F(TCliRemindTest, ASoundStandsWithItsFullPath) {
  TTempFolder folder;
  folder.Write(u"ton.wav", "x");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  EXPECT_TRUE(Run({u"--in", u"1m", u"--kind", u"sound", u"--sound", u"ton.wav"}));
  EXPECT_EQ(Reminder().Types, std::vector<int>{0});
  EXPECT_EQ(Reminder().SoundFile, folder.File(u"ton.wav"));
  EXPECT_TRUE(Run({u"--in", u"1m", u"--kind", u"window", u"--sound", u"ton.wav"}));
  std::filesystem::current_path(before);
  EXPECT_EQ(Reminder().Types, (std::vector<int>{0, 1}));
  EXPECT_THAT(World.Console.Printed().back(),
              HasSubstr("(Sound, Meldungsfenster, Sounddatei " + folder.Path() + "/ton.wav)"));
}

TEST_F(TCliRemindTest, WhatTheRulesRefuseIsToldAndTheEditorIsLeft) {
  EXPECT_FALSE(Run({u"--in", u"1m", u"--sound", u"/gibt/es/nicht.wav"}));
  EXPECT_THAT(World.Console.Complained(), ElementsAre("Fehler: Ungültige Sounddatei! Sie fehlt."));
  EXPECT_FALSE(Run({u"--at", u"19.11.2026 10:00"}));
  EXPECT_THAT(World.Console.Complained(), Contains("Fehler: Nicht in der Vergangenheit!"));
  EXPECT_THAT(World.List().Tree.Reminders, IsEmpty());
  EXPECT_THAT(World.Console.Printed(), IsEmpty());
}

TEST_F(TCliRemindTest, AnErrorThatCallsItselfOneIsNotCalledSoTwice) {
  TCliRemindEditor editor(World.Console,
                          TCliArguments::Parse({u"remind", u"Lampe", u"--in", u"1m"}));
  const TCliFormHost::TAnswering answering(World.Context.Forms,
                                           [&editor](TForm& form) { return editor.Answer(form); });
  MessageDlg(u"Fehler beim Eintragen:\r\nvoll", TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
  EXPECT_THAT(World.Console.Complained(), ElementsAre("Fehler beim Eintragen: voll"));
}

TEST_F(TCliRemindTest, AnItemWithoutAnEndInTheFutureIsToldBeforeTheEditor) {
  World.List().Item(u"Haus", u"Buch");
  World.List().Item(u"Haus", u"Uhr").EndTime = Clock.Now();
  EXPECT_FALSE(
      TCliRemind(World.Context).Run(TCliArguments::Parse({u"remind", u"Buch", u"--in", u"1m"})));
  EXPECT_FALSE(
      TCliRemind(World.Context).Run(TCliArguments::Parse({u"remind", u"Uhr", u"--in", u"1m"})));
  EXPECT_THAT(World.Console.Complained(),
              ElementsAre("Fehler: An \"Buch\" kann nicht erinnert werden: Der Artikel hat kein "
                          "Ende.",
                          "Fehler: An \"Uhr\" kann nicht mehr erinnert werden: Das Ende war am " +
                              ToUtf8(DateTimeToStr(Clock.Now())) + "."));
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliRemindTest, TheHostsCorrectedClockDecidesAsWell) {
  Clock.SetExactOffset(49 * cHour);
  EXPECT_FALSE(Run({u"--in", u"1m"}));
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliRemindTest, WithoutATimeNobodyIsAskedWhereNobodyIs) {
  EXPECT_THAT(Refusal({}), HasSubstr("Es fehlt die Zeit der Erinnerung"));
  EXPECT_THAT(Refusal({u"--kind", u"window"}), HasSubstr("Richtig wäre: kaufkobolde-cli remind"));
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliRemindTest, ALostReminderIsNoSuccess) {
  World.List().ReminderIsLost = true;
  EXPECT_FALSE(Run({u"--in", u"1m"}));
  EXPECT_THAT(World.Console.Complained(), ElementsAre(HasSubstr("nicht in die Beobachtenliste")));
}

TEST_F(TCliRemindTest, AReminderThatWouldSayNothingIsNoSuccess) {
  World.List().SourceHasNoText = true;
  EXPECT_FALSE(Run({u"--in", u"1m"}));
  EXPECT_THAT(World.Console.Complained(), ElementsAre(HasSubstr("es würde nichts gemeldet")));
}

TEST_F(TCliRemindTest, DeleteAsksAndTells) {
  World.List().Reminder(World.List().Tree.Categories.at(1).Groups[0].Items[0].Id, Clock.Now());
  EXPECT_FALSE(Run({u"--delete"}));
  EXPECT_THAT(World.Console.Complained(), Contains(HasSubstr("(--yes sagt ja)")));
  EXPECT_THAT(World.List().Tree.Reminders, SizeIs(1));
  World.Console.Answer({u"2"});
  EXPECT_FALSE(Run({u"--delete"}));
  EXPECT_EQ(World.Console.Complained().back(), "Abgebrochen.");
  World.Forms.SetYesToAll(true);
  EXPECT_TRUE(Run({u"--delete"}));
  EXPECT_THAT(World.Console.Printed(), ElementsAre("Erinnerung gelöscht: Lampe"));
  EXPECT_THAT(World.List().Tree.Reminders, IsEmpty());
}

TEST_F(TCliRemindTest, ThatAnSmsStaysWithItsServiceIsTold) {
  const auto hint = HasSubstr("weder verschoben noch zurückgerufen");
  World.Forms.SetYesToAll(true);
  EXPECT_TRUE(Run({u"--in", u"1m", u"--kind", u"sms"}));
  EXPECT_THAT(World.Console.Complained(), Not(Contains(hint))) << "a new one";
  EXPECT_TRUE(Run({u"--in", u"2m", u"--kind", u"sms"}));
  EXPECT_THAT(World.Console.Complained(), Contains(hint).Times(1));
  EXPECT_TRUE(Run({u"--in", u"2m", u"--kind", u"window"}));
  EXPECT_THAT(World.Console.Complained(), Contains(hint).Times(2));
  EXPECT_TRUE(Run({u"--in", u"2m", u"--kind", u"sms"}));
  EXPECT_FALSE(Run({u"--at", u"19.11.2026 10:00"}));
  EXPECT_THAT(World.Console.Complained(), Contains(hint).Times(2)) << "nothing was changed";
  EXPECT_TRUE(Run({u"--delete"}));
  EXPECT_THAT(World.Console.Complained(), Contains(hint).Times(3));
}

TEST_F(TCliRemindTest, DeleteWithoutAReminderFails) {
  EXPECT_FALSE(Run({u"--delete", u"--yes"}));
  EXPECT_THAT(World.Console.Complained(),
              ElementsAre("Fehler: An \"Lampe\" ist keine Erinnerung eingerichtet."));
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliRemindTest, ATerminalIsAskedForTheRest) {
  // Kind, (no sound file: the box is left), time, buttons.
  World.Console.Answer({u"", u"", u"", u"", u"1"});
  EXPECT_TRUE(Run({u"--kind", u"email"}));
  EXPECT_EQ(Reminder().Types, std::vector<int>{4});
  EXPECT_EQ(Iso(Reminder().Time), "2026-11-22T18:29:00");
}

TEST_F(TCliRemindTest, ATerminalThatLeavesTheEditorIsTold) {
  World.Console.Answer({u""});
  EXPECT_FALSE(Run({}));
  EXPECT_EQ(World.Console.Complained().back(), "Abgebrochen.");
  EXPECT_THAT(World.List().Tree.Reminders, IsEmpty());
}

}  // namespace
}  // namespace kk
