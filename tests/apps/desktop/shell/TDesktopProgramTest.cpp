#include "apps/desktop/shell/TDesktopProgram.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <map>

#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

using testing::HasSubstr;
using testing::Not;

/// A run of a built program in a process of its own; what it writes is collected.
class TRun {
 public:
  using TEnvironment = std::map<std::string, std::string>;

  /// Empty values are taken out of the environment.
  TRun(const std::string& iProgram, const std::vector<std::string>& iArguments,
       const TEnvironment& iEnvironment) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    FProcess = fork();
    if (FProcess == 0) {
      dup2(ends[1], STDOUT_FILENO);
      dup2(ends[1], STDERR_FILENO);
      for (const auto& [name, value] : iEnvironment) {
        value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
      }
      const std::string program = std::string(KK_BIN_DIR "/") + iProgram;
      std::vector<char*> words{const_cast<char*>(program.c_str())};
      for (const auto& word : iArguments) words.push_back(const_cast<char*>(word.c_str()));
      words.push_back(nullptr);
      execv(program.c_str(), words.data());
      _exit(127);
    }
    close(ends[1]);
    FOut = ends[0];
  }
  ~TRun() {
    if (FProcess > 0) {
      kill(FProcess, SIGKILL);
      waitpid(FProcess, nullptr, 0);
    }
    close(FOut);
  }
  TRun(const TRun&) = delete;
  TRun& operator=(const TRun&) = delete;

  void Signal(int iSignal) const { kill(FProcess, iSignal); }
  /// Returns when the text has come; false if the program ended first, or nothing came for long.
  bool WaitFor(const std::string& iText) {
    while (Text.find(iText) == std::string::npos) {
      if (!Read()) return false;
    }
    return true;
  }
  /// The exit code, or 128 and the signal.
  int Wait() {
    while (Read()) {
    }
    int status = 0;
    waitpid(FProcess, &status, 0);
    FProcess = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
  std::string Text;

 private:
  bool Read() {
    pollfd file{FOut, POLLIN, 0};
    if (poll(&file, 1, 60000) <= 0) return false;
    char buffer[4096];
    const ssize_t count = read(FOut, buffer, sizeof buffer);
    if (count > 0) Text.append(buffer, static_cast<size_t>(count));
    return count > 0;
  }
  pid_t FProcess = -1;
  int FOut = -1;
};

const TRun::TEnvironment cOffscreen = {{"QT_QPA_PLATFORM", "offscreen"},
                                       {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"}};
const TRun::TEnvironment cNoScreen = {
    {"QT_QPA_PLATFORM", ""}, {"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}};

class TDesktopProgramTest : public testing::Test {
 protected:
  std::vector<std::string> With(std::vector<std::string> iArguments) {
    std::vector<std::string> result = {"--data", Folder.Path()};
    result.insert(result.end(), iArguments.begin(), iArguments.end());
    return result;
  }
  TTempFolder Folder;
};

TEST_F(TDesktopProgramTest, HelpAndVersionNeedNoScreen) {
  TRun help("kaufkobolde", {"--help"}, cNoScreen);
  EXPECT_EQ(help.Wait(), 0);
  EXPECT_THAT(help.Text, HasSubstr("Aufruf: kaufkobolde"));
  TRun version("kaufkobolde", {"--version"}, cNoScreen);
  EXPECT_EQ(version.Wait(), 0);
  EXPECT_EQ(version.Text, "kaufkobolde 7.0\n");
}

TEST_F(TDesktopProgramTest, WrongCallIsSaidAndEndsWithTwo) {
  TRun run("kaufkobolde", {"--falsch"}, cNoScreen);
  EXPECT_EQ(run.Wait(), 2);
  EXPECT_THAT(run.Text, HasSubstr("Fehler: Unbekannte Option: --falsch"));
}

TEST_F(TDesktopProgramTest, WithoutAScreenItEndsWithThree) {
  TRun run("kaufkobolde", With({}), cNoScreen);
  EXPECT_EQ(run.Wait(), 3);
  EXPECT_THAT(run.Text, HasSubstr("keinen Bildschirm"));
}

TEST_F(TDesktopProgramTest, ScreenThatDoesNotAnswerIsNone) {
  TRun::TEnvironment environment = cNoScreen;
  environment["DISPLAY"] = ":4711";
  TRun run("kaufkobolde", With({}), environment);
  EXPECT_EQ(run.Wait(), 3);
  EXPECT_THAT(run.Text, HasSubstr("nicht zu erreichen"));
}

TEST_F(TDesktopProgramTest, SecondStartIsHandedOverAndTheSignalEndsItWell) {
  TRun first("kaufkobolde", With({"--verbose"}), cOffscreen);
  ASSERT_TRUE(first.WaitFor("Datei nicht vorhanden"));
  TRun second("kaufkobolde", With({}), cNoScreen);
  EXPECT_EQ(second.Wait(), 0) << second.Text;
  TRun wrong("kaufkobolde", With({"-rem"}), cNoScreen);
  EXPECT_EQ(wrong.Wait(), 0) << wrong.Text;
  first.Signal(SIGTERM);
  EXPECT_EQ(first.Wait(), 0) << first.Text;
  EXPECT_TRUE(Folder.Has(u"watchlist.dat"));
  EXPECT_THAT(first.Text, Not(HasSubstr("Fehler")));
}

TEST_F(TDesktopProgramTest, AnswersTheTerminalProgram) {
  TRun first("kaufkobolde", With({"--verbose"}), cOffscreen);
  ASSERT_TRUE(first.WaitFor("Datei nicht vorhanden"));
  TRun call("kaufkobolde-cli", With({"category", "add", "Garten"}), {});
  EXPECT_EQ(call.Wait(), 0) << call.Text;
  TRun list("kaufkobolde-cli", With({"list"}), {});
  EXPECT_EQ(list.Wait(), 0);
  EXPECT_THAT(list.Text, HasSubstr("Garten"));
  first.Signal(SIGINT);
  EXPECT_EQ(first.Wait(), 0) << first.Text;
}

}  // namespace
}  // namespace kk
