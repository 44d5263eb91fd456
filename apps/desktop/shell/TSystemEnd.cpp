#include "apps/desktop/shell/TSystemEnd.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <cerrno>
#include <csignal>
#include <utility>

#include "host/base/Guard.h"

namespace kk {
namespace {

constexpr int cSignals[] = {SIGINT, SIGTERM, SIGHUP};

// What the handler of a signal may touch.
volatile std::sig_atomic_t gDescriptor = -1;

void Note(int /*iSignal*/) {
  const int saved = errno;
  const char mark = 1;
  if (gDescriptor >= 0) (void)!write(gDescriptor, &mark, 1);
  errno = saved;
}

}  // namespace

TSystemEnd::TSystemEnd(TMainLoop::TFunction iOnEnd) : FOnEnd(std::move(iOnEnd)) {
  if (pipe2(FPipe, O_CLOEXEC | O_NONBLOCK) != 0) return;
  gDescriptor = FPipe[1];
  FNotifier = std::make_unique<QSocketNotifier>(FPipe[0], QSocketNotifier::Read);
  QObject::connect(FNotifier.get(), &QSocketNotifier::activated, [this] { Take(); });
  struct sigaction action = {};
  action.sa_handler = &Note;
  action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
  for (int signal : cSignals) sigaction(signal, &action, nullptr);
}

TSystemEnd::~TSystemEnd() {
  for (int signal : cSignals) std::signal(signal, SIG_DFL);
  gDescriptor = -1;
  FNotifier.reset();
  for (int end : FPipe) {
    if (end >= 0) close(end);
  }
}

void TSystemEnd::Take() {
  char mark = 0;
  while (read(FPipe[0], &mark, 1) == 1) {
  }
  Guarded(u"TSystemEnd", FOnEnd);
}

}  // namespace kk
