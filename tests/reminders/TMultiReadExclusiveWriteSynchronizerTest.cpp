#include "reminders/TMultiReadExclusiveWriteSynchronizer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <latch>
#include <thread>
#include <vector>

#include "host/base/Exception.h"
#include "host/base/TClock.h"
#include "reminders/TLstRemindItemSync.h"

namespace kk {
namespace {

using TSync = TMultiReadExclusiveWriteSynchronizer;

void WaitForAWaitingWriter(const TSync& iSync) {
  while (iSync.WaitingWriters() == 0) std::this_thread::yield();
}

TEST(TMultiReadExclusiveWriteSynchronizer, ManyReadTogether) {
  TSync sync;
  std::latch inside(3);
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&] {
      sync.BeginRead();
      inside.arrive_and_wait();  // passes only if all three read at the same time
      sync.EndRead();
    });
  }
  for (std::thread& thread : threads) thread.join();
  sync.BeginWrite();
  sync.EndWrite();
}

TEST(TMultiReadExclusiveWriteSynchronizer, TheWriterWaitsForTheReaders) {
  TSync sync;
  std::atomic<bool> written = false;
  sync.BeginRead();
  std::thread writer([&] {
    sync.BeginWrite();
    written = true;
    sync.EndWrite();
  });
  WaitForAWaitingWriter(sync);
  EXPECT_FALSE(written);
  sync.EndRead();
  writer.join();
  EXPECT_TRUE(written);
  EXPECT_EQ(sync.WaitingWriters(), 0);
}

TEST(TMultiReadExclusiveWriteSynchronizer, AReaderMayReadAgainWhileAWriterWaits) {
  TSync sync;
  sync.BeginRead();
  std::thread writer([&] {
    sync.BeginWrite();
    sync.EndWrite();
  });
  WaitForAWaitingWriter(sync);
  sync.BeginRead();
  sync.EndRead();
  EXPECT_EQ(sync.WaitingWriters(), 1) << "one End for two Begins doesn't let the writer in";
  sync.EndRead();
  writer.join();
}

TEST(TMultiReadExclusiveWriteSynchronizer, AWaitingWriterGoesBeforeNewReaders) {
  TSync sync;
  int value = 0;
  sync.BeginRead();
  std::thread writer([&] {
    sync.BeginWrite();
    value = 1;
    sync.EndWrite();
  });
  WaitForAWaitingWriter(sync);
  int seen = -1;
  std::thread reader([&] {
    sync.BeginRead();
    seen = value;
    sync.EndRead();
  });
  sync.EndRead();
  writer.join();
  reader.join();
  EXPECT_EQ(seen, 1);
}

TEST(TMultiReadExclusiveWriteSynchronizer, TheWriterMayReadAndWriteAgain) {
  TSync sync;
  sync.BeginWrite();
  sync.BeginWrite();
  sync.BeginRead();
  sync.BeginWrite();
  sync.EndWrite();
  sync.EndRead();
  sync.EndWrite();
  std::atomic<bool> read = false;
  std::thread reader([&] {
    sync.BeginRead();
    read = true;
    sync.EndRead();
  });
  EXPECT_FALSE(read) << "still inside the outermost bracket";
  sync.EndWrite();
  reader.join();
  EXPECT_TRUE(read);
}

TEST(TMultiReadExclusiveWriteSynchronizer, WritingInsideOfReadingRaisesInsteadOfWaitingForItself) {
  TSync sync;
  sync.BeginRead();
  EXPECT_THROW(sync.BeginWrite(), Exception);
  EXPECT_EQ(sync.WaitingWriters(), 0);
  sync.EndRead();
  sync.BeginWrite();
  sync.EndWrite();
}

TEST(TMultiReadExclusiveWriteSynchronizer, AnEndWithoutItsBeginRaises) {
  TSync sync;
  EXPECT_THROW(sync.EndRead(), Exception);
  EXPECT_THROW(sync.EndWrite(), Exception);
  sync.BeginWrite();
  EXPECT_THROW(sync.EndRead(), Exception);
  std::thread([&] { EXPECT_THROW(sync.EndWrite(), Exception); }).join();
  sync.EndWrite();
}

TEST(TMultiReadExclusiveWriteSynchronizer, WritersExcludeEachOtherAndTheReaders) {
  TSync sync;
  int64_t first = 0;
  int64_t second = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&] {
      for (int n = 0; n < 500; ++n) {
        sync.BeginWrite();
        ++first;
        ++second;
        sync.EndWrite();
      }
    });
    threads.emplace_back([&] {
      for (int n = 0; n < 500; ++n) {
        sync.BeginRead();
        EXPECT_EQ(first, second);
        sync.EndRead();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(first, 1500);
}

// The main thread adds and looks while the reminder thread polls and takes out.
TEST(TLstRemindItemSync, TwoThreadsShareItWithoutLosingAReminder) {
  constexpr int cCount = 300;
  TLstRemindItemSync list(true);
  int taken = 0;
  std::thread poller([&] {
    while (taken < cCount) {
      if (!list.HasElapsedItems() || list.GetCount() == 0) continue;
      std::unique_ptr<TRemindItem> item;
      if (list.ExtractFirstElapsedItem(item)) ++taken;
    }
  });
  for (int i = 0; i < cCount; ++i) {
    const TGuid id = NewGuid();
    list.Add(std::make_unique<TRemindItem>(id));
    list.RemindTypesBySearchResultId(id);
    list.CloneItemBySearchResultId(id);
    EXPECT_FALSE(list.HasSearchResultId(id));
    EXPECT_TRUE(list.GetChanged());
    const TLstRemindItemSync::TReading reading(list);
    for (int n = 0; n < list.Count(); ++n) EXPECT_TRUE(list.GetItems(n).RemindTime().IsZero());
  }
  poller.join();
  EXPECT_EQ(taken, cCount);
  EXPECT_EQ(list.Count(), 0);
  EXPECT_TRUE(list.GetChanged());
}

TEST(TLstRemindItemSync, TheFirstReadersOfAllMayComeTogether) {
  std::vector<std::unique_ptr<TLstRemindItemSync>> lists;
  for (int i = 0; i < 200; ++i) lists.push_back(std::make_unique<TLstRemindItemSync>(true));
  std::barrier together(2);
  const auto ask = [&] {
    for (const auto& list : lists) {
      together.arrive_and_wait();
      EXPECT_FALSE(list->HasSearchResultId(cEmptyGuid));
    }
  };
  std::thread one(ask);
  std::thread other(ask);
  one.join();
  other.join();
}

// Runs a read operation on another thread while this one writes, and answers whether it waited.
template <class Operation>
bool WaitsForTheWriter(Operation iOperation) {
  TLstRemindItemSync list(true);
  std::atomic<bool> done = false;
  std::thread reader;
  bool waited = false;
  {
    const TLstRemindItemSync::TWriting writing(list);
    reader = std::thread([&] {
      iOperation(list);
      done = true;
    });
    while (!waited && !done) {
      std::this_thread::yield();
      waited = list.Sync().WaitingReaders() == 1;
    }
  }
  reader.join();
  return waited;
}

TEST(TLstRemindItemSync, EveryReadOperationTakesTheReadLock) {
  using TLst = TLstRemindItemSync;
  EXPECT_TRUE(WaitsForTheWriter([](TLst& ioLst) { ioLst.GetCount(); }));
  EXPECT_TRUE(WaitsForTheWriter([](TLst& ioLst) { ioLst.HasElapsedItems(); }));
  EXPECT_TRUE(WaitsForTheWriter([](TLst& ioLst) { ioLst.RemindTypesBySearchResultId({}); }));
  EXPECT_TRUE(WaitsForTheWriter([](TLst& ioLst) { ioLst.CloneItemBySearchResultId({}); }));
  EXPECT_TRUE(WaitsForTheWriter([](TLst& ioLst) { ioLst.HasSearchResultId({}); }));
  EXPECT_TRUE(WaitsForTheWriter([](TLst& ioLst) { ioLst.GetChanged(); }));
  EXPECT_TRUE(WaitsForTheWriter([](TLst& ioLst) { ioLst.BeginRead().EndRead(); }));
}

TEST(TLstRemindItemSync, ABracketAroundALoopKeepsTheOtherThreadOut) {
  TLstRemindItemSync list(true);
  std::thread other;
  {
    const TLstRemindItemSync::TWriting writing(list);
    other = std::thread([&] { list.Clear(); });
    for (int i = 0; i < 50; ++i) list.Add(std::make_unique<TRemindItem>(NewGuid()));
    EXPECT_EQ(list.Count(), 50);
  }
  other.join();
  EXPECT_EQ(list.Count(), 0);
}

}  // namespace
}  // namespace kk
