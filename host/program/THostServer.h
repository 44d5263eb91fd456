#pragma once

#include <atomic>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "host/base/TMainLoop.h"
#include "host/program/THostPeer.h"

namespace kk {

/// Takes the calls of other processes for the one that has the data. A thread of its own moves the
/// bytes and wakes the main loop; the calls are answered on the main thread, one after the other.
class THostServer {
 public:
  /// Listens in the folder of the data, whose lock the process has. The loop, which is borrowed, is
  /// woken when something has come, and runs iOnCalled each time when a caller may be there to be
  /// taken; nothing of it runs any more when the server is gone. Raises EInOutError.
  THostServer(TStringView iFolder, TMainLoop& ioLoop, TMainLoop::TFunction iOnCalled = {});
  /// Brings out what is still to be sent, for a moment, and hangs up on everybody.
  ~THostServer();
  THostServer(const THostServer&) = delete;
  THostServer& operator=(const THostServer&) = delete;

  /// The next caller in the order of their calls; null if there is none. Main thread.
  std::shared_ptr<THostPeer> TakeCaller();

 private:
  using TTime = THostPeer::TTime;
  using TPeers = std::vector<std::shared_ptr<THostPeer>>;

  void Work();
  void Turn(TPeers& ioPeers);
  bool Move(const std::shared_ptr<THostPeer>& iPeer, short iEvents);
  void Accept(TPeers& ioPeers);
  void Wake() const;
  void WakeLoop() const;
  int PatienceMs(const TPeers& iPeers) const;

  const TString FFolder;
  TMainLoop& FLoop;
  const THostSocket FSocket;
  const int FWakeFile;
  const std::shared_ptr<const TMainLoop::TFunction> FOnCalled;
  TTime FAcceptsAgain;  ///< the thread alone
  std::mutex FMutex;
  std::deque<std::shared_ptr<THostPeer>> FCallers;
  std::atomic<bool> FEnding{false};
  std::thread FThread;
};

}  // namespace kk
