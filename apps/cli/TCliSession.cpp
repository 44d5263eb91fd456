#include "apps/cli/TCliSession.h"

#include "apps/cli/TCliRun.h"
#include "apps/cli/TerminalText.h"
#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"

namespace kk {

TCliSession::TCliSession(ICliConsole& ioConsole, const TCliArguments& iCall)
    : FConsole(ioConsole),
      FRestoreBackup(iCall.RestoreBackup),
      FServices({iCall.Data, iCall.Verbose}),
      FLoopInstalled(&SetMainLoop, &FLoop),
      FForms(ioConsole),
      FFormsInstalled(&SetFormHost, &FForms),
      FPopUps(ioConsole),
      FHost([this](const TNotification& iNotification) { FPopUps.Show(iNotification); }),
      FContext{ioConsole, FForms, FHost.Plugins(), &FHost.Deliveries()} {
  FForms.SetYesToAll(iCall.Yes);
  for (const TRefusedPackage& package : FHost.RefusedPackages()) {
    FConsole.Complain(Format(u"Hinweis: Das Paket %s wird nicht geladen: %s",
                             {ForTerminal(package.FileName), ForTerminal(package.Reason)}));
  }
  FLog.emplace(FConsole);
}

TCliSession::~TCliSession() { End(); }

void TCliSession::GuardData() {
  const TDataFileGuard guard = FServices.DataGuard();
  bool isRestored = false;
  const auto restore = [&] {
    guard.RestoreBackup();
    FConsole.Complain(u"Die Beobachtenliste ist aus ihrer Sicherung wiederhergestellt.");
    isRestored = true;
  };
  if (guard.BackupToRestore()) {
    if (!FRestoreBackup) {
      throw Exception(
          Format(u"Die Beobachtenliste %s fehlt, ihre Sicherung ist noch da. Mit "
                 u"--restore-backup wird sie wiederhergestellt.",
                 {guard.FileName()}));
    }
    restore();
  }
  if (const TString damage = guard.PutAsideIfDamaged(); !damage.empty()) {
    for (const TString& line : Split(damage, u'\n')) FConsole.Complain(Trim(ForTerminal(line)));
    if (guard.IsBackupSound()) {
      // An empty list would begin, and its first save would make the damaged file the backup.
      if (!FRestoreBackup) {
        throw Exception(
            u"Ihre Sicherung ist lesbar. Mit --restore-backup wird der Stand vor dem letzten "
            u"Speichern wiederhergestellt.");
      }
      restore();
    }
  }
  if (FRestoreBackup && !isRestored) {
    FConsole.Complain(u"Hinweis: Es gibt nichts wiederherzustellen.");
  }
}

// A save that fails has made the file its backup before.
void TCliSession::TellOfBackup() {
  if (!FHost.HasStarted() || !FServices.DataGuard().BackupToRestore()) return;
  FConsole.Complain(
      u"Der zuletzt gespeicherte Stand liegt in der Sicherung. Mit --restore-backup "
      u"wird er wiederhergestellt.");
}

void TCliSession::Begin(TCliApplication::TShowPopUp iShow) {
  if (FHost.Plugins().HasWatchlist()) GuardData();
  FHost.Start(MakeIntf<TCliApplication>(std::move(iShow)));
  if (FHost.Plugins().HasList()) return;
  throw Exception(u"Diese Beobachtenliste lässt sich im Terminal nicht bedienen");
}

void TCliSession::Start() { Begin({}); }

void TCliSession::Stay() {
  FStays = true;
  FHost.Deliveries().StartOutbox();
  Begin([this](const TForm& iForm) { FPopUps.Show(iForm); });
  TCliRun(FContext, *FLog, HostFolders().Data).Run();
}

void TCliSession::End() {
  if (!FLog) return;
  FHost.EndWork();
  if (FStays) FLog->ForgetErrors();
  FHost.Uninitialize();
  TellOfBackup();
  FHasErrors = FLog->HasErrors();
  FLog.reset();
  FHost.Unload();
}

}  // namespace kk
