#include "apps/cli/TCliCaller.h"

#include <filesystem>
#include <system_error>

#include "apps/cli/TCliCommands.h"
#include "apps/cli/TerminalText.h"
#include "host/base/Guard.h"
#include "host/base/TInstalled.h"

namespace kk {
namespace {

namespace fs = std::filesystem;

/// Paths of the caller start in his folder. Everything that belongs to this process has full paths.
class TInFolder {
 public:
  explicit TInFolder(TStringView iFolder) : FBefore(fs::current_path()) {
    std::error_code error;
    if (!iFolder.empty()) fs::current_path(ToUtf8(iFolder), error);
    if (!error) return;
    throw Exception(Format(u"\"kaufkobolde-cli run\" kommt nicht in den Ordner dieses Aufrufs: %s",
                           {ForTerminal(iFolder)}));
  }
  ~TInFolder() {
    Guarded(u"TCliCaller", [this] { fs::current_path(FBefore); });
  }
  TInFolder(const TInFolder&) = delete;
  TInFolder& operator=(const TInFolder&) = delete;

 private:
  const fs::path FBefore;
};

}  // namespace

void TCliCaller::Execute() {
  if (!FPeer.Begin()) return;
  const TCliExit exit = Answered(FConsole, [this] { return Run(); });
  FPeer.SendExit(static_cast<int>(exit));
}

TCliExit TCliCaller::Run() {
  if (FPeer.Call().Version != TCliMessage::cVersion) {
    throw Exception(
        u"\"kaufkobolde-cli run\" ist von einer anderen Version. Bitte neu starten: systemctl "
        u"--user restart kaufkobolde");
  }
  const TCliArguments call = TCliArguments::Parse(FPeer.Call().Words);
  Check(call);
  if (call.Verbose) {
    FConsole.Complain(u"Hinweis: Das Protokoll zeigt nur \"kaufkobolde-cli run\" selbst.");
  }
  const TInFolder folder(FPeer.Call().Folder);
  const TCliLog::TTelling telling(FLog, FConsole);
  const bool done = Run(call);
  const bool saved = !TCliCommands::ChangesList(call) || FHost.Plugins.List().Save();
  return done && saved && !telling.HasErrors() ? TCliExit::ceDone : TCliExit::ceFailed;
}

// What is a matter of the start of this process.
void TCliCaller::Check(const TCliArguments& iCall) const {
  if (iCall.IsCommand(u"run")) throw Exception(u"\"kaufkobolde-cli run\" läuft hier schon.");
  if (iCall.RestoreBackup) {
    throw Exception(u"--restore-backup geht nur, solange \"kaufkobolde-cli run\" nicht läuft.");
  }
}

// A command that fails halfway leaves its changes behind, and they are saved as well.
bool TCliCaller::Run(const TCliArguments& iCall) {
  TCliFormHost forms(FConsole);
  forms.SetYesToAll(iCall.Yes);
  const TInstalled<IFormHost> installed(&SetFormHost, &forms);
  TCliContext context{FConsole, forms, FHost.Plugins, nullptr};
  return TCliCommands::Run(context, iCall);
}

}  // namespace kk
