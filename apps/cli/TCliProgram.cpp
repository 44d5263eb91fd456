#include "apps/cli/TCliProgram.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "apps/cli/TCliClient.h"
#include "apps/cli/TCliCommands.h"
#include "apps/cli/TCliInterrupt.h"
#include "apps/cli/TCliSession.h"
#include "apps/cli/TCliTerminal.h"
#include "apps/cli/TerminalText.h"
#include "host/common/TFileHelper.h"
#include "host/common/TVersionHelper.h"

namespace kk {
namespace {

bool Run(TCliSession& ioSession, const TCliArguments& iCall) {
  if (iCall.IsCommand(u"run")) {
    ioSession.Stay();
    return true;
  }
  if (TCliCommands::NeedsList(iCall)) ioSession.Start();
  return TCliCommands::Run(ioSession.Context(), iCall);
}

// The session ends within the answer: what a plug-in raises may not outlive its package.
TCliExit RunSession(ICliConsole& ioConsole, const TCliArguments& iCall) {
  TCliSession session(ioConsole, iCall);
  const TCliExit exit = Answered(
      ioConsole, [&] { return Run(session, iCall) ? TCliExit::ceDone : TCliExit::ceFailed; });
  session.End();
  return exit == TCliExit::ceDone && session.HasErrors() ? TCliExit::ceFailed : exit;
}

// Another process has the folder. If it is one that stays, it answers the call.
TCliExit RunElsewhere(ICliConsole& ioConsole, const std::vector<TString>& iWords,
                      const EHostBusy& iBusy) {
  TCliClient client(ioConsole, HostFolders().Data);
  if (!client.IsConnected()) throw Exception(iBusy.Message());
  return static_cast<TCliExit>(client.Run(iWords));
}

// The demonstration leaves the user's own list alone.
void GiveDemoAFolder(TCliArguments& ioCall) {
  if (!ioCall.IsCommand(u"demo") || !ioCall.Data.empty()) return;
  std::string folder =
      (std::filesystem::temp_directory_path() / "kaufkobolde-beispiel-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) {
    throw EInOutError(u"Für das Beispiel lässt sich kein Ordner anlegen: " + FromUtf8(folder));
  }
  ioCall.Data = FromUtf8(folder);
}

TCliExit RunCall(ICliConsole& ioConsole, const std::vector<std::string>& iArguments) {
  std::vector<TString> words;
  for (const std::string& argument : iArguments) words.push_back(FromUtf8(argument));
  TCliArguments call = TCliArguments::Parse(words);
  if (call.Help) {
    for (const TString& line : Split(CliHelpPage(), u'\n')) ioConsole.Print(line);
    return TCliExit::ceDone;
  }
  if (call.Version) {
    ioConsole.Print(TVersionHelper::ReplaceVersionParams(u"kaufkobolde-cli %MV%SV"));
    return TCliExit::ceDone;
  }
  GiveDemoAFolder(call);
  try {
    return RunSession(ioConsole, call);
  } catch (const EHostBusy& e) {
    return RunElsewhere(ioConsole, words, e);
  }
}

// A standard file that is closed would be the next file to be opened, and what is printed would go
// into the user's data.
void OpenStandardFiles() {
  for (int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(file, F_GETFD) < 0) (void)!open("/dev/null", O_RDWR);
  }
}

}  // namespace

int TCliProgram::Main(const std::vector<std::string>& iArguments) {
  OpenStandardFiles();
  TCliInterrupt interrupt;
  TCliTerminal terminal(interrupt);
  TCliExit exit = Answered(terminal, [&] { return RunCall(terminal, iArguments); });
  if (!terminal.Flush()) {
    terminal.Complain(u"Fehler: Die Ausgabe konnte nicht geschrieben werden.");
    if (exit == TCliExit::ceDone) exit = TCliExit::ceFailed;
  }
  return static_cast<int>(exit);
}

}  // namespace kk
