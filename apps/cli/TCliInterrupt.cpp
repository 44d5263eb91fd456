#include "apps/cli/TCliInterrupt.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace kk {
namespace {

constexpr int cSignals[] = {SIGINT, SIGTERM, SIGHUP};

// What the handler of a signal may touch.
volatile std::sig_atomic_t gPending = 0;
volatile std::sig_atomic_t gDescriptor = -1;

void Note(int /*iSignal*/) {
  const int saved = errno;
  gPending = 1;
  const char mark = 1;
  if (gDescriptor >= 0) (void)!write(gDescriptor, &mark, 1);
  errno = saved;
}

void Arm() {
  struct sigaction action = {};
  action.sa_handler = &Note;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (int signal : cSignals) sigaction(signal, &action, nullptr);
}

}  // namespace

TCliInterrupt::TCliInterrupt() {
  if (pipe2(FPipe, O_CLOEXEC | O_NONBLOCK) == 0) gDescriptor = FPipe[1];
  gPending = 0;
  Arm();
  std::signal(SIGPIPE, SIG_IGN);
}

TCliInterrupt::~TCliInterrupt() {
  for (int signal : cSignals) std::signal(signal, SIG_DFL);
  std::signal(SIGPIPE, SIG_DFL);
  gDescriptor = -1;
  for (int end : FPipe) {
    if (end >= 0) close(end);
  }
}

bool TCliInterrupt::IsPending() const { return gPending != 0; }

bool TCliInterrupt::Take() {
  if (gPending == 0) return false;
  gPending = 0;
  char mark = 0;
  while (read(FPipe[0], &mark, 1) == 1) {
  }
  Arm();
  return true;
}

}  // namespace kk
