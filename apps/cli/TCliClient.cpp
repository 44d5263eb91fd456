#include "apps/cli/TCliClient.h"

#include <poll.h>

#include <chrono>
#include <filesystem>
#include <system_error>

#include "host/base/Exception.h"

namespace kk {
namespace {

using enum TCliMessage::TKind;
using TSteady = std::chrono::steady_clock;

constexpr int cTurnMs = 50;
constexpr auto cPatience = std::chrono::seconds(1);

TString CurrentFolder() {
  std::error_code error;
  const auto folder = std::filesystem::current_path(error);
  return error ? TString() : FromUtf8(folder.string());
}

}  // namespace

int TCliClient::Run(const std::vector<TString>& iArguments) {
  TCliMessage call;
  call.Kind = Call;
  call.Words = iArguments;
  call.Folder = CurrentFolder();
  call.IsInteractive = FConsole.IsInteractive();
  const std::string line = call.ToLine();
  if (line.size() > TCliMessage::cMaxLine) {
    throw Exception(u"Der Aufruf ist zu lang für \"kaufkobolde-cli run\", das ihn ausführen soll.");
  }
  bool going = SendLine(line);
  bool answered = false;
  bool interrupted = false;
  const auto start = TSteady::now();
  while (going) {
    if (FConsole.TakeInterrupt()) {
      // Who asks twice does not want to wait for the other side.
      if (interrupted) break;
      interrupted = true;
      Send(Interrupt);
    }
    if (!answered && TSteady::now() - start > cPatience) {
      FConsole.Progress(u"Warten, bis ein anderer Befehl fertig ist ...");
    }
    Wait();
    going = FSocket.Receive(FInput) == TCliSocket::TEnd::None;
    std::string answer;
    while (TakeLine(FInput, answer)) {
      const auto message = TCliMessage::FromLine(answer);
      answered = true;
      if (!message) break;
      if (!Take(*message)) return FExitCode;
    }
  }
  FConsole.Progress({});
  FConsole.Complain(interrupted ? TString(u"Abgebrochen.")
                                : TString(u"Fehler: \"kaufkobolde-cli run\", das den Befehl "
                                          u"ausgeführt hat, ist nicht mehr da."));
  return FExitCode;
}

void TCliClient::Wait() {
  pollfd file = {FSocket.Descriptor(), POLLIN, 0};
  poll(&file, 1, cTurnMs);
}

bool TCliClient::SendLine(const std::string& iLine) {
  std::string_view rest = iLine;
  while (!rest.empty()) {
    size_t sent = 0;
    if (FSocket.Send(rest, sent) == TCliSocket::TEnd::Closed) return false;
    rest.remove_prefix(sent);
    pollfd file = {FSocket.Descriptor(), POLLOUT, 0};
    if (!rest.empty()) poll(&file, 1, cTurnMs);
  }
  return true;
}

bool TCliClient::Send(TCliMessage::TKind iKind, TStringView iText) {
  TCliMessage message;
  message.Kind = iKind;
  message.Text = iText;
  return Send(message);
}

bool TCliClient::Take(const TCliMessage& iMessage) {
  switch (iMessage.Kind) {
    case Print:
      FConsole.Print(iMessage.Text);
      return true;
    case Complain:
      FConsole.Complain(iMessage.Text);
      return true;
    case Progress:
      FConsole.Progress(iMessage.Text);
      return true;
    case TCliMessage::TKind::Ask:
    case AskSecret:
      Ask(iMessage);
      return true;
    case Exit:
      FConsole.Progress({});
      FExitCode = iMessage.ExitCode;
      return false;
    case Call:
    case Line:
    case EndOfInput:
    case Interrupt:
      break;
  }
  return true;
}

void TCliClient::Ask(const TCliMessage& iQuestion) {
  FConsole.LeaveQuestionsWith(FSocket.Descriptor());
  const auto line = iQuestion.Kind == AskSecret ? FConsole.ReadSecret(iQuestion.Text)
                                                : FConsole.ReadLine(iQuestion.Text);
  FConsole.LeaveQuestionsWith(-1);
  if (line) {
    Send(Line, *line);
  } else if (FConsole.TakeInterrupt()) {
    Send(Interrupt);
  } else {
    Send(EndOfInput);
  }
}

}  // namespace kk
