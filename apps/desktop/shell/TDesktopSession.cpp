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
  if (guard.BackupToRestore()) {
    const int answer = MessageDlg(
        u"Die Beobachtenliste fehlt, ihre Sicherung ist noch da. Soll sie wiederhergestellt "
        u"werden?\n\n"
        u"Mit \"Nein\" beginnen Sie mit einer leeren Liste. Die Sicherung bleibt auch dann als "
        u"Kopie liegen.",
        TMsgDlgType::mtConfirmation, {TMsgDlgBtn::mbYes, TMsgDlgBtn::mbNo, TMsgDlgBtn::mbCancel});
    if (answer == cModalYes) {
      guard.RestoreBackup();
    } else if (answer != cModalNo) {
      return false;
    } else if (PutAside(guard.BackupName()).empty()) {
      throw Exception(
          u"Von der Sicherung lässt sich keine Kopie anlegen. Das Programm beginnt "
          u"nicht, damit sie nicht verloren geht.");
    }
  }
  const TString damage = guard.PutAsideIfDamaged();
  if (!damage.empty()) MessageDlg(Trim(damage), TMsgDlgType::mtWarning, {TMsgDlgBtn::mbOK});
  return true;
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
  if (dialog == nullptr) return FCalls->IsAnswering() ? void() : Leave();
  if (dialog != FClosing) {
    FClosing = dialog;
    FTries = 0;
  }
  if (++FTries > cMaxTries && !FIsSystemEnd) {
    FLoop.StopTimer(std::exchange(FEndTimer, 0));
    FCalls->SetIsEnding(false);
    FCalls->Go();
    return;
  }
  dialog->close();
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
