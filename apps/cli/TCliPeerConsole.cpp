#include "apps/cli/TCliPeerConsole.h"

#include "host/base/TMainLoop.h"

namespace kk {
namespace {

using enum THostMessage::TKind;

constexpr int cTurnMs = 50;

}  // namespace

void TCliPeerConsole::Send(THostMessage::TKind iKind, TStringView iText) {
  THostMessage message;
  message.Kind = iKind;
  message.Text = iText;
  FPeer.Send(message);
}

void TCliPeerConsole::Print(TStringView iLine) { Send(THostMessage::TKind::Print, iLine); }

void TCliPeerConsole::Complain(TStringView iLine) { Send(THostMessage::TKind::Complain, iLine); }

// It is told in every turn of a wait, and mostly the same.
void TCliPeerConsole::Progress(TStringView iLine) {
  if (iLine == FProgress) return;
  FProgress = iLine;
  Send(THostMessage::TKind::Progress, iLine);
}

std::optional<TString> TCliPeerConsole::ReadLine(TStringView iPrompt) {
  return Ask(THostMessage::TKind::Ask, iPrompt);
}

std::optional<TString> TCliPeerConsole::ReadSecret(TStringView iPrompt) {
  return Ask(AskSecret, iPrompt);
}

std::optional<TString> TCliPeerConsole::Ask(THostMessage::TKind iKind, TStringView iPrompt) {
  FPeer.ForgetAnswers();
  Send(iKind, iPrompt);
  while (!MustEnd() && !FPeer.IsInterrupted()) {
    MainLoop().ProcessMessages();
    if (const auto answer = FPeer.TakeAnswer()) {
      if (answer->Kind == EndOfInput) return {};
      return answer->Text;
    }
    MainLoop().WaitForMessage(cTurnMs);
  }
  return {};
}

bool TCliPeerConsole::TakeInterrupt() { return FPeer.TakeInterrupt() || MustEnd(); }

bool TCliPeerConsole::HostEnds() {
  if (FHost.TakeInterrupt()) FHostEnds = true;
  return FHostEnds;
}

}  // namespace kk
