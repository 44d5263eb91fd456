#include "apps/desktop/shell/TDesktopProgram.h"

#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QTimer>
#include <QTranslator>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "apps/desktop/shell/TDesktopSession.h"
#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDrawings.h"
#include "apps/desktop/skin/TTheme.h"
#include "host/common/TFileHelper.h"
#include "host/common/TVersionHelper.h"
#include "host/program/THostClient.h"

namespace kk {
namespace {

constexpr int cLongestBoxMs = 120000;
constexpr char cActivationVariable[] = "XDG_ACTIVATION_TOKEN";

void Print(std::FILE* iFile, TStringView iText) {
  std::fputs((ToUtf8(iText) + "\n").c_str(), iFile);
  std::fflush(iFile);
}

// A standard file that is closed would be the next file to be opened, and what is printed would go
// into the user's data.
void OpenStandardFiles() {
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(file, F_GETFD) < 0) (void)!open("/dev/null", O_RDWR);
  }
}

// The toolkit's own words go to the log. Where it can't work at all, which is without a screen, it
// would end the program by a crash.
void TakeMessage(QtMsgType iType, const QMessageLogContext& /*iContext*/, const QString& iText) {
  if (iType != QtFatalMsg) return LogDebug(u"Qt", FromQt(iText));
  Print(stderr,
        u"Fehler: Der Bildschirm ist nicht zu erreichen. Im Terminal geht es mit kaufkobolde-cli.");
  std::_Exit(static_cast<int>(TDesktopExit::deNoScreen));
}

bool HasScreen() {
  for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    const char* const value = std::getenv(variable);
    if (value != nullptr && value[0] != '\0') return true;
  }
  return false;
}

// Who starts the program by an icon does not see what is printed. A script may be left alone.
void ShowOnScreen(TStringView iText) {
  if (isatty(STDERR_FILENO) != 0 || !HasScreen()) return;
  int count = 1;
  char name[] = "kaufkobolde";
  char* arguments[] = {name, nullptr};
  qInstallMessageHandler(&TakeMessage);
  const QApplication application(count, arguments);
  if (QGuiApplication::platformName() == ToQt(u"offscreen")) return;
  const TTheme theme(TThemeChoice::tcSystem);
  QApplication::setWindowIcon(TDrawings::ProgramIcon());
  QMessageBox box(QMessageBox::Critical, ToQt(u"Kaufkobolde"), {}, QMessageBox::Ok);
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(iText));
  QTimer::singleShot(cLongestBoxMs, &box, [&box] { box.close(); });
  box.exec();
}

TDesktopExit RunOnScreen(const TDesktopArguments& iCall, THostServices& ioServices) {
  if (!HasScreen()) {
    throw EDesktopNoScreen(
        u"Hier gibt es keinen Bildschirm (DISPLAY, WAYLAND_DISPLAY). Im Terminal geht es mit "
        u"kaufkobolde-cli.");
  }
  // The arguments are the program's, not the toolkit's.
  int count = 1;
  char name[] = "kaufkobolde";
  char* arguments[] = {name, nullptr};
  qInstallMessageHandler(&TakeMessage);
  std::signal(SIGPIPE, SIG_IGN);
  QApplication application(count, arguments);
  QApplication::setApplicationDisplayName(ToQt(u"Kaufkobolde"));
  QApplication::setDesktopFileName(ToQt(u"kaufkobolde"));
  QTranslator german;
  if (german.load(ToQt(u"qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QApplication::installTranslator(&german);
  }
  const TTheme theme(iCall.Theme);
  QApplication::setWindowIcon(TDrawings::ProgramIcon());
  TTrayIcon tray;
  return TDesktopSession(iCall, ioServices, tray).Run();
}

TDesktopExit RunCall(const std::vector<TString>& iWords) {
  const TDesktopArguments call = TDesktopArguments::Parse(iWords);
  if (call.Help) {
    Print(stdout, TDesktopArguments::HelpPage());
    return TDesktopExit::deDone;
  }
  if (call.Version) {
    Print(stdout, TVersionHelper::ReplaceVersionParams(u"kaufkobolde %MV%SV"));
    return TDesktopExit::deDone;
  }
  std::optional<THostServices> services;
  try {
    services.emplace(THostServices::TOptions{call.Data, call.Verbose});
  } catch (const EHostBusy& e) {
    return TDesktopProgram::HandOver(call.ToWords(), e.Message());
  }
  return RunOnScreen(call, *services);
}

}  // namespace

TDesktopExit TDesktopProgram::HandOver(const std::vector<TString>& iWords, TStringView iBusy) {
  const char* const token = std::getenv(cActivationVariable);
  const auto answer = THostClient::HandOver(HostFolders().Data, iWords,
                                            FromUtf8(token != nullptr ? token : ""), cAnswerMs);
  using TEnd = THostClient::THandOver::TEnd;
  switch (answer.End) {
    case TEnd::Done:
      return TDesktopExit::deDone;
    case TEnd::Refused:
      throw Exception(answer.Text);
    case TEnd::Silent:
      throw Exception(u"Das Programm läuft schon, antwortet aber nicht.");
    case TEnd::Nobody:
      break;
  }
  throw Exception(iBusy);
}

int TDesktopProgram::Main(const std::vector<std::string>& iArguments) {
  OpenStandardFiles();
  const auto failed = [](const std::exception& iCause, TDesktopExit iExit) {
    Print(stderr, u"Fehler: " + MessageOf(iCause));
    if (iExit == TDesktopExit::deFailed) ShowOnScreen(MessageOf(iCause));
    return static_cast<int>(iExit);
  };
  try {
    std::vector<TString> words;
    for (const std::string& argument : iArguments) words.push_back(FromUtf8(argument));
    return static_cast<int>(RunCall(words));
  } catch (const EDesktopUsage& e) {
    Print(stderr, u"Hilfe: kaufkobolde --help");
    return failed(e, TDesktopExit::deUsage);
  } catch (const EDesktopNoScreen& e) {
    return failed(e, TDesktopExit::deNoScreen);
  } catch (const std::exception& e) {
    return failed(e, TDesktopExit::deFailed);
  }
}

}  // namespace kk
