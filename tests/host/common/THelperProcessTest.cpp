#include "host/common/THelperProcess.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <sstream>

#include "tests/support/TSessionBus.h"

namespace kk {
namespace {

using testing::HasSubstr;

/// What a program has written on one of its ways out.
class TPipe {
 public:
  TPipe() { EXPECT_EQ(pipe2(FEnds.data(), O_CLOEXEC), 0); }
  ~TPipe() {
    for (const int end : FEnds) {
      if (end >= 0) close(end);
    }
  }
  TPipe(const TPipe&) = delete;
  TPipe& operator=(const TPipe&) = delete;

  int End() const { return FEnds[1]; }
  /// Up to its end.
  std::string Read() {
    close(std::exchange(FEnds[1], -1));
    std::string text;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 0; (count = read(FEnds[0], bytes.data(), bytes.size())) > 0;) {
      text.append(bytes.data(), static_cast<size_t>(count));
    }
    return text;
  }

 private:
  std::array<int, 2> FEnds{-1, -1};
};

/// What the program says.
std::string Output(const char* iProgram, const char* iArgument,
                   std::vector<std::string> iEnvironment = {}) {
  TPipe output;
  THelperProcess helper;
  EXPECT_EQ(helper.Start(iProgram, iArgument, {.Output = output.End()}, std::move(iEnvironment)),
            0);
  return output.Read();
}

bool HasEnded(int iHandle, int iMilliseconds) {
  pollfd end = {iHandle, POLLIN, 0};
  return poll(&end, 1, iMilliseconds) == 1;
}

TEST(THelperProcess, GetsItsArgumentAndTellsItsEnd) {
  TPipe errors;
  THelperProcess helper;
  ASSERT_EQ(helper.Start("/bin/cat", "/gibt/es/nicht", {.Errors = errors.End()}), 0);
  EXPECT_THAT(errors.Read(), HasSubstr("/gibt/es/nicht"));
  int status = 0;
  EXPECT_EQ(helper.TakeEnd(status, true), THelperProcess::TEnd::Ended);
  EXPECT_EQ(WEXITSTATUS(status), 1);
  EXPECT_EQ(helper.TakeEnd(status, true), THelperProcess::TEnd::Vanished) << "it is taken once";
}

TEST(THelperProcess, AnswersWhyItCantBeStarted) {
  THelperProcess helper;
  EXPECT_EQ(helper.Start("/gibt/es/nicht", "x", {}), ENOENT);
  int status = 0;
  EXPECT_EQ(helper.TakeEnd(status, false), THelperProcess::TEnd::Vanished);
  EXPECT_EQ(helper.Handle(), -1);
}

TEST(THelperProcess, IsKilledWithItsObject) {
  int handle = -1;
  {
    THelperProcess helper;
    ASSERT_EQ(helper.Start("/bin/sleep", "1000", {}), 0);
    int status = 0;
    EXPECT_EQ(helper.TakeEnd(status, false), THelperProcess::TEnd::Runs);
    handle = fcntl(helper.Handle(), F_DUPFD_CLOEXEC, 0);
    EXPECT_FALSE(HasEnded(handle, 0));
  }
  EXPECT_TRUE(HasEnded(handle, 0));
  close(handle);
}

TEST(THelperProcess, ItsHandleTellsWhenItHasEnded) {
  THelperProcess helper;
  ASSERT_EQ(helper.Start("/bin/sleep", "0", {}), 0);
  EXPECT_TRUE(HasEnded(helper.Handle(), 30'000));
  int status = 0;
  EXPECT_EQ(helper.TakeEnd(status, false), THelperProcess::TEnd::Ended);
  EXPECT_TRUE(WIFEXITED(status));
}

TEST(THelperProcess, TakesOverTheEnvironmentWithWhatIsPutOnTop) {
  const TTestEnvironment environment(std::map<std::string, std::string>{{"TZ", "ALT2"}});
  EXPECT_EQ(Output("/bin/date", "+%Z"), "ALT\n");
  EXPECT_EQ(Output("/bin/date", "+%Z", {"TZ=NEU1"}), "NEU\n");
}

TEST(THelperProcess, HasNoFileOfThisProcessButThoseThatItIsGiven) {
  const int other = fcntl(STDOUT_FILENO, F_DUPFD, 100);  // without close-on-exec
  const std::string files = Output("/bin/ls", "/proc/self/fd");
  close(other);
  EXPECT_EQ(files, "0\n1\n2\n3\n") << "the last one is the folder that it lists";
}

TEST(THelperProcess, HasNothingWhereItIsGivenNothing) {
  TPipe output;
  THelperProcess helper;
  ASSERT_EQ(helper.Start("/bin/cat", "-", {.Output = output.End()}), 0);
  EXPECT_EQ(output.Read(), "") << "its input is empty";
}

TEST(THelperProcess, StandsInASessionOfItsOwnSoThatNoCtrlCComesToIt) {
  std::istringstream stat(Output("/bin/cat", "/proc/self/stat"));
  std::string process, name, state, parent, group, session;
  stat >> process >> name >> state >> parent >> group >> session;
  EXPECT_EQ(session, process);
}

/// The set that stands behind the name in /proc/self/status.
uint64_t SignalsIn(const std::string& iStatus, const std::string& iName) {
  const size_t at = iStatus.find(iName);
  EXPECT_NE(at, std::string::npos);
  return std::stoull(iStatus.substr(at + iName.size()), nullptr, 16);
}

TEST(THelperProcess, HearsTheSignalsThatThisProcessBlocksOrIgnores) {
  sigset_t blocked;
  sigset_t before;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &blocked, &before);
  const auto handler = signal(SIGPIPE, SIG_IGN);
  const std::string status = Output("/bin/cat", "/proc/self/status");
  signal(SIGPIPE, handler);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  EXPECT_EQ(SignalsIn(status, "SigBlk:") & (1U << (SIGTERM - 1)), 0U);
  EXPECT_EQ(SignalsIn(status, "SigIgn:") & (1U << (SIGPIPE - 1)), 0U);
}

TEST(THelperProcess, LiesBesideThisProgram) {
  const auto self = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(THelperProcess::ProgramBeside("helfer"), (self.parent_path() / "helfer").string());
}

TEST(THelperProcess, TheLastLineWithTheMarkIsTheReason) {
  EXPECT_EQ(THelperProcess::LastLine("warnung\nx: eins\nx: zwei\u0007\nrest", "x: "), u"zwei");
  EXPECT_EQ(THelperProcess::LastLine("x: ohne Ende", "x: "), u"ohne Ende");
  EXPECT_EQ(THelperProcess::LastLine("y: eins\n", "x: "), u"");
}

}  // namespace
}  // namespace kk
