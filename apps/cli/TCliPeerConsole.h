#pragma once

#include "apps/cli/ICliConsole.h"
#include "host/program/THostPeer.h"

namespace kk {

/// The console of a caller: what is printed and asked here appears and is answered there. A caller
/// that has gone, and a request to end this process, count as an interrupt that can't be taken.
class TCliPeerConsole : public ICliConsole {
 public:
  /// iHost: the console of this process. Both are borrowed.
  TCliPeerConsole(THostPeer& ioPeer, ICliConsole& ioHost) : FPeer(ioPeer), FHost(ioHost) {}

  void Print(TStringView iLine) override;
  void Complain(TStringView iLine) override;
  void Progress(TStringView iLine) override;
  bool Flush() override { return !FPeer.IsGone(); }
  bool IsInteractive() const override { return FPeer.Call().IsInteractive; }
  std::optional<TString> ReadLine(TStringView iPrompt) override;
  std::optional<TString> ReadSecret(TStringView iPrompt) override;
  bool TakeInterrupt() override;

  /// Whether this process was asked to end meanwhile.
  bool HostEnds();

 private:
  void Send(THostMessage::TKind iKind, TStringView iText);
  std::optional<TString> Ask(THostMessage::TKind iKind, TStringView iPrompt);
  bool MustEnd() { return HostEnds() || FPeer.IsGone(); }

  THostPeer& FPeer;
  ICliConsole& FHost;
  bool FHostEnds = false;
  TString FProgress;
};

}  // namespace kk
