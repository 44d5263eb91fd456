#pragma once

#include "host/contract/IPlugin.h"

namespace kk {

/// A plug-in with work under way that the host waits for at the end. Main thread.
class IMultiThreadPlugin : public IPlugin {
 public:
  using TParent = IPlugin;
  static constexpr TGuid cIid = GuidLiteral("{2A1DDBC8-8A8D-43E0-8679-ACC0D06F9BBC}");

  /// How many pieces of work are under way.
  virtual int ThreadCount() const = 0;
  /// Tells them to end; does not wait for them, the reminder thread aside.
  virtual void TerminateThreads() = 0;
};

}  // namespace kk
