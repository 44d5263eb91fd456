#include <gtest/gtest.h>

#include <map>
#include <random>

#include "TThreadWorld.h"
#include "host/base/TStream.h"

namespace kk {
namespace {

// The main thread adds, deletes, saves and reads while the thread fires. What is not taken out of
// the list before it fires is delivered once, and the rest never.
TEST(TThreadRemindStress, EachReminderIsEitherTakenOutOrDeliveredOnce) {
  TThreadWorld world;
  std::mt19937 random(20261120);  // NOLINT: the same for each run
  std::map<TGuid, std::string> live;
  std::map<std::string, int> expected;
  world.Start();
  for (int round = 0; round < 400; ++round) {
    for (int i = 0; i < 3; ++i) {
      const std::string name = std::to_string(round) + "." + std::to_string(i);
      auto item = world.Reminder(world.Window(FromUtf8(name)));
      if (i == 0) item->LstDetails().Add(world.Sound());
      item->SetRemindTime(world.Clock.Now().PlusMs(static_cast<int>(random() % 3000) - 1000));
      item->SetRemindTypes({rtWindow});
      live[item->Id()] = name;
      expected["notifier " + name] = 1;
      world.Lst().Add(std::move(item));
    }
    const auto victim = std::next(live.begin(), static_cast<long>(random() % live.size()));
    (void)world.Lst().RemindTypesBySearchResultId(victim->first);
    (void)world.Lst().CloneItemBySearchResultId(victim->first);
    if (world.Lst().ExtractBySearchResultId(victim->first) != nullptr) {
      expected.erase("notifier " + victim->second);
    }
    live.erase(victim);
    if (round % 7 == 0) {
      TMemoryStream stream;
      world.Handler.SaveToStream(stream);
    }
    if (round % 3 == 0) world.Clock.Advance(500);
    world.Loop.ProcessMessages();
  }
  world.UntilAsleep();
  for (int second = 0; second < 3; ++second) world.NextPoll();
  EXPECT_EQ(world.Lst().Count(), 0);
  world.End();

  std::map<std::string, int> delivered;
  for (const std::string& note : world.Witness.Notes()) {
    if (note != "sound a.wav") ++delivered[note];
  }
  EXPECT_GT(delivered.size(), 400u);
  EXPECT_EQ(delivered, expected);
}

// The end comes while the thread is in the middle of a backlog, at a place that differs each time.
TEST(TThreadRemindStress, TheEndComesAtAnyPlace) {
  for (int place = 0; place < 50; ++place) {
    TThreadWorld world;
    for (int i = 0; i < 20; ++i) {
      world.Lst().Add(world.Reminder(world.Sound(), world.Window(IntToStr(i))));
    }
    world.Start();
    for (int turn = 0; turn < place; ++turn) world.Loop.ProcessMessages();
    world.End();
    const int left = world.Lst().Count();
    int windows = 0;
    for (const std::string& note : world.Witness.Notes()) windows += note != "sound a.wav";
    // At most one reminder is lost or left half delivered.
    EXPECT_LE(windows + left, 20);
    EXPECT_GE(windows + left, 19);
  }
}

}  // namespace
}  // namespace kk
