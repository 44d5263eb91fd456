#include "reminders/TMultiReadExclusiveWriteSynchronizer.h"

#include "host/base/Exception.h"

namespace kk {

void TMultiReadExclusiveWriteSynchronizer::BeginRead() {
  const TId me = std::this_thread::get_id();
  std::unique_lock lock(FMutex);
  // Who is inside already must not wait for a writer that waits for him.
  if (FWriter != me && !FReaders.contains(me)) {
    ++FWaitingReaders;
    FFreed.wait(lock, [this] { return FWriter == TId() && FWaitingWriters == 0; });
    --FWaitingReaders;
  }
  ++FReaders[me];
}

void TMultiReadExclusiveWriteSynchronizer::EndRead() {
  const std::lock_guard lock(FMutex);
  const auto reader = FReaders.find(std::this_thread::get_id());
  if (reader == FReaders.end()) throw Exception(u"EndRead ohne BeginRead");
  if (--reader->second > 0) return;
  FReaders.erase(reader);
  FFreed.notify_all();
}

void TMultiReadExclusiveWriteSynchronizer::BeginWrite() {
  const TId me = std::this_thread::get_id();
  std::unique_lock lock(FMutex);
  if (FWriter != me) {
    if (FReaders.contains(me)) throw Exception(u"BeginWrite innerhalb von BeginRead");
    ++FWaitingWriters;
    FFreed.wait(lock, [this] { return FWriter == TId() && FReaders.empty(); });
    --FWaitingWriters;
    FWriter = me;
  }
  ++FWriteDepth;
}

void TMultiReadExclusiveWriteSynchronizer::EndWrite() {
  const std::lock_guard lock(FMutex);
  if (FWriter != std::this_thread::get_id()) throw Exception(u"EndWrite ohne BeginWrite");
  if (--FWriteDepth > 0) return;
  FWriter = TId();
  FFreed.notify_all();
}

int TMultiReadExclusiveWriteSynchronizer::WaitingReaders() const {
  const std::lock_guard lock(FMutex);
  return FWaitingReaders;
}

int TMultiReadExclusiveWriteSynchronizer::WaitingWriters() const {
  const std::lock_guard lock(FMutex);
  return FWaitingWriters;
}

}  // namespace kk
