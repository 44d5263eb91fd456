// How reliable reminders are, measured: how late they come, what happens behind a program that was
// closed, stopped or had its clock changed, and what a way out that hangs holds up.
//
//   reliability lateness [COUNT] [SECONDS] [BUSY PROCESSES]
//   reliability backlog [COUNT]
//   reliability stopped [SECONDS]
//   reliability clock
//   reliability hang

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>

#include "bench/reliability/TReliabilityWorld.h"
#include "bench/reliability/TWayThatHangs.h"
#include "host/common/TFileHelper.h"
#include "host/delivery/TDeliveries.h"
#include "reminders/RemindSms.h"
#include "reminders/TRemindDetailsEMail.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TThreadRemind.h"

namespace kk {
namespace {

double Seconds(TSteady::duration iDuration) {
  return std::chrono::duration<double>(iDuration).count();
}

// A process that does nothing but work; it dies with this one.
void StartBusyProcess() {
  if (fork() != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  volatile uint64_t work = 0;
  while (getppid() != 1) work = work + 1;
  _exit(0);
}

int Lateness(int iCount, int iSeconds, int iBusy) {
  for (int i = 0; i < iBusy; ++i) StartBusyProcess();
  TReliabilityWorld world;
  std::mt19937 random(1);
  std::uniform_int_distribution<int> when(2000, iSeconds * 1000);
  const TDateTime begin = Now();
  for (int i = 0; i < iCount; ++i) world.Add(begin.PlusMs(when(random)));
  world.Start();
  const auto count = static_cast<size_t>(iCount);
  world.RunUntil([&] { return world.Deliveries().size() >= count; }, iSeconds + 30);
  std::vector<int64_t> late;
  for (const TDelivery& delivery : world.Deliveries()) late.push_back(delivery.LateMs);
  std::ranges::sort(late);
  if (late.size() != count) {
    std::printf("only %zu of %zu came\n", late.size(), count);
    return 1;
  }
  std::printf("%d reminders in %d s beside %d busy processes: ", iCount, iSeconds, iBusy);
  std::printf("earliest %lld ms, median %lld ms, p99 %lld ms, latest %lld ms late\n",
              static_cast<long long>(late.front()), static_cast<long long>(late[count / 2]),
              static_cast<long long>(late[count * 99 / 100]), static_cast<long long>(late.back()));
  return late.front() >= 0 ? 0 : 1;
}

int Backlog(int iCount) {
  TReliabilityWorld world;
  std::vector<TGuid> order;
  for (int i = 0; i < iCount; ++i) order.push_back(world.Add(Now().PlusMs(-1000 * (i % 77 + 1))));
  const auto begin = TSteady::now();
  world.Start();
  const auto count = static_cast<size_t>(iCount);
  world.RunUntil([&] { return world.Deliveries().size() >= count; }, 120);
  const auto& came = world.Deliveries();
  const bool inOrder = std::ranges::equal(came, order, {}, &TDelivery::Id);
  auto longest = TSteady::duration::zero();
  for (size_t i = 1; i < came.size(); ++i) longest = std::max(longest, came[i].At - came[i - 1].At);
  std::printf("%zu of %d elapsed reminders handed on in %.3f s, %s, longest pause %.3f s\n",
              came.size(), iCount, Seconds(TSteady::now() - begin),
              inOrder ? "in order" : "NOT IN ORDER", Seconds(longest));
  return inOrder ? 0 : 1;
}

// In the child: reminders that come due every second; the parent stops it in between.
[[noreturn]] void RunStoppedChild(int iSeconds) {
  int result = 1;
  {
    TReliabilityWorld world;
    const TDateTime begin = Now();
    for (int i = 1; i <= iSeconds + 5; ++i) world.Add(begin.PlusMs(1000 * i));
    world.Start();
    const auto count = static_cast<size_t>(iSeconds) + 5;
    world.RunUntil([&] { return world.Deliveries().size() >= count; }, iSeconds + 30);
    world.RunUntil([] { return false; }, 3);  // whatever would fire twice
    std::printf("%zu reminders came due, %zu fired\n", count, world.Deliveries().size());
    result = world.Deliveries().size() == count ? 0 : 1;
  }
  std::fflush(stdout);
  _exit(result);
}

int Stopped(int iSeconds) {
  std::printf("stopped for %d s: ", iSeconds);
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) RunStoppedChild(iSeconds);
  sleep(2);
  kill(child, SIGSTOP);
  sleep(static_cast<unsigned>(iSeconds));
  kill(child, SIGCONT);
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

int Clock() {
  TReliabilityWorld world;
  world.Add(Now().PlusMs(30 * TDateTime::cMsPerMinute));
  world.Start();
  world.RunUntil([] { return false; }, 3);
  const size_t before = world.Deliveries().size();
  world.JumpClock(TDateTime::cMsPerHour);
  const auto begin = TSteady::now();
  world.RunUntil([&] { return !world.Deliveries().empty(); }, 10);
  const double took = Seconds(TSteady::now() - begin);
  const TDateTime due = Now().PlusMs(2000);
  world.Add(due);
  world.JumpClock(-TDateTime::cMsPerHour);
  world.RunUntil([] { return false; }, 5);
  const size_t afterBack = world.Deliveries().size();
  world.JumpClock(TDateTime::cMsPerHour);
  world.RunUntil([&] { return world.Deliveries().size() > afterBack; }, 10);
  world.RunUntil([] { return false; }, 3);
  std::printf(
      "clock an hour forward: %zu before, 1 fired after %.2f s; an hour back: %zu more; forward "
      "again: %zu in all of 2\n",
      before, took, afterBack - 1, world.Deliveries().size());
  return before == 0 && afterBack == 1 && world.Deliveries().size() == 2 ? 0 : 1;
}

/// One way out that hangs: what is asked of it, and by what one sees that it was given up.
struct THang {
  TStringView Name;
  std::function<void(TReliabilityWorld&)> Deliver;
  std::function<bool(TReliabilityWorld&)> IsGivenUp;
};

int Hang(const THang& iHang) {
  TReliabilityWorld world;
  TWayThatHangs way(iHang.Name, world);
  TDeliveries deliveries(
      [&world](const TNotification& iNotification) { world.Recorder().Display(iNotification); });
  world.Start();
  iHang.Deliver(world);
  auto begin = TSteady::now();
  const bool ended = world.RunUntil([&] { return iHang.IsGivenUp(world); }, 120);
  const double took = Seconds(TSteady::now() - begin);
  const int64_t longest = world.TakeLongestTurnMs();
  // The end of the program while the next one hangs. What waits on the main thread itself ends with
  // the window that it waits in.
  iHang.Deliver(world);
  world.RunUntil([] { return false; }, 2);
  begin = TSteady::now();
  deliveries.Stop();
  world.Handler().EndThread();
  const double end = Seconds(TSteady::now() - begin);
  std::printf("%-9s %s after %.1f s, longest turn of the main loop %lld ms, shutdown %.2f s\n",
              ToUtf8(iHang.Name).c_str(), ended ? "given up" : "HANGS", took,
              static_cast<long long>(longest), end);
  std::fflush(stdout);
  return ended && longest <= 50 && end <= 3 ? 0 : 1;
}

// The set-up of a text message is asked for on the main thread, which waits in a window.
int HangSms() {
  TReliabilityWorld world;
  TWayThatHangs way(u"sms", world);
  TDeliveries deliveries({});
  bool done = false;
  const auto send = [&] {
    done = false;
    world.Post([&done] {
      SendRemindSms(u"Text", Now().PlusMs(TDateTime::cMsPerHour));
      done = true;
    });
  };
  send();
  auto begin = TSteady::now();
  const bool ended = world.RunUntil([&] { return done; }, 120);
  const double took = Seconds(TSteady::now() - begin);
  const int64_t longest = world.TakeLongestTurnMs();
  send();
  std::thread stopper([&deliveries] {
    std::this_thread::sleep_for(std::chrono::seconds(2));
    deliveries.Stop();
  });
  begin = TSteady::now() + std::chrono::seconds(2);
  world.RunUntil([&] { return done; }, 120);
  const double end = Seconds(TSteady::now() - begin);
  stopper.join();
  std::printf("sms       %s after %.1f s, longest turn of the main loop %lld ms, shutdown %.2f s\n",
              ended ? "given up" : "HANGS", took, static_cast<long long>(longest), end);
  return ended && longest <= 50 && end <= 3 ? 0 : 1;
}

int HangAll() {
  SetHostFolders(DefaultHostFolders());
  const TString sound = TFileHelper::GetLocalFileName(u"remind.wav");
  const std::vector<THang> hangs = {
      {u"email",
       [](TReliabilityWorld& ioWorld) {
         ioWorld.Add(Now(), std::make_unique<TRemindDetailsEMail>(u"Titel", u"Text", u"Link"));
       },
       [](TReliabilityWorld& ioWorld) { return ioWorld.Logged(u"konnte nicht verschickt") > 0; }},
      {u"sound",
       [&sound](TReliabilityWorld& ioWorld) {
         ioWorld.Add(Now(), std::make_unique<TRemindDetailsSound>(sound));
       },
       [](TReliabilityWorld& ioWorld) {
         return ioWorld.Logged(u"Watchlist-Reminder (Sound)") > 1;
       }},
      {u"notifier", [](TReliabilityWorld& ioWorld) { ioWorld.Add(Now()); },
       [](TReliabilityWorld& ioWorld) { return !ioWorld.Deliveries().empty(); }},
  };
  int failed = 0;
  for (const THang& hang : hangs) failed += Hang(hang);
  return failed + HangSms();
}

int Run(const std::vector<std::string>& iWords) {
  const auto number = [&](size_t iIndex, int iDefault) {
    return iWords.size() > iIndex ? std::atoi(iWords[iIndex].c_str()) : iDefault;
  };
  const std::string what = iWords.empty() ? "" : iWords[0];
  if (what == "lateness") return Lateness(number(1, 500), number(2, 300), number(3, 0));
  if (what == "backlog") return Backlog(number(1, 1000));
  if (what == "stopped") return Stopped(number(1, 60));
  if (what == "clock") return Clock();
  if (what == "hang") return HangAll();
  std::fprintf(stderr, "lateness | backlog | stopped | clock | hang\n");
  return 2;
}

}  // namespace
}  // namespace kk

int main(int iCount, char** iWords) { return kk::Run({iWords + 1, iWords + iCount}); }
