#include "apps/desktop/shell/TDesktopCalls.h"

#include <QApplication>
#include <utility>

#include "apps/desktop/skin/AsUser.h"
#include "host/base/Exception.h"
#include "host/base/TMainLoop.h"
#include "host/common/TFileHelper.h"

namespace kk {
namespace {

constexpr int cBetweenLooksMs = 200;

void Refuse(THostPeer& ioPeer, TStringView iText, TDesktopExit iExit) {
  THostMessage complaint;
  complaint.Kind = THostMessage::TKind::Complain;
  complaint.Text = iText;
  ioPeer.Send(complaint);
  ioPeer.SendExit(static_cast<int>(iExit));
}

}  // namespace

TDesktopCalls::~TDesktopCalls() { Close(); }

void TDesktopCalls::Listen() {
  try {
    FServer.emplace(HostFolders().Data, MainLoop(), [this] { TakeCallers(); });
  } catch (const std::exception& e) {
    LogError(u"Host", u"Ein zweiter Start wird nicht bemerkt: %s", {MessageOf(e)});
  }
}

void TDesktopCalls::Close() {
  FServer.reset();
  FCalls.clear();
  if (FTimer != 0) MainLoop().StopTimer(std::exchange(FTimer, 0));
}

void TDesktopCalls::Add(TDesktopArguments iCall) { FCalls.push_back(std::move(iCall)); }

void TDesktopCalls::TakeCallers() {
  while (FServer) {
    auto peer = FServer->TakeCaller();
    if (!peer) break;
    if (peer->Call().Kind == THostMessage::TKind::Start) {
      if (peer->Begin()) AnswerStart(*peer);
    } else {
      FPeers.push_back(std::move(peer));
    }
  }
  Go();
}

void TDesktopCalls::AnswerStart(THostPeer& ioPeer) {
  if (FIsEnding) {
    return Refuse(ioPeer, u"Das Programm wird gerade beendet.", TDesktopExit::deFailed);
  }
  try {
    Add(TDesktopArguments::Parse(ioPeer.Call().Words));
  } catch (const EDesktopUsage& e) {
    return Refuse(ioPeer, e.Message(), TDesktopExit::deUsage);
  }
  ioPeer.SendExit(static_cast<int>(TDesktopExit::deDone));
  FDesktop.ComeBack(ioPeer.Call().Text);
}

bool TDesktopCalls::CanGo() const {
  return FDesktop.HasBegun() && !FIsEnding && !IsAnswering() &&
         QApplication::activeModalWidget() == nullptr &&
         QApplication::activePopupWidget() == nullptr;
}

void TDesktopCalls::Go() {
  while (CanGo() && !FCalls.empty()) {
    const TDesktopArguments call = std::move(FCalls.front());
    FCalls.pop_front();
    AsUser([&] { DoCall(call); });
  }
  if (FTerminal) {
    for (auto& peer : std::exchange(FPeers, {})) FTerminal->Add(std::move(peer));
    if (CanGo()) FTerminal->AnswerAll();
  }
  const bool waits = !FCalls.empty() || (FTerminal && FTerminal->HasCallers());
  if (waits && FTimer == 0) FTimer = MainLoop().StartTimer(cBetweenLooksMs, [this] { Go(); });
  if (!waits && FTimer != 0) MainLoop().StopTimer(std::exchange(FTimer, 0));
}

void TDesktopCalls::DoCall(const TDesktopArguments& iCall) {
  FDesktop.TakeHostLine(iCall.HostLine);
  TDroppedText all;
  for (const TString& word : iCall.Words) all.Add(TDroppedText::OfWord(word));
  FDesktop.Take(all);
}

}  // namespace kk
