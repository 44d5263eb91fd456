#include "apps/cli/TCliLog.h"

#include "apps/cli/ICliConsole.h"
#include "apps/cli/TerminalText.h"

namespace kk {

TCliLog::TCliLog(ICliConsole& ioConsole) : FConsole(ioConsole), FBefore(SetLogSink(this)) {}

TCliLog::~TCliLog() { SetLogSink(FBefore); }

void TCliLog::Write(TLogLevel iLevel, TStringView iSender, TStringView iText) {
  if (FBefore != nullptr) FBefore->Write(iLevel, iSender, iText);
  if (iLevel != TLogLevel::llError && iLevel != TLogLevel::llException) return;
  FHasErrors = true;
  FConsole.Complain(Format(u"Fehler: %s", {ForTerminal(iText)}));
}

}  // namespace kk
