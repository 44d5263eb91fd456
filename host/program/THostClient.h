#pragma once

#include <utility>

#include "host/program/THostMessage.h"
#include "host/program/THostSocket.h"

namespace kk {

/// The way to the process that has the data: a call goes over, and messages come back until its
/// end. One thread at a time.
class THostClient {
 public:
  /// Looks for it in the folder of the data.
  explicit THostClient(TStringView iFolder) : FSocket(THostSocket::Connect(iFolder)) {}
  /// Talks over a line that stands.
  explicit THostClient(THostSocket ioSocket) : FSocket(std::move(ioSocket)) {}

  /// Whether there is one.
  bool IsConnected() const { return FSocket.IsOpen(); }
  int Descriptor() const { return FSocket.Descriptor(); }

  /// What a call begins with, made in this process's folder.
  static THostMessage First(THostMessage::TKind iKind, const std::vector<TString>& iWords);
  /// Sends it whole. False when the other side has gone. Raises Exception for one that is too long
  /// for the other side.
  bool Send(const THostMessage& iMessage);
  /// Waits for messages, for so many milliseconds at most, and appends what has come. False when
  /// the other side has gone, or talks nonsense; what came before that counts.
  bool Receive(int iMilliseconds, std::vector<THostMessage>& ioMessages);

  /// What came of a second start of a program with a window.
  struct THandOver {
    enum class TEnd {
      Done,     ///< the other process has taken it
      Refused,  ///< it has said why not: Text, for the user
      Nobody,   ///< nobody listens: the data are in use by a command that soon ends
      Silent    ///< somebody listens, and did not answer in time
    };
    TEnd End = TEnd::Nobody;
    TString Text;
  };
  /// Hands the words of a second start over and waits for the answer, for so many milliseconds at
  /// most. iActivation: with what the other one's window may come to the front (the value of
  /// XDG_ACTIVATION_TOKEN), empty if nothing is known.
  static THandOver HandOver(TStringView iFolder, const std::vector<TString>& iWords,
                            TStringView iActivation, int iMilliseconds);

 private:
  const THostSocket FSocket;
  std::string FInput;
};

}  // namespace kk
