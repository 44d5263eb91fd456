#include "apps/cli/TCliCalls.h"

#include "apps/cli/TCliCaller.h"

namespace kk {

TCliCalls::TCliCalls(THostPlugins& ioPlugins)
    : FContext{FConsole, FForms, ioPlugins, nullptr}, FLog(FConsole) {}

void TCliCalls::Answer(THostPeer& ioPeer) {
  FConsole.Interrupts = false;
  FIsAnswering = true;
  TCliCaller(FContext, FLog, ioPeer, TCliHost::chWindow).Execute();
  FIsAnswering = false;
}

void TCliCalls::Interrupt() { FConsole.Interrupts = true; }

}  // namespace kk
