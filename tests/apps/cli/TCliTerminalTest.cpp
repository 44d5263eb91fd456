#include "apps/cli/TCliTerminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

#include "apps/cli/TCliInterrupt.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

/// Pipes in the place of the process's standard files.
class TStandardPipes {
 public:
  TStandardPipes() {
    std::fflush(stdout);
    for (int file = 0; file < 3; ++file) {
      FSaved[file] = dup(file);
      int ends[2];
      EXPECT_EQ(pipe(ends), 0);
      dup2(ends[file == 0 ? 0 : 1], file);
      close(ends[file == 0 ? 0 : 1]);
      FOurs[file] = ends[file == 0 ? 1 : 0];
      if (file > 0) fcntl(FOurs[file], F_SETFL, O_NONBLOCK);
    }
  }
  ~TStandardPipes() {
    std::fflush(stdout);
    for (int file = 0; file < 3; ++file) {
      dup2(FSaved[file], file);
      close(FSaved[file]);
      if (FOurs[file] >= 0) close(FOurs[file]);
    }
  }
  void Type(const std::string& iText) { (void)!write(FOurs[0], iText.data(), iText.size()); }
  void EndInput() {
    close(FOurs[0]);
    FOurs[0] = -1;
  }
  std::string Take(int iFile) {
    char bytes[4096];
    const ssize_t count = read(FOurs[iFile], bytes, sizeof bytes);
    return count > 0 ? std::string(bytes, static_cast<size_t>(count)) : std::string();
  }

 private:
  int FSaved[3];
  int FOurs[3];
};

struct TTerminalWorld {
  TStandardPipes Pipes;
  TCliInterrupt Interrupt;
  TCliTerminal Terminal{Interrupt};
};

TEST(TCliTerminal, PrintsToOneAndComplainsToTheOther) {
  TTerminalWorld world;
  world.Terminal.Print(u"Zeile ü");
  world.Terminal.Complain(u"Fehler");
  const bool flushed = world.Terminal.Flush();
  EXPECT_TRUE(flushed);
  EXPECT_EQ(world.Pipes.Take(1), "Zeile ü\n");
  EXPECT_EQ(world.Pipes.Take(2), "Fehler\n");
}

TEST(TCliTerminal, NoProgressIsShownWhereThereIsNoTerminal) {
  TTerminalWorld world;
  world.Terminal.Progress(u"1 von 2");
  world.Terminal.Progress(u"");
  EXPECT_EQ(world.Pipes.Take(2), "");
  EXPECT_FALSE(world.Terminal.IsInteractive());
}

TEST(TCliTerminal, ReadsLineByLine) {
  TTerminalWorld world;
  world.Pipes.Type("eins\nzw");
  EXPECT_EQ(world.Terminal.ReadLine(u"? "), u"eins");
  world.Pipes.Type("ei\n\n");
  EXPECT_EQ(world.Terminal.ReadLine(u"? "), u"zwei");
  EXPECT_EQ(world.Terminal.ReadLine(u"? "), u"");
  EXPECT_EQ(world.Pipes.Take(2), "? ? ? ");
}

TEST(TCliTerminal, TheEndOfTheInputIsNoLine) {
  TTerminalWorld world;
  world.Pipes.EndInput();
  EXPECT_EQ(world.Terminal.ReadLine(u""), std::nullopt);
}

TEST(TCliTerminal, TheLastLineNeedsNoEnd) {
  TTerminalWorld world;
  world.Pipes.Type("eins\ngeheim");
  world.Pipes.EndInput();
  EXPECT_EQ(world.Terminal.ReadLine(u""), u"eins");
  EXPECT_EQ(world.Terminal.ReadSecret(u""), u"geheim");
  EXPECT_EQ(world.Terminal.ReadLine(u""), std::nullopt);
}

TEST(TCliTerminal, AQuestionIsLeftWhenNobodyWaitsForItsAnswerAnyMore) {
  TTerminalWorld world;
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
  (void)!write(ends[1], "x", 1);
  world.Terminal.LeaveQuestionsWith(ends[0]);
  world.Pipes.Type("ja\n");
  EXPECT_EQ(world.Terminal.ReadLine(u""), u"ja") << "words are no end";
  close(ends[1]);
  EXPECT_EQ(world.Terminal.ReadLine(u""), std::nullopt);
  world.Terminal.LeaveQuestionsWith(-1);
  close(ends[0]);
  world.Pipes.Type("nein\n");
  EXPECT_EQ(world.Terminal.ReadLine(u""), u"nein");
}

TEST(TCliTerminal, ALineWithoutEndIsLeftAtSomeSize) {
  TTerminalWorld world;
  TTestMainLoop loop;
  std::function<void()> typeOn = [&] {
    world.Pipes.Type(std::string(4096, 'x'));
    loop.Post(typeOn);
  };
  loop.Post(typeOn);
  EXPECT_EQ(world.Terminal.ReadLine(u""), std::nullopt);
}

TEST(TCliTerminal, TheMainLoopGoesOnWhileTheUserThinks) {
  TTerminalWorld world;
  TTestMainLoop loop;
  loop.Post([&] { world.Pipes.Type("ja\n"); });
  EXPECT_EQ(world.Terminal.ReadLine(u""), u"ja");
}

TEST(TCliTerminal, CtrlCLeavesEveryQuestionUntilItIsTaken) {
  TTerminalWorld world;
  std::raise(SIGINT);
  EXPECT_EQ(world.Terminal.ReadLine(u""), std::nullopt);
  world.Pipes.Type("neu\n");
  EXPECT_EQ(world.Terminal.ReadLine(u""), std::nullopt);
  EXPECT_TRUE(world.Terminal.TakeInterrupt());
  EXPECT_EQ(world.Terminal.ReadLine(u""), u"neu");
}

/// A terminal in the place of stdin; what is typed comes back while it echoes.
struct THiddenWorld {
  THiddenWorld() {
    EXPECT_EQ(openpty(&Ours, &Its, nullptr, nullptr, nullptr), 0);
    dup2(Its, STDIN_FILENO);
    fcntl(Ours, F_SETFL, O_NONBLOCK);
    Terminal.emplace(Interrupt);
  }
  ~THiddenWorld() {
    close(Ours);
    close(Its);
  }
  bool Echoes() const {
    termios mode = {};
    tcgetattr(Its, &mode);
    return (mode.c_lflag & ECHO) != 0;
  }
  void Type(const std::string& iText) const { (void)!write(Ours, iText.data(), iText.size()); }
  std::string Echo() const {
    char bytes[256];
    const ssize_t count = read(Ours, bytes, sizeof bytes);
    return count > 0 ? std::string(bytes, static_cast<size_t>(count)) : std::string();
  }

  TStandardPipes Pipes;
  int Ours = -1;
  int Its = -1;
  TTestMainLoop Loop;
  TCliInterrupt Interrupt;
  std::optional<TCliTerminal> Terminal;
};

TEST(TCliTerminal, ASecretIsNotShownWhileItIsTyped) {
  THiddenWorld world;
  EXPECT_TRUE(world.Echoes());
  world.Loop.Post([&] {
    EXPECT_FALSE(world.Echoes());
    world.Type("geheim\n");
  });
  EXPECT_EQ(world.Terminal->ReadSecret(u"Kennwort: "), u"geheim");
  EXPECT_TRUE(world.Echoes());
  EXPECT_EQ(world.Echo(), "");
  EXPECT_EQ(world.Pipes.Take(2), "Kennwort: \n");
}

TEST(TCliTerminal, CtrlCInASecretLeavesATerminalThatShowsWhatIsTyped) {
  THiddenWorld world;
  world.Loop.Post([&] {
    EXPECT_FALSE(world.Echoes());
    world.Type("geh");
    std::raise(SIGINT);
  });
  EXPECT_EQ(world.Terminal->ReadSecret(u"Kennwort: "), std::nullopt);
  EXPECT_TRUE(world.Echoes());
  EXPECT_TRUE(world.Terminal->TakeInterrupt());
}

TEST(TCliTerminal, KeysThatWouldEndOrStopTheProgramInASecretDoNothing) {
  THiddenWorld world;
  termios before = {};
  tcgetattr(world.Its, &before);
  world.Loop.Post([&] {
    termios mode = {};
    tcgetattr(world.Its, &mode);
    EXPECT_EQ(mode.c_cc[VQUIT], _POSIX_VDISABLE);
    EXPECT_EQ(mode.c_cc[VSUSP], _POSIX_VDISABLE);
    EXPECT_EQ(mode.c_cc[VINTR], before.c_cc[VINTR]);
    world.Type("x\n");
  });
  EXPECT_EQ(world.Terminal->ReadSecret(u""), u"x");
  termios after = {};
  tcgetattr(world.Its, &after);
  EXPECT_EQ(after.c_cc[VQUIT], before.c_cc[VQUIT]);
  EXPECT_EQ(after.c_cc[VSUSP], before.c_cc[VSUSP]);
}

TEST(TCliTerminal, WithoutATerminalASecretIsALineWithoutAPrompt) {
  TTerminalWorld world;
  world.Pipes.Type("geheim\nmehr\n");
  EXPECT_EQ(world.Terminal.ReadSecret(u"Kennwort: "), u"geheim");
  EXPECT_EQ(world.Pipes.Take(2), "");
}

TEST(TCliTerminal, OutputThatNobodyReadsIsAFailureAndNoEnd) {
  TTerminalWorld world;
  const int nowhere = open("/dev/full", O_WRONLY);
  dup2(nowhere, STDOUT_FILENO);
  close(nowhere);
  world.Terminal.Print(u"Zeile");
  const bool flushed = world.Terminal.Flush();
  std::clearerr(stdout);
  EXPECT_FALSE(flushed);
}

TEST(TCliInterrupt, NotesASignalOnce) {
  TCliInterrupt interrupt;
  EXPECT_FALSE(interrupt.Take());
  for (int signal : {SIGINT, SIGTERM, SIGHUP}) {
    std::raise(signal);
    EXPECT_TRUE(interrupt.IsPending());
    EXPECT_TRUE(interrupt.Take());
    EXPECT_FALSE(interrupt.Take());
  }
}

TEST(TCliInterruptDeathTest, ASecondSignalThatNobodyTookEndsTheProgram) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_EXIT(
      {
        TCliInterrupt interrupt;
        std::raise(SIGINT);
        std::raise(SIGINT);
      },
      testing::KilledBySignal(SIGINT), "");
}

}  // namespace
}  // namespace kk
