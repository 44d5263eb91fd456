#pragma once

#include <functional>

#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"

namespace kk {

/// The commands "test": one delivery of a kind, now, by the very services that reminders take, and
/// what became of it. They need no list. What goes wrong raises Exception with what to do about it.
/// Main thread.
class TCliTest {
 public:
  /// Borrowed.
  explicit TCliTest(TCliContext& ioContext) : FContext(ioContext) {}

  /// True if the command is one of these.
  static bool Knows(const TCliCommandInfo& iCommand);
  /// False if it was given up by the user.
  bool Run(const TCliArguments& iCall);

 private:
  void Sound(const std::optional<TString>& iFile);
  void Email();
  bool Sms();
  void Calendar();
  void Notifier();
  void WaitFor(const std::function<bool()>& iDone);
  /// The user has given up. Any thread.
  void StopAll();

  void Print(TStringView iLine) { FContext.Console.Print(iLine); }

  TCliContext& FContext;
};

}  // namespace kk
