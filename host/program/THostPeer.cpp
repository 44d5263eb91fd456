#include "host/program/THostPeer.h"

#include <utility>

namespace kk {
namespace {

using enum THostMessage::TKind;

constexpr auto cLongestSilence = std::chrono::seconds(10);
constexpr size_t cMaxAnswers = 1000;

}  // namespace

THostPeer::THostPeer(THostSocket ioSocket, std::function<void()> iWake)
    : FSocket(std::move(ioSocket)),
      FWake(std::move(iWake)),
      FCallDeadline(std::chrono::steady_clock::now() + cLongestSilence) {}

bool THostPeer::Begin() {
  const std::lock_guard lock(FMutex);
  if (FGone || FExited) return false;
  return FBegun = true;
}

void THostPeer::Send(const THostMessage& iMessage) {
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
void THostPeer::Leave() {
  if (FExited) return;
  THostMessage words;
  words.Kind = THostMessage::TKind::Complain;
  words.Text = u"Abgebrochen.";
  THostMessage exit;
  exit.ExitCode = 1;
  FOutput.push_back(words.ToLine() + exit.ToLine());
  FExited = true;
}

void THostPeer::Complain(TStringView iText) {
  THostMessage message;
  message.Kind = THostMessage::TKind::Complain;
  message.Text = iText;
  Send(message);
}

void THostPeer::SendExit(int iCode) {
  THostMessage message;
  message.Kind = Exit;
  message.ExitCode = iCode;
  Send(message);
}

std::optional<THostMessage> THostPeer::TakeAnswer() {
  const std::lock_guard lock(FMutex);
  if (FAnswers.empty()) return {};
  THostMessage answer = std::move(FAnswers.front());
  FAnswers.pop_front();
  return answer;
}

void THostPeer::ForgetAnswers() {
  const std::lock_guard lock(FMutex);
  FAnswers.clear();
}

bool THostPeer::TakeInterrupt() {
  const std::lock_guard lock(FMutex);
  return std::exchange(FInterrupted, false);
}

bool THostPeer::IsInterrupted() const {
  const std::lock_guard lock(FMutex);
  return FInterrupted;
}

bool THostPeer::IsGone() const {
  const std::lock_guard lock(FMutex);
  return FGone;
}

bool THostPeer::HasOutput() const {
  const std::lock_guard lock(FMutex);
  return !FOutput.empty();
}

void THostPeer::HangUp() {
  FSocket = THostSocket();
  const std::lock_guard lock(FMutex);
  FGone = true;
  FOutput.clear();
}

bool THostPeer::Move(bool iCanRead, bool iCanWrite, bool& oCalled) {
  if (iCanRead && !Receive(oCalled)) return false;
  if (iCanWrite && !SendWhatGoes()) return false;
  const std::lock_guard lock(FMutex);
  return !FExited || !FOutput.empty();
}

bool THostPeer::Receive(bool& oCalled) {
  if (FSocket.Receive(FInput) == THostSocket::TEnd::Closed) return false;
  std::string line;
  while (TakeLine(FInput, line)) {
    if (!Take(line, oCalled)) return false;
  }
  return FInput.size() <= THostMessage::cMaxLine;
}

// The first message is the call, and there is no other.
bool THostPeer::Take(const std::string& iLine, bool& oCalled) {
  std::optional<THostMessage> message = THostMessage::FromLine(iLine);
  if (!message) return false;
  const bool isCall = message->IsFirst();
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

bool THostPeer::SendWhatGoes() {
  const std::lock_guard lock(FMutex);
  while (!FOutput.empty()) {
    const std::string& first = FOutput.front();
    size_t sent = 0;
    const std::string_view rest = std::string_view(first).substr(FSent);
    if (FSocket.Send(rest, sent) == THostSocket::TEnd::Closed) return false;
    FSent += sent;
    if (FSent < first.size()) return true;
    FOutput.pop_front();
    FSent = 0;
  }
  return true;
}

}  // namespace kk
