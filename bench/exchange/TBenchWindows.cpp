#include "bench/exchange/TBenchWindows.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "host/controls/TForm.h"

namespace kk {

namespace {

double Moment() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace

TBenchWindows::TBenchWindows() : FLoopBefore(SetMainLoop(this)), FHostBefore(SetFormHost(this)) {}

TBenchWindows::~TBenchWindows() {
  SetFormHost(FHostBefore);
  SetMainLoop(FLoopBefore);
}

void TBenchWindows::ProcessMessages() {
  FLongest = std::max(FLongest, Moment() - FLast);
  for (size_t count = FPosted.size(); count > 0; --count) {
    const TFunction function = std::exchange(FPosted.front(), nullptr);
    FPosted.pop_front();
    function();
  }
  FLast = Moment();
}

void TBenchWindows::ShowModal(TForm& ioForm) {
  FLast = Moment();
  do {
    ProcessMessages();
  } while (!ioForm.EndModalIfDone());
}

}  // namespace kk
