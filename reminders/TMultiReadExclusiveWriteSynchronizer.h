#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>
#include <unordered_map>

namespace kk {

/// A lock with many readers or one writer. A thread that reads may begin to read again, and the
/// writer may begin to read or to write again; each Begin has its End on the same thread. Who waits
/// to write goes before those who come to read, so that readers can't keep a writer out for ever.
/// Any thread.
class TMultiReadExclusiveWriteSynchronizer {
 public:
  TMultiReadExclusiveWriteSynchronizer() = default;
  TMultiReadExclusiveWriteSynchronizer(const TMultiReadExclusiveWriteSynchronizer&) = delete;
  TMultiReadExclusiveWriteSynchronizer& operator=(const TMultiReadExclusiveWriteSynchronizer&) =
      delete;

  void BeginRead();
  void EndRead();
  /// Raises Exception if the thread reads and does not write: it would wait for itself.
  void BeginWrite();
  void EndWrite();

  /// How many threads wait at this moment, for diagnosis and tests.
  int WaitingReaders() const;
  int WaitingWriters() const;

 private:
  using TId = std::thread::id;

  mutable std::mutex FMutex;
  std::condition_variable FFreed;
  std::unordered_map<TId, int> FReaders;  // how deep each one reads
  TId FWriter;
  int FWriteDepth = 0;
  int FWaitingReaders = 0;
  int FWaitingWriters = 0;
};

}  // namespace kk
