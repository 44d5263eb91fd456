#include "host/program/THostServer.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace kk {
namespace {

using TSteady = std::chrono::steady_clock;

// The others wait until one of these has gone.
constexpr size_t cMaxPeers = 64;
constexpr int cTurnMs = 1000;
constexpr int cEndTurnMs = 50;
// Who can't be let in stays at the door: to look at once again would keep a processor busy.
constexpr int cExhaustedMs = 250;
constexpr auto cLastWords = std::chrono::milliseconds(300);

}  // namespace

THostServer::THostServer(TStringView iFolder, TMainLoop& ioLoop, TMainLoop::TFunction iOnCalled)
    : FFolder(iFolder),
      FLoop(ioLoop),
      FSocket(THostSocket::Listen(iFolder)),
      FWakeFile(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      FOnCalled(std::make_shared<const TMainLoop::TFunction>(std::move(iOnCalled))),
      FThread([this] { Work(); }) {}

THostServer::~THostServer() {
  THostSocket::Remove(FFolder);
  FEnding = true;
  Wake();
  FThread.join();
  close(FWakeFile);
}

std::shared_ptr<THostPeer> THostServer::TakeCaller() {
  const std::lock_guard lock(FMutex);
  if (FCallers.empty()) return nullptr;
  const auto caller = std::move(FCallers.front());
  FCallers.pop_front();
  return caller;
}

void THostServer::Wake() const {
  const uint64_t one = 1;
  (void)!write(FWakeFile, &one, sizeof one);
}

void THostServer::WakeLoop() const {
  FLoop.Post([called = std::weak_ptr(FOnCalled)] {
    const auto function = called.lock();
    if (function && *function) (*function)();
  });
}

int THostServer::PatienceMs(const TPeers& iPeers) const {
  if (FEnding) return cEndTurnMs;
  if (FAcceptsAgain > TSteady::now()) return cExhaustedMs;
  return iPeers.empty() ? -1 : cTurnMs;
}

void THostServer::Work() {
  TPeers peers;
  while (!FEnding) Turn(peers);
  const auto last = TSteady::now() + cLastWords;
  const auto hasOutput = [](const auto& iPeer) { return iPeer->HasOutput(); };
  while (std::ranges::any_of(peers, hasOutput) && TSteady::now() < last) Turn(peers);
  for (const auto& peer : peers) peer->HangUp();
}

void THostServer::Turn(TPeers& ioPeers) {
  const bool accepts = !FEnding && ioPeers.size() < cMaxPeers && TSteady::now() >= FAcceptsAgain;
  std::vector<pollfd> files = {{FWakeFile, POLLIN, 0},
                               {accepts ? FSocket.Descriptor() : -1, POLLIN, 0}};
  for (const auto& peer : ioPeers) {
    const int events = POLLIN | (peer->HasOutput() ? POLLOUT : 0);
    files.push_back({peer->Descriptor(), static_cast<short>(events), 0});
  }
  poll(files.data(), files.size(), PatienceMs(ioPeers));
  uint64_t count = 0;
  (void)!read(FWakeFile, &count, sizeof count);
  TPeers staying;
  for (size_t i = 0; i < ioPeers.size(); ++i) {
    if (Move(ioPeers[i], files[i + 2].revents)) {
      staying.push_back(ioPeers[i]);
    } else {
      ioPeers[i]->HangUp();
      WakeLoop();
    }
  }
  ioPeers = std::move(staying);
  if (files[1].revents != 0) Accept(ioPeers);
}

bool THostServer::Move(const std::shared_ptr<THostPeer>& iPeer, short iEvents) {
  bool called = false;
  const bool canRead = (iEvents & ~POLLOUT) != 0;
  const bool stays = iPeer->Move(canRead, (iEvents & POLLOUT) != 0, called);
  if (called) {
    const std::lock_guard lock(FMutex);
    FCallers.push_back(iPeer);
  }
  // Wakes the loop for what may have come.
  if (canRead) WakeLoop();
  return stays && !iPeer->IsLate(TSteady::now());
}

void THostServer::Accept(TPeers& ioPeers) {
  bool exhausted = false;
  THostSocket socket = FSocket.Accept(exhausted);
  if (exhausted) FAcceptsAgain = TSteady::now() + std::chrono::milliseconds(cExhaustedMs);
  if (!socket.IsOpen()) return;
  ioPeers.push_back(std::make_shared<THostPeer>(std::move(socket), [this] { Wake(); }));
}

}  // namespace kk
