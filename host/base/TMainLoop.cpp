#include "host/base/TMainLoop.h"

#include <cassert>
#include <utility>

#include "host/base/Exception.h"

namespace kk {

namespace {

TMainLoop* installedLoop = nullptr;

}  // namespace

TMainLoop& MainLoop() {
  if (installedLoop == nullptr) throw Exception(u"Es gibt keine Hauptschleife");
  return *installedLoop;
}

TMainLoop* SetMainLoop(TMainLoop* iLoop) { return std::exchange(installedLoop, iLoop); }

bool HasMainLoop() { return installedLoop != nullptr; }

void AssertMainThread() { assert(installedLoop == nullptr || installedLoop->IsMainThread()); }

}  // namespace kk
