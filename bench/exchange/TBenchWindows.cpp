#include "bench/exchange/TBenchWindows.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "host/controls/TfrmMessageDlg.h"
#include "persistence/exchange/TfrmKKWatchlistImport.h"

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

void TBenchWindows::Begin() { FLast = Moment(); }

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
  ProcessMessages();
  if (auto* const import = dynamic_cast<TfrmKKWatchlistImport*>(&ioForm)) import->btnOK.Click();
  if (auto* const box = dynamic_cast<TfrmMessageDlg*>(&ioForm)) box->Close();
  while (!ioForm.EndModalIfDone()) ProcessMessages();
}

}  // namespace kk
