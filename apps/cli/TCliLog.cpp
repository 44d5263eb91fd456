#include "apps/cli/TCliLog.h"

#include <utility>

#include "apps/cli/ICliConsole.h"
#include "apps/cli/TerminalText.h"
#include "host/base/TClock.h"
#include "host/base/TMainLoop.h"

namespace kk {
namespace {

// The reminders' own steps, and the end of a message that had to wait.
bool IsOfDelivery(TStringView iSender) {
  return StartsWith(iSender, u"Watchlist-Reminder") || iSender == u"E-Mail-Postausgang";
}

bool IsMainThread() { return !HasMainLoop() || MainLoop().IsMainThread(); }

// Whether this thread delivers reminders, whatever it logs: the first thing that it says tells it.
thread_local bool gDelivers = false;
thread_local TCliLog::TKeeping* gKeeping = nullptr;
// What is delivered on the main thread.
constexpr TStringView cSenderOfPopUps = u"Watchlist-Reminder (Window)";

}  // namespace

TCliLog::TCliLog(ICliConsole& ioConsole) : FConsole(ioConsole), FBefore(SetLogSink(this)) {}

TCliLog::~TCliLog() { SetLogSink(FBefore); }

void TCliLog::Write(TLogLevel iLevel, TStringView iSender, TStringView iText) {
  if (FBefore != nullptr) FBefore->Write(iLevel, iSender, iText);
  if (IsOfDelivery(iSender) && !IsMainThread()) gDelivers = true;
  const bool isError = iLevel == TLogLevel::llError || iLevel == TLogLevel::llException;
  const bool isStep = FFollows && iLevel == TLogLevel::llInfo && IsOfDelivery(iSender);
  if (isStep) Tell(iSender, iText);
  if (!isError) return;
  FHasErrors = true;
  const bool isCommands = !gDelivers && iSender != cSenderOfPopUps;
  if (isCommands) FailCaller();
  const TString text = ForTerminal(iText);
  if (isCommands && gKeeping != nullptr) {
    gKeeping->FErrors.push_back({this, text});
  } else {
    TellError(text, isCommands);
  }
}

void TCliLog::Tell(TStringView iWhat, TStringView iText) {
  const TString when = FFollows ? DateTimeToStr(Now()) + u" " : TString();
  FConsole.Complain(Format(u"%s%s: %s", {when, ForTerminal(iWhat), ForTerminal(iText)}));
}

void TCliLog::TellError(TStringView iText, bool iIsCommands) {
  if (iIsCommands) {
    const std::lock_guard lock(FMutex);
    if (FCaller != nullptr) FCaller->Complain(Format(u"Fehler: %s", {iText}));
  }
  Tell(u"Fehler", iText);
}

void TCliLog::FailCaller() {
  const std::lock_guard lock(FMutex);
  FCallerHasErrors = true;
}

TCliLog::TKeeping::TKeeping() : FBefore(std::exchange(gKeeping, this)) {}

TCliLog::TKeeping::~TKeeping() {
  gKeeping = FBefore;
  for (const TError& error : FErrors) error.Log->TellError(error.Text, true);
}

void TCliLog::TKeeping::Told(TStringView iText) {
  std::erase_if(FErrors,
                [&](const TError& iError) { return iText.find(iError.Text) != iText.npos; });
}

TString TCliLog::TKeeping::Take() {
  if (FErrors.empty()) return {};
  const TString text = FErrors.front().Text;
  FErrors.erase(FErrors.begin());
  return text;
}

TCliLog::TTelling::TTelling(TCliLog& ioLog, ICliConsole& ioConsole) : FLog(ioLog) {
  const std::lock_guard lock(FLog.FMutex);
  FLog.FCaller = &ioConsole;
  FLog.FCallerHasErrors = false;
}

TCliLog::TTelling::~TTelling() {
  const std::lock_guard lock(FLog.FMutex);
  FLog.FCaller = nullptr;
}

bool TCliLog::TTelling::HasErrors() const {
  const std::lock_guard lock(FLog.FMutex);
  return FLog.FCallerHasErrors;
}

}  // namespace kk
