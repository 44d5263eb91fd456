#include "apps/cli/TCliSession.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "apps/cli/TCliRun.h"
#include "apps/cli/TerminalText.h"
#include "host/base/Exception.h"
#include "host/common/TDataFileGuard.h"
#include "host/common/TFileHelper.h"

namespace kk {
namespace {

namespace fs = std::filesystem;

constexpr TStringView cDataFileName = u"watchlist.dat";
constexpr TStringView cIniFileName = u"/kaufkobolde.ini";
constexpr char cPackagesVariable[] = "KAUFKOBOLDE_PLUGINS";
constexpr char cPackagesFolder[] = "../lib/kaufkobolde";
constexpr int cTurnMs = 50;
constexpr auto cLongestEnd = std::chrono::seconds(10);

// The first step of all: from here on everybody knows where things lie.
const TString& InstallFolders(const TCliArguments& iCall) {
  SetHostFolders(DefaultHostFolders(iCall.Data));
  return HostFolders().Data;
}

TString DataFileName() { return TFileHelper::GetAppDataFileName(cDataFileName); }

TString PackagesFolder() {
  const char* const named = std::getenv(cPackagesVariable);
  if (named != nullptr && named[0] != '\0') return FromUtf8(named);
  const fs::path program = fs::read_symlink("/proc/self/exe").parent_path();
  return FromUtf8((program / cPackagesFolder).lexically_normal().string());
}

}  // namespace

TCliSession::TCliSession(ICliConsole& ioConsole, const TCliArguments& iCall)
    : FConsole(ioConsole),
      FRestoreBackup(iCall.RestoreBackup),
      FLock(InstallFolders(iCall)),
      FLogFile(DefaultLogFileName(), iCall.Verbose),
      FLogInstalled(&SetLogSink, &FLogFile),
      FIniFile(HostFolders().Config + TString(cIniFileName)),
      FIniFileInstalled(&SetIniFile, &FIniFile),
      FLoopInstalled(&SetMainLoop, &FLoop),
      FForms(ioConsole),
      FFormsInstalled(&SetFormHost, &FForms),
      FPopUps(ioConsole),
      FDeliveries([this](const TNotification& iNotification) { FPopUps.Show(iNotification); }),
      FContext{ioConsole, FForms, FPlugins, &FDeliveries} {
  FForms.SetYesToAll(iCall.Yes);
  LoadPackages();
}

TCliSession::~TCliSession() { End(); }

void TCliSession::LoadPackages() {
  FLoader.LoadFolder(PackagesFolder());
  for (const TRefusedPackage& package : FLoader.Refused()) {
    FConsole.Complain(Format(u"Hinweis: Das Paket %s wird nicht geladen: %s",
                             {ForTerminal(package.FileName), ForTerminal(package.Reason)}));
  }
  FPlugins.Find();
  FLog.emplace(FConsole);
}

void TCliSession::GuardData() {
  const TString fileName = DataFileName();
  const TDataFileGuard guard(fileName);
  if (guard.BackupToRestore()) {
    if (!FRestoreBackup) {
      throw Exception(
          Format(u"Die Beobachtenliste %s fehlt, ihre Sicherung ist noch da. Mit "
                 u"--restore-backup wird sie wiederhergestellt.",
                 {fileName}));
    }
    guard.RestoreBackup();
    FConsole.Complain(u"Die Beobachtenliste ist aus ihrer Sicherung wiederhergestellt.");
  } else if (FRestoreBackup) {
    FConsole.Complain(u"Hinweis: Es gibt nichts wiederherzustellen.");
  }
  const TString damage = guard.PutAsideIfDamaged();
  if (damage.empty()) return;
  for (const TString& line : Split(damage, u'\n')) FConsole.Complain(Trim(ForTerminal(line)));
}

// A save that fails has made the file its backup before.
void TCliSession::TellOfBackup() {
  if (!FStarted || !TDataFileGuard(DataFileName()).BackupToRestore()) return;
  FConsole.Complain(
      u"Der zuletzt gespeicherte Stand liegt in der Sicherung. Mit --restore-backup "
      u"wird er wiederhergestellt.");
}

void TCliSession::Start() {
  if (!FPlugins.HasWatchlist()) {
    throw Exception(
        Format(u"Die Beobachtenliste (libwatchlist.so) ist nicht geladen. Gesucht wurde in %s.",
               {PackagesFolder()}));
  }
  GuardData();
  FStarted = true;
  FPlugins.Initialize();
}

void TCliSession::Stay() {
  FStays = true;
  FPlugins.DeliverReminders([this](const TForm& iForm) { FPopUps.Show(iForm); });
  FDeliveries.StartOutbox();
  Start();
  TCliRun(FContext, *FLog, HostFolders().Data).Run();
}

void TCliSession::End() {
  if (!FLog) return;
  // Once the plug-ins, which turn the loop while they wait, were asked to end: a delivery that is
  // cut off before that would be followed by the next one, which would fail, and be gone.
  FLoop.Post([this] { FDeliveries.Stop(); });
  FPlugins.TerminateThreads();
  FDeliveries.Stop();
  const auto last = std::chrono::steady_clock::now() + cLongestEnd;
  while (FPlugins.ThreadCount() > 0 && std::chrono::steady_clock::now() < last) {
    FLoop.ProcessMessages();
    FLoop.WaitForMessage(cTurnMs);
  }
  if (FStays) FLog->ForgetErrors();
  FPlugins.Uninitialize();
  // What still waits here comes too late for everybody, but its code lies in the packages.
  FLoop.ProcessMessages();
  TellOfBackup();
  FHasErrors = FLog->HasErrors();
  FLog.reset();
  if (FStarted) return FLoader.Unload();
  // A watch list that was never started can't be ended either and keeps its package in memory.
  // That is no failure, so the loader's own end tells it to nobody.
  SetLogSink(nullptr);
}

}  // namespace kk
