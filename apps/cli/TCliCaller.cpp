#include "apps/cli/TCliCaller.h"

#include <filesystem>
#include <system_error>

#include "apps/cli/TCliCommands.h"
#include "apps/cli/TerminalText.h"
#include "host/base/Guard.h"
#include "host/base/TInstalled.h"
#include "host/common/TFileHelper.h"

namespace kk {
namespace {

namespace fs = std::filesystem;

/// Paths of the caller start in his folder. Everything that belongs to this process has full paths.
class TInFolder {
 public:
  TInFolder(TStringView iFolder, TStringView iName) : FBefore(fs::current_path()) {
    std::error_code error;
    if (!iFolder.empty()) fs::current_path(ToUtf8(iFolder), error);
    if (!error) return;
    throw Exception(
        Format(u"%s kommt nicht in den Ordner dieses Aufrufs: %s", {iName, ForTerminal(iFolder)}));
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
  CheckKind();
  const TCliArguments call = TCliArguments::Parse(FPeer.Call().Words);
  Check(call);
  if (call.Verbose) {
    FConsole.Complain(Format(u"Hinweis: Das Protokoll zeigt nur %s selbst.", {Name()}));
  }
  const TInFolder folder(FPeer.Call().Folder, Name());
  const TCliLog::TTelling telling(FLog, FConsole);
  const bool done = Run(call);
  const bool saved = !TCliCommands::ChangesList(call) || FContext.Plugins.List().Save();
  return done && saved && !telling.HasErrors() ? TCliExit::ceDone : TCliExit::ceFailed;
}

TString TCliCaller::Name() const {
  return FHost == TCliHost::chRun ? u"\"kaufkobolde-cli run\"" : u"Kaufkobolde";
}

void TCliCaller::CheckKind() const {
  if (FPeer.Call().Version != THostMessage::cVersion) {
    const TStringView how =
        FHost == TCliHost::chRun ? u": systemctl --user restart kaufkobolde" : u".";
    throw Exception(
        Format(u"%s ist von einer anderen Version. Bitte neu starten%s", {Name(), how}));
  }
  if (FPeer.Call().Kind == THostMessage::TKind::Call) return;
  throw Exception(Format(
      u"Die Beobachtenliste in \"%s\" ist schon in %s offen. Bitte dieses zuerst beenden; wenn "
      u"es als Dienst läuft: systemctl --user stop kaufkobolde",
      {HostFolders().Data, Name()}));
}

// What is a matter of the start of this process.
void TCliCaller::Check(const TCliArguments& iCall) const {
  if (iCall.IsCommand(u"run")) {
    const TStringView text =
        FHost == TCliHost::chRun
            ? u"%s läuft für \"%s\" schon."
            : u"%s ist für \"%s\" geöffnet und meldet die Erinnerungen selbst.";
    throw Exception(Format(text, {Name(), ForTerminal(HostFolders().Data)}));
  }
  if (iCall.RestoreBackup) {
    throw Exception(Format(u"--restore-backup geht nur, solange %s nicht läuft.", {Name()}));
  }
}

// A command that fails halfway leaves its changes behind, and they are saved as well.
bool TCliCaller::Run(const TCliArguments& iCall) {
  TCliFormHost forms(FConsole);
  forms.SetYesToAll(iCall.Yes);
  const TInstalled<IFormHost> installed(&SetFormHost, &forms);
  TCliContext context{FConsole, forms, FContext.Plugins, nullptr};
  return TCliCommands::Run(context, iCall);
}

}  // namespace kk
