#include "apps/cli/TCliCaller.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <filesystem>
#include <thread>

#include "TCliWorld.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// A command that comes over a line whose other end the test holds.
class TCliCallerTest : public testing::Test {
 protected:
  TCliCallerTest() {
    World.Show = [](const TForm&) {};
    World.Start();
    int ends[2];
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0);
    Far = THostSocket(ends[0]);
    Peer = std::make_unique<THostPeer>(THostSocket(ends[1]), [] {});
    Call.Kind = THostMessage::TKind::Call;
  }
  /// Answers the exit code; what was printed and complained is in Lines.
  int Execute(std::vector<TString> iWords) {
    Call.Words = std::move(iWords);
    size_t sent = 0;
    Far.Send(Call.ToLine() + Behind, sent);
    bool called = false;
    Peer->Move(true, false, called);
    TCliLog log(World.Console);
    TCliCaller caller(World.Context, log, *Peer);
    caller.Execute();
    HostEnds = caller.HostEnds();
    return TakeExit();
  }
  int TakeExit() {
    bool called = false;
    Peer->Move(false, true, called);
    std::string bytes;
    Far.Receive(bytes);
    std::string line;
    while (TakeLine(bytes, line)) {
      const auto message = THostMessage::FromLine(line);
      if (message->Kind == THostMessage::TKind::Exit) return message->ExitCode;
      Lines.push_back(ToUtf8(message->Text));
    }
    return -1;
  }

  TCliWorld World;
  THostSocket Far;
  std::unique_ptr<THostPeer> Peer;
  THostMessage Call;
  std::string Behind;  ///< what comes right behind the call
  std::vector<std::string> Lines;
  bool HostEnds = false;
};

TEST_F(TCliCallerTest, TheOutputIsTheCallersAndALookSavesNothing) {
  World.List().Item(u"Haus", u"Lampe");
  EXPECT_EQ(Execute({u"list"}), 0);
  EXPECT_THAT(Lines, Contains(HasSubstr("Lampe")));
  EXPECT_THAT(World.Console.Printed(), IsEmpty());
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliCallerTest, WhatChangesTheListIsSavedAtOnce) {
  EXPECT_EQ(Execute({u"category", u"add", u"Haus"}), 0);
  EXPECT_EQ(World.List().Calls.back(), "Save");
}

TEST_F(TCliCallerTest, ASaveThatFailsIsTheCallersFailure) {
  World.List().SaveFails = true;
  EXPECT_EQ(Execute({u"category", u"add", u"Haus"}), 1);
}

TEST_F(TCliCallerTest, AWrongCallIsAnsweredLikeEverywhere) {
  EXPECT_EQ(Execute({u"unfug"}), 2);
  EXPECT_THAT(Lines, Contains("Fehler: Unbekannter Befehl: unfug"));
}

TEST_F(TCliCallerTest, YesIsTheCallersOwn) {
  World.List().Item(u"Haus", u"Lampe");
  EXPECT_EQ(Execute({u"delete", u"Lampe", u"--yes"}), 0);
  IFormHost* const before = SetFormHost(nullptr);
  SetFormHost(before);
  EXPECT_EQ(before, &World.Forms) << "the host's own windows are its own again";
}

TEST_F(TCliCallerTest, ErrorsOfTheCommandAreToldToBothAndFailIt) {
  World.List().OnRequest = [] { LogError(u"Quelle", u"404"); };
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  EXPECT_EQ(Execute({u"refresh"}), 1);
  EXPECT_THAT(Lines, Contains("Fehler: 404"));
  EXPECT_THAT(World.Console.Complained(), ElementsAre("Fehler: 404"));
}

TEST_F(TCliCallerTest, ErrorsOfAReminderMeanwhileAreNotTheCallers) {
  World.List().OnRequest = [] {
    std::thread([] { LogError(u"Watchlist-Reminder (Sound)", u"kein Ton"); }).join();
  };
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  EXPECT_EQ(Execute({u"refresh"}), 0);
  EXPECT_THAT(Lines, Not(Contains(HasSubstr("kein Ton"))));
  EXPECT_THAT(World.Console.Complained(), ElementsAre("Fehler: kein Ton"));
}

TEST_F(TCliCallerTest, AnErrorOnTheMainThreadIsTheCommands) {
  World.List().OnRequest = [] { LogError(u"Watchlist-Reminder (SMS)", u"kein Guthaben"); };
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  EXPECT_EQ(Execute({u"refresh"}), 1);
}

TEST_F(TCliCallerTest, WhoLeavesACommandDoesNotEndTheReminders) {
  World.List().NeverEnds = true;
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  World.List().OnRequest = [this] { Far = THostSocket(); };
  World.Loop.Post([this] {
    bool called = false;
    if (!Peer->Move(true, false, called)) Peer->HangUp();
  });
  EXPECT_EQ(Execute({u"refresh"}), -1);
  EXPECT_THAT(World.List().Calls, Not(Contains("TerminateThreads")));
  EXPECT_THAT(World.List().Calls, Contains("CancelUpdates")) << "what has not begun is not made";
}

TEST_F(TCliCallerTest, ARequestToEndEndsTheCommandAndThenTheProcess) {
  World.List().NeverEnds = true;
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  World.Console.Interrupt();
  EXPECT_EQ(Execute({u"refresh"}), 1);
  EXPECT_TRUE(HostEnds);
}

TEST_F(TCliCallerTest, PathsStartInTheCallersFolder) {
  TTempFolder folder;
  const auto before = std::filesystem::current_path();
  Call.Folder = FromUtf8(folder.Path());
  std::string seen;
  World.List().OnRequest = [&] { seen = std::filesystem::current_path().string(); };
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  EXPECT_EQ(Execute({u"refresh"}), 0);
  EXPECT_EQ(seen, folder.Path());
  EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(TCliCallerTest, AFolderThatCanNotBeReachedIsTold) {
  Call.Folder = u"/gibt/es/nicht";
  EXPECT_EQ(Execute({u"list"}), 1);
  EXPECT_THAT(Lines, ElementsAre(HasSubstr("kommt nicht in den Ordner")));
}

TEST_F(TCliCallerTest, WhatIsAMatterOfTheStartIsRefused) {
  EXPECT_EQ(Execute({u"run"}), 1);
  EXPECT_THAT(Lines, ElementsAre(HasSubstr("\"kaufkobolde-cli run\" läuft für")));
}

TEST_F(TCliCallerTest, ABackupIsNotRestoredUnderARunningList) {
  EXPECT_EQ(Execute({u"list", u"--restore-backup"}), 1);
  EXPECT_THAT(Lines, ElementsAre(HasSubstr("--restore-backup")));
}

TEST_F(TCliCallerTest, ThePlaceOfTheLogIsTold) {
  EXPECT_EQ(Execute({u"reminders", u"--verbose"}), 0);
  EXPECT_THAT(Lines, Contains(HasSubstr("Protokoll")));
}

TEST_F(TCliCallerTest, AnotherVersionIsRefused) {
  Call.Version = THostMessage::cVersion + 1;
  EXPECT_EQ(Execute({u"list"}), 1);
  EXPECT_THAT(Lines, ElementsAre(HasSubstr("von einer anderen Version")));
}

TEST_F(TCliCallerTest, AWindowIsNotOpenedByAProgramThatHasNone) {
  Call.Kind = THostMessage::TKind::Start;
  EXPECT_EQ(Execute({u"-rem", u"http://127.0.0.1/"}), 1);
  EXPECT_THAT(Lines, ElementsAre(HasSubstr("ist schon in \"kaufkobolde-cli run\" offen")));
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliCallerTest, WhoHasLeftBeforeHisTurnGetsNothingDone) {
  World.List().Item(u"Haus", u"Lampe");
  THostMessage interrupt;
  interrupt.Kind = THostMessage::TKind::Interrupt;
  Behind = interrupt.ToLine();
  EXPECT_EQ(Execute({u"delete", u"Lampe", u"--yes"}), 1);
  EXPECT_THAT(Lines, ElementsAre("Abgebrochen."));
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliCallerTest, ErrorsOfAThreadThatDeliversAreNotTheCallersWhateverTheirSender) {
  World.List().OnRequest = [] {
    std::thread([] {
      LogInfo(u"Watchlist-Reminder", u"Melde Erinnerung");
      LogError(u"Host", u"kein Ton");
    }).join();
    LogError(u"Watchlist-Reminder (Window)", u"kein Fenster");
  };
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  EXPECT_EQ(Execute({u"refresh"}), 0);
  EXPECT_THAT(Lines, Not(Contains(HasSubstr("kein"))));
  EXPECT_THAT(World.Console.Complained(), ElementsAre("Fehler: kein Ton", "Fehler: kein Fenster"));
}

TEST_F(TCliCallerTest, ErrorsOfAnotherThreadOfTheCommandAreTheCallers) {
  World.List().OnRequest = [] {
    std::thread([] { LogError(u"Host", u"SmtpPassword ist nicht lesbar"); }).join();
  };
  World.List().Item(u"Haus", u"Lampe", World.ShopId());
  EXPECT_EQ(Execute({u"refresh"}), 1);
  EXPECT_THAT(Lines, Contains("Fehler: SmtpPassword ist nicht lesbar"));
}

TEST_F(TCliCallerTest, WhoHasGoneBeforeHisTurnGetsNothingDone) {
  Peer->HangUp();
  EXPECT_EQ(Execute({u"category", u"add", u"Haus"}), -1);
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

}  // namespace
}  // namespace kk
