#include "apps/cli/TCliRun.h"

#include <utility>

#include "apps/cli/TCliCaller.h"
#include "apps/cli/TCliReminderText.h"
#include "apps/cli/TCliReminders.h"
#include "apps/cli/TerminalText.h"
#include "host/base/TMainLoop.h"

namespace kk {
namespace {

using TSteady = std::chrono::steady_clock;

/// Runs a function of the main loop every so often.
class TTicking {
 public:
  TTicking(int iMilliseconds, TMainLoop::TFunction iFunction)
      : FTimer(MainLoop().StartTimer(iMilliseconds, std::move(iFunction))) {}
  ~TTicking() { MainLoop().StopTimer(FTimer); }
  TTicking(const TTicking&) = delete;
  TTicking& operator=(const TTicking&) = delete;

 private:
  const TMainLoop::TTimerId FTimer;
};

// How long a request to end may go unnoticed.
constexpr int cTurnMs = 100;
// Many reminders at once are one walk along the list, and one write of the file.
constexpr auto cBetweenTells = std::chrono::milliseconds(250);
constexpr auto cBetweenSaves = std::chrono::seconds(3);

}  // namespace

void TCliRun::Run() {
  FLog.Follow();
  TCliDue due(FContext);
  THostServer server(FFolder, MainLoop());
  TellWhatStands();
  const TTicking ticking(cTurnMs, [&] { DoTurn(due); });
  while (!MustEnd()) {
    MainLoop().ProcessMessages();
    AnswerCallers(server);
    DoTurn(due);
    MainLoop().WaitForMessage(cTurnMs);
  }
  due.Tell();
  FContext.Console.Print(u"Wird beendet.");
  FContext.Console.Flush();
}

bool TCliRun::MustEnd() { return FEnds || FContext.Console.TakeInterrupt(); }

void TCliRun::AnswerCallers(THostServer& ioServer) {
  while (!FEnds) {
    const auto peer = ioServer.TakeCaller();
    if (!peer) return;
    TCliCaller caller(FContext, FLog, *peer);
    caller.Execute();
    FEnds = caller.HostEnds();
  }
}

void TCliRun::DoTurn(TCliDue& ioDue) {
  Tell(ioDue);
  SaveIfChanged();
  FContext.Console.Flush();
}

void TCliRun::Tell(TCliDue& ioDue) {
  if (!ioDue.HasAny() || TSteady::now() < FNextTell) return;
  ioDue.Tell();
  FNextTell = TSteady::now() + cBetweenTells;
}

void TCliRun::TellWhatStands() {
  ICliConsole& console = FContext.Console;
  const std::vector<TCliReminder> reminders = TCliReminders(FContext).ByTime();
  console.Print(Format(u"Bereit: %s. Strg+C beendet.",
                       {Counted(reminders.size(), u"Erinnerung", u"Erinnerungen")}));
  if (!reminders.empty()) {
    const TCliReminder& next = reminders.front();
    const TString name = next.HasItem ? next.ItemName : GUIDToString(next.Info.Id);
    console.Print(
        Format(u"Die nächste: %s am %s (%s)",
               {ForTerminal(name), DateTimeToStr(next.Info.Time), ReminderWays(next.Info)}));
  }
  console.Flush();
}

// A crash may repeat what was delivered in the last seconds; it never loses what was not.
void TCliRun::SaveIfChanged() {
  IWatchlistAccess& list = FContext.Plugins.List();
  if (TSteady::now() < FNextSave || !list.HasUnsavedReminders()) return;
  FNextSave = TSteady::now() + cBetweenSaves;
  list.Save();
}

}  // namespace kk
