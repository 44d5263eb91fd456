#include "host/program/THostClient.h"

#include <poll.h>

#include <chrono>
#include <filesystem>
#include <system_error>

#include "host/base/Exception.h"

namespace kk {
namespace {

using TSteady = std::chrono::steady_clock;

constexpr int cTurnMs = 50;

TString CurrentFolder() {
  std::error_code error;
  const auto folder = std::filesystem::current_path(error);
  return error ? TString() : FromUtf8(folder.string());
}

void WaitFor(int iDescriptor, short iEvents, int iMilliseconds) {
  pollfd file = {iDescriptor, iEvents, 0};
  poll(&file, 1, iMilliseconds);
}

int MsUntil(TSteady::time_point iTime) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(iTime - TSteady::now());
  return left.count() < 0 ? 0 : static_cast<int>(left.count());
}

}  // namespace

THostMessage THostClient::First(THostMessage::TKind iKind, const std::vector<TString>& iWords) {
  THostMessage result;
  result.Kind = iKind;
  result.Words = iWords;
  result.Folder = CurrentFolder();
  return result;
}

bool THostClient::Send(const THostMessage& iMessage) {
  const std::string line = iMessage.ToLine();
  if (line.size() > THostMessage::cMaxLine) {
    throw Exception(u"Der Aufruf ist zu lang für das Programm, das ihn ausführen soll.");
  }
  std::string_view rest = line;
  while (!rest.empty()) {
    size_t sent = 0;
    if (FSocket.Send(rest, sent) == THostSocket::TEnd::Closed) return false;
    rest.remove_prefix(sent);
    if (!rest.empty()) WaitFor(FSocket.Descriptor(), POLLOUT, cTurnMs);
  }
  return true;
}

bool THostClient::Receive(int iMilliseconds, std::vector<THostMessage>& ioMessages) {
  WaitFor(FSocket.Descriptor(), POLLIN, iMilliseconds);
  const bool stays = FSocket.Receive(FInput) == THostSocket::TEnd::None;
  std::string line;
  while (TakeLine(FInput, line)) {
    const auto message = THostMessage::FromLine(line);
    if (!message) return false;
    ioMessages.push_back(*message);
  }
  return stays;
}

THostClient::THandOver THostClient::HandOver(TStringView iFolder,
                                             const std::vector<TString>& iWords,
                                             TStringView iActivation, int iMilliseconds) {
  THostClient client(iFolder);
  if (!client.IsConnected()) return {};
  THostMessage start = First(THostMessage::TKind::Start, iWords);
  start.Text = iActivation;
  const auto last = TSteady::now() + std::chrono::milliseconds(iMilliseconds);
  TString text;
  bool going = client.Send(start);
  while (going && TSteady::now() < last) {
    std::vector<THostMessage> messages;
    going = client.Receive(MsUntil(last), messages);
    for (const THostMessage& message : messages) {
      if (message.Kind == THostMessage::TKind::Complain) text = message.Text;
      if (message.Kind != THostMessage::TKind::Exit) continue;
      if (message.ExitCode == 0) return {THandOver::TEnd::Done, text};
      return {THandOver::TEnd::Refused, text};
    }
  }
  // A process that goes has done nothing with it, or at least says so to nobody.
  return {going ? THandOver::TEnd::Silent : THandOver::TEnd::Nobody, text};
}

}  // namespace kk
