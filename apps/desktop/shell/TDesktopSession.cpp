#include "apps/desktop/shell/TDesktopSession.h"

#include <QApplication>
#include <QSessionManager>
#include <utility>

#include "apps/desktop/shell/TLoggedErrors.h"
#include "host/base/Guard.h"
#include "host/common/TFileHelper.h"
#include "host/controls/TfrmMessageDlg.h"

namespace kk {
namespace {

// A window that nobody sees, on another desktop for example, is never painted.
constexpr int cLongestPaintMs = 500;
constexpr int cBetweenSavesMs = 3000;
constexpr int cBetweenLooksMs = 200;
// A dialog that is still there then wants the user to decide something first.
constexpr int cMaxTries = 3;

void TellProblem(TStringView iProblem) {
  MessageDlg(Format(u"Beim Beenden ging etwas schief, vielleicht ist die Beobachtenliste nicht "
                    u"gespeichert:\n\n%s",
                    {iProblem}),
             TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
}

}  // namespace

TDesktopSession::TDesktopSession(TDesktopArguments iCall, THostServices& ioServices,
                                 TTrayIcon& ioTray)
    : FCall(std::move(iCall)),
      FServices(ioServices),
      FDesktop(std::in_place, ioTray),
      FApplication(MakeIntf<TDesktopApplication>(*FDesktop)),
      FCalls(std::in_place, *FDesktop),
      FSystemEnd([this] { RequestSystemEnd(); }) {
  QApplication::setQuitOnLastWindowClosed(false);
  FDesktop->SetOnQuit([this] { RequestEnd(); });
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, &FDesktop->Window(),
                   [this](QSessionManager&) {
                     Guarded(u"TDesktopSession.commitDataRequest", [this] { Save(); });
                   });
}

TDesktopSession::~TDesktopSession() {
  FIsSystemEnd = true;
  Guarded(u"TDesktopSession", [this] { End(); });
}

TDesktopExit TDesktopSession::Run() {
  Open();
  if (!FMustEnd) QApplication::exec();
  return End();
}

void TDesktopSession::Open() {
  FCalls->Listen();
  FCalls->Add(std::move(FCall));
  const auto start = [this] {
    if (FStartTimer == 0) return;
    FLoop.StopTimer(std::exchange(FStartTimer, 0));
    Start();
  };
  FStartTimer = FLoop.StartTimer(cLongestPaintMs, start);
  FDesktop->Window().SetOnPainted(start);
  FDesktop->Open();
  if (!FDesktop->Window().isVisible()) FLoop.Post(start);
}

void TDesktopSession::Start() {
  try {
    StartOrRaise();
  } catch (const std::exception& e) {
    LogException(u"Host", e);
    FExit = TDesktopExit::deFailed;
    if (!FIsSystemEnd) MessageDlg(MessageOf(e), TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
    Leave();
  }
}

void TDesktopSession::StartOrRaise() {
  if (!GuardData()) return Leave();
  if (FMustEnd) return;
  FHost.emplace(
      [this](const TNotification& iNotification) { FDesktop->PopUps().Show(iNotification); });
  FCalls->Prepare(FHost->Plugins());
  TellRefusedPackages();
  if (FMustEnd) return;
  FHost->Start(FApplication);
  FHost->Deliveries().StartOutbox();
  FDesktop->Begin(FHost->Plugins(), FApplication);
  FSaveTimer = FLoop.StartTimer(cBetweenSavesMs, [this] { SaveReminders(); });
  FCalls->Go();
}

bool TDesktopSession::GuardData() {
  const TDataFileGuard guard = FServices.DataGuard();
  return GuardMissing(guard) && GuardDamaged(guard);
}

bool TDesktopSession::GuardMissing(const TDataFileGuard& iGuard) {
  if (!iGuard.BackupToRestore()) return true;
  const int answer = MessageDlg(
      u"Die Beobachtenliste fehlt, ihre Sicherung ist noch da. Soll sie wiederhergestellt "
      u"werden?\n\n"
      u"Mit \"Nein\" beginnen Sie mit einer leeren Liste. Die Sicherung bleibt auch dann als "
      u"Kopie liegen.",
      TMsgDlgType::mtConfirmation, {TMsgDlgBtn::mbYes, TMsgDlgBtn::mbNo, TMsgDlgBtn::mbCancel});
  if (answer == cModalYes) {
    iGuard.RestoreBackup();
  } else if (answer != cModalNo) {
    return false;
  } else if (PutAside(iGuard.BackupName()).empty()) {
    throw Exception(
        u"Von der Sicherung lässt sich keine Kopie anlegen. Das Programm beginnt "
        u"nicht, damit sie nicht verloren geht.");
  }
  return true;
}

bool TDesktopSession::GuardDamaged(const TDataFileGuard& iGuard) {
  const TString damage = Trim(iGuard.PutAsideIfDamaged());
  if (damage.empty()) return true;
  if (PutAside(iGuard.FileName()).empty()) {
    // Two saves later nothing would be left of it. Return presses the first button.
    const int answer = MessageDlg(
        damage +
            u"\n\nSoll das Programm trotzdem beginnen, mit einer leeren Liste? Die nächsten "
            u"Male, dass es sie speichert, ersetzen die Datei und ihre Sicherung.",
        TMsgDlgType::mtWarning, {TMsgDlgBtn::mbNo, TMsgDlgBtn::mbYes});
    return answer == cModalYes;
  }
  if (!iGuard.IsBackupSound()) {
    MessageDlg(damage, TMsgDlgType::mtWarning, {TMsgDlgBtn::mbOK});
    return true;
  }
  const int answer = MessageDlg(
      damage +
          u"\n\nSoll der Stand vor dem letzten Speichern wiederhergestellt werden?\n\n"
          u"Mit \"Nein\" beginnen Sie mit einer leeren Liste. Die Kopien bleiben in jedem "
          u"Fall liegen.",
      TMsgDlgType::mtWarning, {TMsgDlgBtn::mbYes, TMsgDlgBtn::mbNo, TMsgDlgBtn::mbCancel});
  if (answer == cModalYes) iGuard.RestoreBackup();
  return answer == cModalYes || answer == cModalNo;
}

void TDesktopSession::TellRefusedPackages() {
  TString text;
  for (const TRefusedPackage& package : FHost->RefusedPackages()) {
    text += Format(u"\n\n%s: %s", {package.FileName, package.Reason});
  }
  if (text.empty()) return;
  MessageDlg(u"Diese Pakete werden nicht geladen:" + text, TMsgDlgType::mtWarning,
             {TMsgDlgBtn::mbOK});
}

void TDesktopSession::Save() {
  if (IsRunning() && FHost->Plugins().HasList()) FHost->Plugins().List().Save();
}

// A crash may repeat what was delivered in the last seconds; it never loses what was not.
void TDesktopSession::SaveReminders() {
  if (!IsRunning() || !FHost->Plugins().HasList()) return;
  if (FHost->Plugins().List().HasUnsavedReminders()) FHost->Plugins().List().Save();
}

void TDesktopSession::RequestEnd() {
  if (FEndTimer != 0 || FMustEnd) return;
  FClosing = nullptr;
  FCalls->SetIsEnding(true);
  FEndTimer = FLoop.StartTimer(cBetweenLooksMs, [this] { GoOnToEnd(); });
  GoOnToEnd();
}

void TDesktopSession::RequestSystemEnd() {
  FIsSystemEnd = true;
  // Should a dialog keep the program longer than the system waits.
  if (QApplication::activeModalWidget() != nullptr) {
    Guarded(u"TDesktopSession.RequestSystemEnd", [this] { Save(); });
  }
  RequestEnd();
}

// One dialog at a time, from the loop: what shows one returns before the one behind it can end.
void TDesktopSession::GoOnToEnd() {
  while (QWidget* const menu = QApplication::activePopupWidget()) {
    if (!menu->close()) break;
  }
  QWidget* const dialog = QApplication::activeModalWidget();
  if (dialog == nullptr) return FCalls->IsAnswering() ? void() : LeaveIfSafe();
  if (dialog != FClosing) {
    FClosing = dialog;
    FTries = 0;
  }
  if (++FTries > cMaxTries && !FIsSystemEnd) {
    return StayHere();
  }
  dialog->close();
}

void TDesktopSession::LeaveIfSafe() {
  if (FIsSystemEnd || !IsRunning() || !FHost->Plugins().HasList()) return Leave();
  TString problem;
  try {
    FServices.DataGuard().CheckRoom();
    return Leave();
  } catch (const EInOutError& e) {
    problem = e.Message();
  }
  FLoop.StopTimer(std::exchange(FEndTimer, 0));  // it would close the question
  const int answer = MessageDlg(
      Format(
          u"Die Beobachtenliste lässt sich zurzeit nicht speichern:\n\n%s\n\nSoll das Programm "
          u"trotzdem enden? Was sich seit dem letzten Speichern geändert hat, geht dann verloren.",
          {problem}),
      TMsgDlgType::mtWarning, {TMsgDlgBtn::mbNo, TMsgDlgBtn::mbYes});
  if (answer == cModalYes) return Leave();
  // The system may want the end meanwhile.
  if (!FIsSystemEnd) StayHere();
}

void TDesktopSession::StayHere() {
  if (FEndTimer != 0) FLoop.StopTimer(std::exchange(FEndTimer, 0));
  FCalls->SetIsEnding(false);
  FCalls->Go();
}

void TDesktopSession::Leave() {
  FMustEnd = true;
  QApplication::exit();
}

TDesktopExit TDesktopSession::End() {
  if (std::exchange(FHasEnded, true)) return FExit;
  FMustEnd = true;
  FDesktop->Hide();
  FCalls->Close();
  for (TMainLoop::TTimerId* timer : {&FSaveTimer, &FStartTimer, &FEndTimer}) {
    if (*timer != 0) FLoop.StopTimer(std::exchange(*timer, 0));
  }
  const TString problem = EndPlugins();
  FApplication->Leave();
  FApplication = nullptr;
  FCalls.reset();
  FDesktop.reset();
  // Widgets die late. Nothing that came from a package may be alive when the packages go.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  if (FHost) FHost->Unload();
  FHost.reset();
  if (problem.empty()) return FExit;
  if (!FIsSystemEnd) TellProblem(problem);
  return FExit = TDesktopExit::deFailed;
}

TString TDesktopSession::EndPlugins() {
  if (!FHost) return {};
  FHost->EndWork();
  FDesktop->Leave();
  TString problem;
  {
    const TLoggedErrors errors;
    FHost->Uninitialize();
    problem = errors.First();
  }
  FDesktop->PopUps().Clear();
  FCalls->Forget();
  return problem;
}

}  // namespace kk
