#include "apps/cli/TCliPeer.h"

#include <utility>

namespace kk {
namespace {

using enum TCliMessage::TKind;

constexpr auto cLongestSilence = std::chrono::seconds(10);
constexpr size_t cMaxAnswers = 1000;

}  // namespace

TCliPeer::TCliPeer(TCliSocket ioSocket, std::function<void()> iWake)
    : FSocket(std::move(ioSocket)),
      FWake(std::move(iWake)),
      FCallDeadline(std::chrono::steady_clock::now() + cLongestSilence) {}

bool TCliPeer::Begin() {
  const std::lock_guard lock(FMutex);
  if (FGone || FExited) return false;
  return FBegun = true;
}

void TCliPeer::Send(const TCliMessage& iMessage) {
  {
    const std::lock_guard lock(FMutex);
    if (FGone || FExited) return;
    FOutput.push_back(iMessage.ToLine());
    if (iMessage.Kind == Exit) FExited = true;
  }
  FWake();
}

// Who still waits for his turn need not wait any longer. Both messages in one piece: who interrupts
// again between them would say the same.
void TCliPeer::Leave() {
  if (FExited) return;
  TCliMessage words;
  words.Kind = Complain;
  words.Text = u"Abgebrochen.";
  TCliMessage exit;
  exit.ExitCode = 1;
  FOutput.push_back(words.ToLine() + exit.ToLine());
  FExited = true;
}

void TCliPeer::SendExit(int iCode) {
  TCliMessage message;
  message.Kind = Exit;
  message.ExitCode = iCode;
  Send(message);
}

std::optional<TCliMessage> TCliPeer::TakeAnswer() {
  const std::lock_guard lock(FMutex);
  if (FAnswers.empty()) return {};
  TCliMessage answer = std::move(FAnswers.front());
  FAnswers.pop_front();
  return answer;
}

void TCliPeer::ForgetAnswers() {
  const std::lock_guard lock(FMutex);
  FAnswers.clear();
}

bool TCliPeer::TakeInterrupt() {
  const std::lock_guard lock(FMutex);
  return std::exchange(FInterrupted, false);
}

bool TCliPeer::IsInterrupted() const {
  const std::lock_guard lock(FMutex);
  return FInterrupted;
}

bool TCliPeer::IsGone() const {
  const std::lock_guard lock(FMutex);
  return FGone;
}

bool TCliPeer::HasOutput() const {
  const std::lock_guard lock(FMutex);
  return !FOutput.empty();
}

void TCliPeer::HangUp() {
  FSocket = TCliSocket();
  const std::lock_guard lock(FMutex);
  FGone = true;
  FOutput.clear();
}

bool TCliPeer::Move(bool iCanRead, bool iCanWrite, bool& oCalled) {
  if (iCanRead && !Receive(oCalled)) return false;
  if (iCanWrite && !SendWhatGoes()) return false;
  const std::lock_guard lock(FMutex);
  return !FExited || !FOutput.empty();
}

bool TCliPeer::Receive(bool& oCalled) {
  if (FSocket.Receive(FInput) == TCliSocket::TEnd::Closed) return false;
  std::string line;
  while (TakeLine(FInput, line)) {
    if (!Take(line, oCalled)) return false;
  }
  return FInput.size() <= TCliMessage::cMaxLine;
}

// The first message is the call, and there is no other.
bool TCliPeer::Take(const std::string& iLine, bool& oCalled) {
  std::optional<TCliMessage> message = TCliMessage::FromLine(iLine);
  if (!message) return false;
  const bool isCall = message->Kind == TCliMessage::TKind::Call;
  if (isCall == FHasCalled) return false;
  if (isCall) {
    FCall = std::move(*message);
    return FHasCalled = oCalled = true;
  }
  const std::lock_guard lock(FMutex);
  if (message->Kind == Interrupt) {
    if (!FBegun) Leave();
    return FInterrupted = true;
  }
  if (message->Kind != Line && message->Kind != EndOfInput) return false;
  FAnswers.push_back(std::move(*message));
  return FAnswers.size() <= cMaxAnswers;
}

bool TCliPeer::SendWhatGoes() {
  const std::lock_guard lock(FMutex);
  while (!FOutput.empty()) {
    const std::string& first = FOutput.front();
    size_t sent = 0;
    const std::string_view rest = std::string_view(first).substr(FSent);
    if (FSocket.Send(rest, sent) == TCliSocket::TEnd::Closed) return false;
    FSent += sent;
    if (FSent < first.size()) return true;
    FOutput.pop_front();
    FSent = 0;
  }
  return true;
}

}  // namespace kk
