#include "apps/cli/TCliTerminal.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <iterator>
#include <utility>

#include "apps/cli/TCliInterrupt.h"
#include "host/base/TMainLoop.h"

namespace kk {
namespace {

constexpr size_t cMaxInput = 1 << 20;
constexpr int cTurnMs = 50;

// Columns that a progress line may take without a line break.
size_t TerminalWidth() {
  winsize size = {};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col < 20) return 79;
  return size.ws_col - size_t{1};
}

// A terminal that does not show what is typed, for the life of the object. The keys that would stop
// or end the program and leave the terminal like that do nothing meanwhile; Ctrl+C is noted.
class THiddenInput {
 public:
  THiddenInput() : FChanged(tcgetattr(STDIN_FILENO, &FBefore) == 0) {
    if (!FChanged) return;
    termios mode = FBefore;
    mode.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL);
    for (const int key : {VQUIT, VSUSP}) mode.c_cc[key] = _POSIX_VDISABLE;
    tcsetattr(STDIN_FILENO, TCSADRAIN, &mode);
  }
  ~THiddenInput() {
    if (FChanged) tcsetattr(STDIN_FILENO, TCSADRAIN, &FBefore);
  }
  THiddenInput(const THiddenInput&) = delete;
  THiddenInput& operator=(const THiddenInput&) = delete;

 private:
  termios FBefore = {};
  const bool FChanged;
};

}  // namespace

TCliTerminal::TCliTerminal(TCliInterrupt& ioInterrupt)
    : FInterrupt(ioInterrupt),
      FInteractive(isatty(STDIN_FILENO) == 1),
      FShowsProgress(isatty(STDERR_FILENO) == 1) {}

void TCliTerminal::Print(TStringView iLine) {
  const std::string bytes = ToUtf8(iLine) + "\n";
  std::lock_guard lock(FMutex);
  ClearProgress();
  if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) FFailed = true;
}

void TCliTerminal::Complain(TStringView iLine) {
  std::lock_guard lock(FMutex);
  ClearProgress();
  // What was printed before stands before.
  if (std::fflush(stdout) != 0) FFailed = true;
  WriteError(ToUtf8(iLine) + "\n");
}

void TCliTerminal::Progress(TStringView iLine) {
  if (!FShowsProgress) return;
  std::lock_guard lock(FMutex);
  // It is told in every turn of a wait, and mostly the same.
  if (iLine == FProgress) return;
  ClearProgress();
  if (iLine.empty()) return;
  if (std::fflush(stdout) != 0) FFailed = true;
  WriteError(ToUtf8(iLine.substr(0, TerminalWidth())));
  FProgress = iLine;
}

void TCliTerminal::ClearProgress() {
  if (FProgress.empty()) return;
  WriteError("\r\x1B[K");
  FProgress.clear();
}

void TCliTerminal::WriteError(const std::string& iBytes) {
  // A failure to tell of a failure has nowhere to go.
  (void)!std::fwrite(iBytes.data(), 1, iBytes.size(), stderr);
}

bool TCliTerminal::TakeInterrupt() { return FInterrupt.Take(); }

std::optional<TString> TCliTerminal::ReadLine(TStringView iPrompt) {
  {
    std::lock_guard lock(FMutex);
    ClearProgress();
    if (std::fflush(stdout) != 0) FFailed = true;
    WriteError(ToUtf8(iPrompt));
  }
  while (true) {
    if (std::optional<TString> line = TakeLine()) return line;
    pollfd files[] = {
        {STDIN_FILENO, POLLIN, 0}, {FInterrupt.Descriptor(), POLLIN, 0}, {FLine, POLLRDHUP, 0}};
    const auto count = static_cast<nfds_t>(std::size(files));
    if (poll(files, count, HasMainLoop() ? cTurnMs : -1) < 0 && errno != EINTR) return {};
    if (HasMainLoop()) MainLoop().ProcessMessages();
    if (FInterrupt.IsPending() || files[2].revents != 0) {
      FInput.clear();
      Complain(u"");
      return std::nullopt;
    }
    if ((files[0].revents & (POLLIN | POLLHUP | POLLERR | POLLNVAL)) == 0) continue;
    char bytes[4096];
    const ssize_t size = read(STDIN_FILENO, bytes, sizeof bytes);
    if (size < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (size == 0 && !FInput.empty()) return TakeRest();
    if (size <= 0 || FInput.size() > cMaxInput) {
      if (!iPrompt.empty()) Complain(u"");
      return std::nullopt;
    }
    FInput.append(bytes, static_cast<size_t>(size));
  }
}

std::optional<TString> TCliTerminal::ReadSecret(TStringView iPrompt) {
  if (!FInteractive) return ReadLine({});
  const THiddenInput hidden;
  std::optional<TString> line = ReadLine(iPrompt);
  if (line) Complain(u"");  // the user's Return was not shown either
  return line;
}

std::optional<TString> TCliTerminal::TakeLine() {
  const size_t end = FInput.find('\n');
  if (end == std::string::npos) return std::nullopt;
  const TString line = FromUtf8(FInput.substr(0, end));
  FInput.erase(0, end + 1);
  return line;
}

std::optional<TString> TCliTerminal::TakeRest() {
  return FromUtf8(std::exchange(FInput, std::string()));
}

bool TCliTerminal::Flush() {
  Progress({});
  std::lock_guard lock(FMutex);
  if (std::fflush(stdout) != 0) FFailed = true;
  return !FFailed && std::ferror(stdout) == 0;
}

}  // namespace kk
