#pragma once

#include <atomic>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "apps/cli/TCliPeer.h"
#include "host/base/TMainLoop.h"

namespace kk {

/// Takes the calls of other processes for the one that stays. A thread of its own moves the bytes
/// and wakes the main loop; the calls are answered on the main thread, one after the other.
class TCliServer {
 public:
  /// Listens in the folder of the data, whose lock the process has. The loop, which is borrowed, is
  /// woken when something has come. Raises EInOutError.
  TCliServer(TStringView iFolder, TMainLoop& ioLoop);
  /// Brings out what is still to be sent, for a moment, and hangs up on everybody.
  ~TCliServer();
  TCliServer(const TCliServer&) = delete;
  TCliServer& operator=(const TCliServer&) = delete;

  /// The next caller in the order of their calls; null if there is none. Main thread.
  std::shared_ptr<TCliPeer> TakeCaller();

 private:
  using TPeers = std::vector<std::shared_ptr<TCliPeer>>;

  void Work();
  void Turn(TPeers& ioPeers);
  bool Move(const std::shared_ptr<TCliPeer>& iPeer, short iEvents);
  void Accept(TPeers& ioPeers);
  void Wake() const;

  const TString FFolder;
  TMainLoop& FLoop;
  const TCliSocket FSocket;
  const int FWakeFile;
  std::mutex FMutex;
  std::deque<std::shared_ptr<TCliPeer>> FCallers;
  std::atomic<bool> FEnding{false};
  std::thread FThread;
};

}  // namespace kk
