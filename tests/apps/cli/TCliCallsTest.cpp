#include "apps/cli/TCliCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TCliWorld.h"
#include "TTestCaller.h"
#include "host/program/THostServer.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TurnUntil.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A host with a window, which delivers reminders and answers calls as they come.
class TCliCallsTest : public testing::Test {
 protected:
  TCliCallsTest() {
    World.Show = [](const TForm&) {};
    World.Start();
  }
  /// Answers everybody until the caller has come to his end; that is his exit code.
  int AnswerUntilTheEndOf(TTestCaller& ioCaller) {
    EXPECT_TRUE(TurnUntil(World.Loop, [&] {
      while (const auto peer = Server.TakeCaller()) Calls.Answer(*peer);
      return ioCaller.HasEnded();
    }));
    return ioCaller.Wait();
  }

  TTempFolder Data;
  TCliWorld World;
  TCliCalls Calls{World.Plugins};
  THostServer Server{FromUtf8(Data.Path()), World.Loop};
};

TEST_F(TCliCallsTest, ACallIsAnsweredAsIfItWereMadeAlone) {
  World.List().Item(u"Haus", u"Lampe");
  TTestCaller caller(Data.Path(), {u"list"});
  EXPECT_EQ(AnswerUntilTheEndOf(caller), 0);
  EXPECT_THAT(caller.Console().Printed(), Contains(HasSubstr("Lampe")));
  EXPECT_THAT(World.Console.Printed(), IsEmpty());
  EXPECT_FALSE(Calls.IsAnswering());
}

TEST_F(TCliCallsTest, QuestionsAreTheCallersAndTheWindowIsNotAsked) {
  World.List().Item(u"Haus", u"Lampe");
  TTestCaller caller(Data.Path(), {u"delete", u"Lampe"}, {u"1"});
  EXPECT_EQ(AnswerUntilTheEndOf(caller), 0);
  EXPECT_THAT(caller.Console().Prompts(), Not(IsEmpty()));
  EXPECT_THAT(World.Console.Prompts(), IsEmpty());
  EXPECT_THAT(World.List().Calls, Contains("Save"));
}

TEST_F(TCliCallsTest, ErrorsOfTheCommandAreTheCallers) {
  World.List().OnRequest = [] { LogError(u"Quelle", u"404"); };
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  TTestCaller caller(Data.Path(), {u"refresh"});
  EXPECT_EQ(AnswerUntilTheEndOf(caller), 1);
  EXPECT_THAT(caller.Console().Complained(), ElementsAre("Fehler: 404"));
}

TEST_F(TCliCallsTest, TheHostCanEndACommandThatTakesLongAndAnswersTheNextOne) {
  World.List().NeverEnds = true;
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  World.List().OnRequest = [this] {
    World.Loop.Post([this] {
      EXPECT_TRUE(Calls.IsAnswering());
      Calls.Interrupt();
    });
  };
  TTestCaller caller(Data.Path(), {u"refresh"});
  EXPECT_EQ(AnswerUntilTheEndOf(caller), 1);
  EXPECT_THAT(caller.Console().Complained(), ElementsAre("Abgebrochen."));
  TTestCaller next(Data.Path(), {u"list"});
  EXPECT_EQ(AnswerUntilTheEndOf(next), 0);
}

TEST_F(TCliCallsTest, ASecondOneThatDeliversIsRefusedInTheNameOfTheWindow) {
  TTestCaller caller(Data.Path(), {u"run"});
  EXPECT_EQ(AnswerUntilTheEndOf(caller), 1);
  EXPECT_THAT(caller.Console().Complained(),
              ElementsAre(HasSubstr("geöffnet und meldet die Erinnerungen selbst.")));
}

TEST_F(TCliCallsTest, ABackupIsNotRestoredUnderAnOpenWindow) {
  TTestCaller caller(Data.Path(), {u"list", u"--restore-backup"});
  EXPECT_EQ(AnswerUntilTheEndOf(caller), 1);
  EXPECT_THAT(caller.Console().Complained(),
              ElementsAre("Fehler: --restore-backup geht nur, solange Kaufkobolde nicht läuft."));
}

}  // namespace
}  // namespace kk
