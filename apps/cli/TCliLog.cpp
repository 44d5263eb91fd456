#include "apps/cli/TCliLog.h"

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

}  // namespace

TCliLog::TCliLog(ICliConsole& ioConsole) : FConsole(ioConsole), FBefore(SetLogSink(this)) {}

TCliLog::~TCliLog() { SetLogSink(FBefore); }

void TCliLog::Write(TLogLevel iLevel, TStringView iSender, TStringView iText) {
  if (FBefore != nullptr) FBefore->Write(iLevel, iSender, iText);
  const bool isError = iLevel == TLogLevel::llError || iLevel == TLogLevel::llException;
  const bool isStep = FFollows && iLevel == TLogLevel::llInfo && IsOfDelivery(iSender);
  if (isError) FHasErrors = true;
  if (!isError && !isStep) return;
  if (isError) TellCaller(iSender, iText);
  const TString when = FFollows ? DateTimeToStr(Now()) + u" " : TString();
  const TString what = isError ? TString(u"Fehler") : ForTerminal(iSender);
  FConsole.Complain(Format(u"%s%s: %s", {when, what, ForTerminal(iText)}));
  // Behind the line: who counts finds it told.
  if (isStep) ++FSteps;
}

void TCliLog::TellCaller(TStringView iSender, TStringView iText) {
  // What a command sets up is logged on the main thread.
  if (IsOfDelivery(iSender) && HasMainLoop() && !MainLoop().IsMainThread()) return;
  const std::lock_guard lock(FMutex);
  if (FCaller == nullptr) return;
  FCallerHasErrors = true;
  FCaller->Complain(Format(u"Fehler: %s", {ForTerminal(iText)}));
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
