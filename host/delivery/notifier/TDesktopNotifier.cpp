#include "host/delivery/notifier/TDesktopNotifier.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "host/base/Exception.h"
#include "host/base/Guard.h"
#include "host/base/Log.h"
#include "host/base/TMainLoop.h"
#include "host/common/OpenURL.h"
#include "host/delivery/notifier/TNotificationService.h"

namespace kk {

namespace {

using TClock = TNotificationService::TClock;

// A path within an address, as the D-Bus specification escapes it.
std::string EscapedPath(const std::string& iPath) {
  constexpr char cDigits[] = "0123456789abcdef";
  std::string escaped;
  for (const char c : iPath) {
    const bool alphanumeric =
        (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    if (alphanumeric || std::strchr("-_/.", c) != nullptr) {
      escaped += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    escaped += {'%', cDigits[byte >> 4], cDigits[byte & 0xF]};
  }
  return escaped;
}

// Empty if there is no session.
std::string AddressOfTheSession() {
  const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
  if (address != nullptr && *address != '\0') return address;
  const char* folder = std::getenv("XDG_RUNTIME_DIR");
  if (folder == nullptr || folder[0] != '/') return {};
  return "unix:path=" + EscapedPath(folder) + "/bus";
}

}  // namespace

// The thread and what it shares with the main one.
class TDesktopNotifier::TWorker : public std::enable_shared_from_this<TWorker> {
 public:
  TWorker(TFallback iFallback, TDesktopNotifierOptions iOptions)
      : FFallback(std::move(iFallback)),
        FOptions(std::move(iOptions)),
        FWake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (FWake < 0) throw Exception(u"Meldungen lassen sich nicht einrichten");
    if (FOptions.Address.empty()) FOptions.Address = AddressOfTheSession();
  }
  ~TWorker() { close(FWake); }
  TWorker(const TWorker&) = delete;
  TWorker& operator=(const TWorker&) = delete;

  void Add(const TNotification& iNotification);
  void Stop();

 private:
  struct TEntry {
    TNotification Notification;
    TClock::time_point Last;  // when it goes to the fallback at the latest
  };

  void Run();
  void Begin(TNotificationService& ioService);
  void Settle(TNotificationService& ioService);
  void HandOver(const TString& iReason);
  void PassOn();
  void RunFallback();
  void PostShown();
  void PostAction(const TString& iLink, const TGuid& iId, const TNotifyNotifierCallback& iOnClick);
  bool IsStopped();

  const TFallback FFallback;
  TDesktopNotifierOptions FOptions;
  const int FWake;

  // Of the thread alone.
  std::optional<TEntry> FCurrent;
  TClock::time_point FDeadline = TClock::time_point::max();

  std::mutex FMutex;  // for all below
  std::thread FThread;
  TMainLoop* FLoop = nullptr;
  std::deque<TEntry> FWaiting;
  std::deque<TNotification> FForFallback;
  bool FIsStopped = false;
};

void TDesktopNotifier::TWorker::Add(const TNotification& iNotification) {
  AssertMainThread();
  const std::lock_guard lock(FMutex);
  if (FIsStopped) throw Exception(u"Die Meldung wird nicht gezeigt, das Programm wird beendet");
  FLoop = &MainLoop();
  FWaiting.push_back({iNotification, TClock::now() + FOptions.MaxWait});
  if (!FThread.joinable() &&
      !Guarded(u"Host", [this] { FThread = std::thread([this] { Run(); }); })) {
    return PassOn();
  }
  eventfd_write(FWake, 1);
}

void TDesktopNotifier::TWorker::Stop() {
  std::thread thread;
  {
    const std::lock_guard lock(FMutex);
    FIsStopped = true;
    thread = std::move(FThread);
  }
  eventfd_write(FWake, 1);
  if (thread.joinable()) thread.join();
  std::deque<TNotification> lost;
  {
    const std::lock_guard lock(FMutex);
    lost.swap(FForFallback);
    for (TEntry& entry : FWaiting) lost.push_back(std::move(entry.Notification));
    FWaiting.clear();
  }
  for (const TNotification& notification : lost) {
    LogError(u"Host", u"Das Programm wird beendet, eine Meldung wurde nicht mehr gezeigt: %s",
             {WithoutControlCharacters(notification.Caption.substr(0, 200))});
  }
}

bool TDesktopNotifier::TWorker::IsStopped() {
  const std::lock_guard lock(FMutex);
  return FIsStopped;
}

void TDesktopNotifier::TWorker::Run() {
  TNotificationService service(FOptions.Address, [this](const TString& iLink, const TGuid& iId,
                                                        const TNotifyNotifierCallback& iOnClick) {
    PostAction(iLink, iId, iOnClick);
  });
  while (!IsStopped()) {
    if (!FCurrent) Begin(service);
    if (!FCurrent || service.State() == TNotificationService::TState::nsWaiting)
      service.Turn(FWake, FDeadline);
    eventfd_t ignored = 0;
    eventfd_read(FWake, &ignored);
    if (FCurrent) Settle(service);
  }
  if (!FCurrent) return;
  const std::lock_guard lock(FMutex);
  FWaiting.push_front(*std::move(FCurrent));
}

void TDesktopNotifier::TWorker::Begin(TNotificationService& ioService) {
  {
    const std::lock_guard lock(FMutex);
    if (FWaiting.empty()) return;
    FCurrent = std::move(FWaiting.front());
    FWaiting.pop_front();
  }
  FDeadline = std::min(TClock::now() + FOptions.Limit, FCurrent->Last);
  if (FDeadline <= TClock::now()) return HandOver(u"Der Benachrichtigungsdienst ist zu langsam");
  ioService.Begin(FCurrent->Notification);
}

// Looks whether the current notification has come to an end.
void TDesktopNotifier::TWorker::Settle(TNotificationService& ioService) {
  switch (ioService.State()) {
    case TNotificationService::TState::nsShown:
      PostShown();
      FCurrent.reset();
      FDeadline = TClock::time_point::max();
      break;
    case TNotificationService::TState::nsFailed:
      HandOver(ioService.Reason());
      break;
    default:
      if (TClock::now() < FDeadline) return;
      ioService.GiveUp();
      HandOver(u"Der Benachrichtigungsdienst antwortet nicht");
  }
}

// The current notification and, as they would fare no better, all behind it.
void TDesktopNotifier::TWorker::HandOver(const TString& iReason) {
  LogInfo(u"Host", u"Der Desktop zeigt die Meldung nicht: %s", {iReason});
  FDeadline = TClock::time_point::max();
  const std::lock_guard lock(FMutex);
  FWaiting.push_front(*std::move(FCurrent));
  FCurrent.reset();
  if (!FIsStopped) PassOn();
}

// Under the lock.
void TDesktopNotifier::TWorker::PassOn() {
  for (TEntry& entry : FWaiting) {
    FForFallback.push_back(std::move(entry.Notification));
    FLoop->Post([self = shared_from_this()] { self->RunFallback(); });
  }
  FWaiting.clear();
}

// On the main thread, one for each function that is posted, so that many don't hold the loop.
void TDesktopNotifier::TWorker::RunFallback() {
  TNotification notification;
  {
    const std::lock_guard lock(FMutex);
    if (FForFallback.empty()) return;
    notification = std::move(FForFallback.front());
    FForFallback.pop_front();
  }
  FFallback(notification);
  if (notification.OnShown) notification.OnShown(false);
}

void TDesktopNotifier::TWorker::PostShown() {
  if (!FCurrent->Notification.OnShown) return;
  const std::lock_guard lock(FMutex);
  if (FIsStopped) return;
  FLoop->Post([self = shared_from_this(), tell = std::move(FCurrent->Notification.OnShown)] {
    if (!self->IsStopped()) tell(true);
  });
}

void TDesktopNotifier::TWorker::PostAction(const TString& iLink, const TGuid& iId,
                                           const TNotifyNotifierCallback& iOnClick) {
  const std::lock_guard lock(FMutex);
  if (FIsStopped) return;
  FLoop->Post([self = shared_from_this(), iLink, iId, iOnClick] {
    if (self->IsStopped()) return;
    if (!iLink.empty()) OpenURL(iLink, true);
    if (iOnClick) iOnClick(nullptr, iId);
  });
}

TDesktopNotifier::TDesktopNotifier(TFallback iFallback, TDesktopNotifierOptions iOptions)
    : FWorker(std::make_shared<TWorker>(std::move(iFallback), std::move(iOptions))) {}

TDesktopNotifier::~TDesktopNotifier() { Stop(); }

void TDesktopNotifier::Display(const TNotification& iNotification) { FWorker->Add(iNotification); }

void TDesktopNotifier::Stop() { FWorker->Stop(); }

}  // namespace kk
