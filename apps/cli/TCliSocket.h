#pragma once

#include <string>
#include <string_view>

#include "host/base/TString.h"

namespace kk {

/// The Unix socket by which calls reach the process that stays: "kaufkobolde.socket" in the folder
/// of the data, for this user alone. It owns its file descriptor, which does not block and is
/// handed to no child.
class TCliSocket {
 public:
  TCliSocket() = default;
  explicit TCliSocket(int iFile) : FFile(iFile) {}
  ~TCliSocket();
  TCliSocket(TCliSocket&& ioOther) noexcept;
  TCliSocket& operator=(TCliSocket&& ioOther) noexcept;

  /// Listens in the folder. Whoever calls this has the folder's lock: a socket that lies there is
  /// one that somebody has left behind, and goes. Raises EInOutError.
  static TCliSocket Listen(TStringView iFolder);
  /// The way to the process that listens there; closed if there is none, or it isn't this user's.
  static TCliSocket Connect(TStringView iFolder);
  /// Takes the socket's name out of the folder.
  static void Remove(TStringView iFolder);

  bool IsOpen() const { return FFile >= 0; }
  int Descriptor() const { return FFile; }
  /// The next one that has called; closed if there is none. A caller that isn't this user is hung
  /// up on.
  TCliSocket Accept() const;

  enum class TEnd { None, Closed };
  /// Appends what has come. Closed when the other side has gone.
  TEnd Receive(std::string& ioBytes) const;
  /// Sends as much from the front as goes, and answers how much that was. Closed as above.
  TEnd Send(std::string_view iBytes, size_t& oSent) const;

 private:
  bool IsOfThisUser() const;

  int FFile = -1;
};

/// Takes the first complete line out of the bytes, without its end; false if there is none.
bool TakeLine(std::string& ioBytes, std::string& oLine);

}  // namespace kk
