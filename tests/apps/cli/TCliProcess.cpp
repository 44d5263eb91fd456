#include "TCliProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace kk {
namespace {

constexpr int cDeadlineMs = 60000;

void Close(int& ioFile) {
  if (ioFile >= 0) close(ioFile);
  ioFile = -1;
}

void OpenPipe(int& oRead, int& oWrite) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("pipe");
  oRead = ends[0];
  oWrite = ends[1];
}

// A terminal without echo, so that only what the program writes comes back.
void OpenTerminal(int& oOurs, int& oIts) {
  if (openpty(&oOurs, &oIts, nullptr, nullptr, nullptr) != 0) throw std::runtime_error("openpty");
  fcntl(oOurs, F_SETFD, FD_CLOEXEC);
  fcntl(oIts, F_SETFD, FD_CLOEXEC);
  termios mode = {};
  tcgetattr(oIts, &mode);
  mode.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  mode.c_oflag &= ~static_cast<tcflag_t>(OPOST);
  tcsetattr(oIts, TCSANOW, &mode);
}

}  // namespace

TCliProcess::TCliProcess(const std::vector<std::string>& iArguments, const TOptions& iOptions) {
  int in = -1;
  int out = -1;
  int error = -1;
  if (iOptions.OutFile.empty()) {
    OpenPipe(FOut, out);
  } else {
    out = open(iOptions.OutFile.c_str(), O_WRONLY | O_CLOEXEC);
  }
  if (iOptions.Terminal) {
    OpenTerminal(FTerminal, in);
    error = dup(in);
    FError = dup(FTerminal);
  } else {
    in = open("/dev/null", O_RDONLY | O_CLOEXEC);
    OpenPipe(FError, error);
  }
  FProcess = fork();
  if (FProcess < 0) throw std::runtime_error("fork");
  if (FProcess == 0) Execute(iArguments, iOptions, in, out, error);
  Close(in);
  Close(out);
  Close(error);
}

void TCliProcess::Execute(const std::vector<std::string>& iArguments, const TOptions& iOptions,
                          int iIn, int iOut, int iError) {
  setsid();
  if (iOptions.Terminal) ioctl(iIn, TIOCSCTTY, 0);
  dup2(iIn, STDIN_FILENO);
  dup2(iOut, STDOUT_FILENO);
  dup2(iError, STDERR_FILENO);
  if (iOptions.Closed) close(STDOUT_FILENO);
  if (!iOptions.Folder.empty() && chdir(iOptions.Folder.c_str()) != 0) _exit(126);
  for (const auto& [name, value] : iOptions.Environment) setenv(name.c_str(), value.c_str(), 1);
  std::string program = std::string(KK_BIN_DIR) + "/kaufkobolde-cli";
  std::vector<std::string> words = iArguments;
  std::vector<char*> pointers = {program.data()};
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  execv(program.c_str(), pointers.data());
  _exit(127);
}

TCliProcess::~TCliProcess() {
  if (FProcess > 0) kill(FProcess, SIGKILL);
  Reap();
  Close(FTerminal);
  Close(FOut);
  Close(FError);
}

void TCliProcess::Type(const std::string& iText) {
  if (write(FTerminal, iText.data(), iText.size()) != static_cast<ssize_t>(iText.size())) {
    throw std::runtime_error("typing failed");
  }
}

void TCliProcess::Signal(int iSignal) {
  if (FProcess > 0) kill(FProcess, iSignal);
}

bool TCliProcess::Pump() {
  if (FOut < 0 && FError < 0) return false;
  pollfd files[] = {{FOut, POLLIN, 0}, {FError, POLLIN, 0}};
  const int ready = poll(files, 2, cDeadlineMs);
  if (ready == 0) throw std::runtime_error("the program hangs; so far: " + FOutcome.Error);
  const auto take = [](int& ioFile, const pollfd& iState, std::string& ioText) {
    if (ioFile < 0 || iState.revents == 0) return;
    char bytes[65536];
    const ssize_t count = read(ioFile, bytes, sizeof bytes);
    if (count > 0) {
      ioText.append(bytes, static_cast<size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      Close(ioFile);  // a terminal whose other side is closed reads as an error
    }
  };
  take(FOut, files[0], FOutcome.Out);
  take(FError, files[1], FOutcome.Error);
  return FOut >= 0 || FError >= 0;
}

bool TCliProcess::WaitForOutput(const std::string& iText) {
  const auto hasCome = [&] {
    return FOutcome.Out.find(iText) != std::string::npos ||
           FOutcome.Error.find(iText) != std::string::npos;
  };
  while (!hasCome()) {
    if (!Pump()) return hasCome();
  }
  return true;
}

TCliOutcome TCliProcess::Wait() {
  while (Pump()) {
  }
  Reap();
  return FOutcome;
}

void TCliProcess::Reap() {
  if (FProcess <= 0) return;
  int status = 0;
  waitpid(FProcess, &status, 0);
  FProcess = -1;
  FOutcome.Exit = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

TCliOutcome RunCli(const std::vector<std::string>& iArguments,
                   const TCliProcess::TOptions& iOptions) {
  return TCliProcess(iArguments, iOptions).Wait();
}

}  // namespace kk
