#pragma once

#include <deque>
#include <utility>

#include "host/base/TMainLoop.h"
#include "host/controls/IFormHost.h"
#include "host/controls/TForm.h"

namespace kk {

/// A main loop and a user who closes each window, for what needs both.
class TFuzzHost : public TMainLoop, public IFormHost {
 public:
  TFuzzHost() {
    SetMainLoop(this);
    SetFormHost(this);
  }
  ~TFuzzHost() override {
    SetFormHost(nullptr);
    SetMainLoop(nullptr);
  }

  void Post(TFunction iFunction) override { FPosted.push_back(std::move(iFunction)); }
  void Synchronize(TFunction iFunction) override { iFunction(); }
  void ProcessMessages() override {
    for (; !FPosted.empty(); FPosted.pop_front()) std::exchange(FPosted.front(), nullptr)();
  }
  void WaitForMessage(int) override {}
  TTimerId StartTimer(int, TFunction) override { return 0; }
  void StopTimer(TTimerId) override {}
  bool IsMainThread() const override { return true; }

  void ShowModal(TForm& ioForm) override {
    ioForm.SetModalResult(cModalCancel);
    ioForm.EndModalIfDone();
  }
  bool ShowOpenDialog(TOpenDialog&) override { return false; }

 private:
  std::deque<TFunction> FPosted;
};

}  // namespace kk
