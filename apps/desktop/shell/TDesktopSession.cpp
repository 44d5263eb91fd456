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
// More dialogs in one another than these are none that end.
constexpr int cMaxDialogs = 50;

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
      FDesktop(ioTray),
      FSystemEnd([this] { RequestSystemEnd(); }) {
  QApplication::setQuitOnLastWindowClosed(false);
  FDesktop.SetOnQuit([this] { RequestEnd(); });
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, &FDesktop.Window(),
                   [this](QSessionManager&) { Save(); });
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
  BeginServer();
  FCalls.push_back(std::move(FCall));
  const auto start = [this] {
    if (FStartTimer == 0) return;
    FLoop.StopTimer(std::exchange(FStartTimer, 0));
    Start();
  };
  FStartTimer = FLoop.StartTimer(cLongestPaintMs, start);
  FDesktop.Window().SetOnPainted(start);
  FDesktop.Open();
  if (!FDesktop.Window().isVisible()) FLoop.Post(start);
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
      [this](const TNotification& iNotification) { FDesktop.PopUps().Show(iNotification); });
  TellRefusedPackages();
  if (FMustEnd) return;
  FHost->Start(FApplication);
  FHost->Deliveries().StartOutbox();
  FDesktop.Begin(FHost->Plugins(), FApplication);
  FSaveTimer = FLoop.StartTimer(cBetweenSavesMs, [this] { SaveReminders(); });
  TakeCalls();
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

void TDesktopSession::BeginServer() {
  try {
    FServer.emplace(HostFolders().Data, FLoop, [this] { AnswerCallers(); });
  } catch (const std::exception& e) {
    // Second starts will say that the data are in use; all else works.
    LogError(u"Host", u"Ein zweiter Start wird nicht bemerkt: %s", {MessageOf(e)});
  }
}

void TDesktopSession::AnswerCallers() {
  while (FServer) {
    const auto peer = FServer->TakeCaller();
    if (!peer) return;
    if (peer->Begin()) Answer(*peer);
  }
}

void TDesktopSession::Answer(THostPeer& ioPeer) {
  const THostMessage& call = ioPeer.Call();
  const auto refuse = [&](TStringView iText, TDesktopExit iExit) {
    THostMessage complaint;
    complaint.Kind = THostMessage::TKind::Complain;
    complaint.Text = iText;
    ioPeer.Send(complaint);
    ioPeer.SendExit(static_cast<int>(iExit));
  };
  if (call.Kind != THostMessage::TKind::Start) {
    return refuse(
        u"Fehler: Diese Beobachtenliste ist gerade im Programm \"kaufkobolde\" geöffnet. Bitte "
        u"dort bedienen oder es vorher beenden.",
        TDesktopExit::deFailed);
  }
  if (FMustEnd) return refuse(u"Das Programm wird gerade beendet.", TDesktopExit::deFailed);
  try {
    FCalls.push_back(TDesktopArguments::Parse(call.Words));
  } catch (const EDesktopUsage& e) {
    return refuse(e.Message(), TDesktopExit::deUsage);
  }
  ioPeer.SendExit(static_cast<int>(TDesktopExit::deDone));
  FDesktop.ComeBack(call.Text);
  TakeCalls();
}

void TDesktopSession::TakeCalls() {
  if (FMustEnd || !IsRunning()) return;
  if (QApplication::activeModalWidget() != nullptr) {
    if (FCallTimer == 0) FCallTimer = FLoop.StartTimer(cBetweenLooksMs, [this] { TakeCalls(); });
    return;
  }
  if (FCallTimer != 0) FLoop.StopTimer(std::exchange(FCallTimer, 0));
  for (const TDesktopArguments& call : std::exchange(FCalls, {})) {
    FDesktop.TakeHostLine(call.HostLine);
    TDroppedText all;
    for (const TString& word : call.Words) all.Add(TDroppedText::OfWord(word));
    FDesktop.Take(all);
  }
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
  if (CancelDialogs()) Leave();
}

void TDesktopSession::RequestSystemEnd() {
  FIsSystemEnd = true;
  CancelDialogs();
  Leave();
}

bool TDesktopSession::CancelDialogs() {
  for (int i = 0; i < cMaxDialogs; ++i) {
    QWidget* const dialog = QApplication::activeModalWidget();
    if (dialog == nullptr) return true;
    dialog->close();
    FLoop.ProcessMessages();
    if (QApplication::activeModalWidget() == dialog) return false;
  }
  return false;
}

void TDesktopSession::Leave() {
  FMustEnd = true;
  QApplication::exit();
}

TDesktopExit TDesktopSession::End() {
  if (std::exchange(FHasEnded, true)) return FExit;
  FMustEnd = true;
  FDesktop.Hide();
  FServer.reset();
  for (TMainLoop::TTimerId* timer : {&FSaveTimer, &FStartTimer, &FCallTimer}) {
    if (*timer != 0) FLoop.StopTimer(std::exchange(*timer, 0));
  }
  TString problem;
  if (FHost) {
    FHost->EndWork();
    FDesktop.Leave();
    const TLoggedErrors errors;
    FHost->Uninitialize();
    problem = errors.First();
    FDesktop.PopUps().Clear();
  }
  FApplication->Leave();
  if (!problem.empty()) {
    FExit = TDesktopExit::deFailed;
    if (!FIsSystemEnd) TellProblem(problem);
  }
  if (FHost) FHost->Unload();
  FHost.reset();
  return FExit;
}

}  // namespace kk
