#pragma once

#include <deque>

#include "host/base/TMainLoop.h"
#include "host/controls/IFormHost.h"

namespace kk {

/// A main loop and windows without a screen, before which a user says OK to everything. It notes
/// the longest time between two turns, in which nothing would answer him.
class TBenchWindows : public TMainLoop, public IFormHost {
 public:
  TBenchWindows();
  ~TBenchWindows() override;

  void Post(TFunction iFunction) override { FPosted.push_back(std::move(iFunction)); }
  void Synchronize(TFunction iFunction) override { iFunction(); }
  void ProcessMessages() override;
  void WaitForMessage(int) override {}
  TTimerId StartTimer(int, TFunction) override { return 0; }
  void StopTimer(TTimerId) override {}
  bool IsMainThread() const override { return true; }

  void ShowModal(TForm& ioForm) override;
  bool ShowOpenDialog(TOpenDialog&) override { return false; }

  /// The user begins something: what comes before does not count.
  void Begin();
  /// In seconds, from each beginning to the end of the last window.
  double LongestStretch() const { return FLongest; }

 private:
  std::deque<TFunction> FPosted;
  double FLast = 0;
  double FLongest = 0;
  TMainLoop* FLoopBefore;
  IFormHost* FHostBefore;
};

}  // namespace kk
