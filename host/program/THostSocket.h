#pragma once

#include <string>
#include <string_view>

#include "host/base/TString.h"

namespace kk {

/// The Unix socket by which calls reach the process that has the data: "kaufkobolde.socket" in the
/// folder of the data, for this user alone. It owns its file descriptor, which does not block and
/// is handed to no child.
class THostSocket {
 public:
  THostSocket() = default;
  explicit THostSocket(int iFile) : FFile(iFile) {}
  ~THostSocket();
  THostSocket(THostSocket&& ioOther) noexcept;
  THostSocket& operator=(THostSocket&& ioOther) noexcept;

  /// Listens in the folder. Whoever calls this has the folder's lock: a socket that lies there is
  /// one that somebody has left behind, and goes. Raises EInOutError.
  static THostSocket Listen(TStringView iFolder);
  /// The way to the process that listens there; closed if there is none, or it isn't this user's.
  static THostSocket Connect(TStringView iFolder);
  /// Takes the socket's name out of the folder.
  static void Remove(TStringView iFolder);

  bool IsOpen() const { return FFile >= 0; }
  int Descriptor() const { return FFile; }
  /// The next one that has called; closed if there is none. A caller that isn't this user is hung
  /// up on. oExhausted: somebody waits, and the system has nothing left to let him in with.
  THostSocket Accept(bool& oExhausted) const;

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
