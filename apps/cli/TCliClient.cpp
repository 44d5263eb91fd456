#include "apps/cli/TCliClient.h"

#include <chrono>

#include "host/base/Exception.h"

namespace kk {
namespace {

using enum THostMessage::TKind;
using TSteady = std::chrono::steady_clock;

constexpr int cTurnMs = 50;
constexpr auto cPatience = std::chrono::seconds(1);

}  // namespace

int TCliClient::Run(const std::vector<TString>& iArguments) {
  THostMessage call = THostClient::First(Call, iArguments);
  call.IsInteractive = FConsole.IsInteractive();
  bool going = FHost.Send(call);
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
    std::vector<THostMessage> messages;
    going = FHost.Receive(cTurnMs, messages);
    for (const THostMessage& message : messages) {
      answered = true;
      if (!Take(message)) return FExitCode;
    }
  }
  FConsole.Progress({});
  FConsole.Complain(interrupted ? TString(u"Abgebrochen.")
                                : TString(u"Fehler: Das Programm, das den Befehl ausgeführt hat, "
                                          u"ist nicht mehr da."));
  return FExitCode;
}

bool TCliClient::Send(THostMessage::TKind iKind, TStringView iText) {
  THostMessage message;
  message.Kind = iKind;
  message.Text = iText;
  return FHost.Send(message);
}

bool TCliClient::Take(const THostMessage& iMessage) {
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
    case THostMessage::TKind::Ask:
    case AskSecret:
      Ask(iMessage);
      return true;
    case Exit:
      FConsole.Progress({});
      FExitCode = iMessage.ExitCode;
      return false;
    case Call:
    case Start:
    case Line:
    case EndOfInput:
    case Interrupt:
      break;
  }
  return true;
}

void TCliClient::Ask(const THostMessage& iQuestion) {
  FConsole.LeaveQuestionsWith(FHost.Descriptor());
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
