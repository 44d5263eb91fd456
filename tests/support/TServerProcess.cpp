#include "tests/support/TServerProcess.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>

#ifndef KK_TEST_SOURCE_DIR
#define KK_TEST_SOURCE_DIR "tests"
#endif

namespace kk {

namespace {

using TSteady = std::chrono::steady_clock;

constexpr int cPumpMs = 100;
constexpr int cStopSeconds = 5;

// In the child: nothing here may allocate in a way that needs another thread.
[[noreturn]] void Execute(const std::vector<std::string>& iArguments,
                          const std::map<std::string, std::string>& iEnvironment, int iOutput,
                          pid_t iParent) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != iParent) _exit(126);
  dup2(iOutput, STDOUT_FILENO);
  dup2(iOutput, STDERR_FILENO);
  for (const auto& [name, value] : iEnvironment) setenv(name.c_str(), value.c_str(), 1);
  std::vector<char*> arguments;
  for (const std::string& argument : iArguments) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

}  // namespace

TServerProcess::TServerProcess(const std::vector<std::string>& iArguments,
                               const std::map<std::string, std::string>& iEnvironment) {
  int ends[2] = {-1, -1};
  if (pipe2(ends, O_CLOEXEC) != 0) {
    ADD_FAILURE() << "no pipe";
    return;
  }
  const pid_t parent = getpid();
  FProcess = fork();
  if (FProcess == 0) Execute(iArguments, iEnvironment, ends[1], parent);
  close(ends[1]);
  FOutput = ends[0];
  EXPECT_GT(FProcess, 0) << "no process for " << iArguments[0];
}

TServerProcess::~TServerProcess() {
  if (FProcess > 0) {
    kill(FProcess, SIGKILL);
    Reap();
  }
  if (FOutput >= 0) close(FOutput);
}

std::vector<std::string> TServerProcess::Python(const std::string& iScript,
                                                const std::vector<std::string>& iArguments) {
  std::vector<std::string> result = {"/usr/bin/python3", "-u",
                                     std::string(KK_TEST_SOURCE_DIR) + "/" + iScript};
  result.insert(result.end(), iArguments.begin(), iArguments.end());
  return result;
}

bool TServerProcess::Pump(int iMilliseconds) {
  pollfd wait = {FOutput, POLLIN, 0};
  if (poll(&wait, 1, iMilliseconds) <= 0) return true;
  char bytes[4096];
  const ssize_t count = read(FOutput, bytes, sizeof bytes);
  if (count <= 0) return false;
  FText.append(bytes, static_cast<size_t>(count));
  return true;
}

std::string TServerProcess::WaitForLine(const std::string& iBeginning, int iSeconds) {
  const auto last = TSteady::now() + std::chrono::seconds(iSeconds);
  bool open = true;
  while (true) {
    for (size_t end = FText.find('\n', FRead); end != std::string::npos;
         end = FText.find('\n', FRead)) {
      std::string line = FText.substr(FRead, end - FRead);
      FRead = end + 1;
      if (!line.empty() && line.back() == '\r') line.pop_back();
      if (line.rfind(iBeginning, 0) == 0) return line;
    }
    if (!open || TSteady::now() > last) break;
    open = Pump(cPumpMs);
  }
  ADD_FAILURE() << "no line \"" << iBeginning << "\" in:\n" << FText;
  return {};
}

std::string TServerProcess::Output() {
  for (size_t before = FText.size(); Pump(0) && FText.size() > before;) before = FText.size();
  return FText;
}

void TServerProcess::Signal(int iSignal) {
  if (FProcess > 0) kill(FProcess, iSignal);
}

int TServerProcess::Reap() {
  int status = 0;
  if (FProcess > 0 && waitpid(FProcess, &status, 0) == FProcess) {
    FExit = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
  FProcess = -1;
  return FExit;
}

int TServerProcess::Stop() {
  if (FProcess <= 0) return FExit;
  kill(FProcess, SIGTERM);
  const auto last = TSteady::now() + std::chrono::seconds(cStopSeconds);
  while (Pump(cPumpMs) && TSteady::now() < last) {
  }
  kill(FProcess, SIGKILL);  // no effect on one that has ended
  return Reap();
}

int TServerProcess::Wait(int iSeconds) {
  const auto last = TSteady::now() + std::chrono::seconds(iSeconds);
  while (Pump(cPumpMs)) {
    if (TSteady::now() < last) continue;
    ADD_FAILURE() << "it does not end";
    kill(FProcess, SIGKILL);
    break;
  }
  return Reap();
}

int FreePort() {
  const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  int port = 0;
  if (bind(probe, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
      getsockname(probe, reinterpret_cast<sockaddr*>(&address), &length) == 0) {
    port = ntohs(address.sin_port);
  }
  close(probe);
  EXPECT_GT(port, 0) << "no free port";
  return port;
}

}  // namespace kk
