#include "host/program/THostSocket.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "host/common/TFileWriter.h"

namespace kk {
namespace {

constexpr char cName[] = "kaufkobolde.socket";
constexpr int cBacklog = 32;

// The folder by its descriptor: an address of a socket has room for about a hundred characters, and
// paths may be longer.
class TFolder {
 public:
  explicit TFolder(TStringView iFolder)
      : FFile(open(ToUtf8(iFolder).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}
  ~TFolder() {
    if (FFile >= 0) close(FFile);
  }
  TFolder(const TFolder&) = delete;
  TFolder& operator=(const TFolder&) = delete;

  sockaddr_un Address() const {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::string path = "/proc/self/fd/" + std::to_string(FFile) + "/" + cName;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    return address;
  }
  void Remove() const { unlinkat(FFile, cName, 0); }

 private:
  int FFile;
};

int NewSocket() { return socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0); }

template <class TCall>
int WithAddress(const TFolder& iFolder, TCall iCall, int iSocket) {
  const sockaddr_un address = iFolder.Address();
  return iCall(iSocket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

bool IsExhausted() {
  return errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM;
}
bool MustWait() { return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR; }

}  // namespace

THostSocket::~THostSocket() {
  if (FFile >= 0) close(FFile);
}

THostSocket::THostSocket(THostSocket&& ioOther) noexcept
    : FFile(std::exchange(ioOther.FFile, -1)) {}

THostSocket& THostSocket::operator=(THostSocket&& ioOther) noexcept {
  std::swap(FFile, ioOther.FFile);
  return *this;
}

THostSocket THostSocket::Listen(TStringView iFolder) {
  const TFolder folder(iFolder);
  THostSocket result(NewSocket());
  folder.Remove();
  // The mode is the socket's own before it has a name, so that it never is another one.
  const bool done = result.IsOpen() && fchmod(result.FFile, S_IRUSR | S_IWUSR) == 0 &&
                    WithAddress(folder, &bind, result.FFile) == 0 &&
                    listen(result.FFile, cBacklog) == 0;
  if (!done) {
    ThrowFileError(u"Im Ordner \"%s\" können keine Aufrufe angenommen werden: %s", ToUtf8(iFolder),
                   errno);
  }
  return result;
}

THostSocket THostSocket::Connect(TStringView iFolder) {
  THostSocket result(NewSocket());
  if (!result.IsOpen()) return {};
  if (WithAddress(TFolder(iFolder), &connect, result.FFile) != 0) return {};
  if (!result.IsOfThisUser()) return {};
  return result;
}

void THostSocket::Remove(TStringView iFolder) { TFolder(iFolder).Remove(); }

bool THostSocket::IsOfThisUser() const {
  ucred peer = {};
  socklen_t size = sizeof peer;
  return getsockopt(FFile, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

THostSocket THostSocket::Accept(bool& oExhausted) const {
  THostSocket result(accept4(FFile, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
  oExhausted = !result.IsOpen() && IsExhausted();
  if (result.IsOpen() && !result.IsOfThisUser()) return {};
  return result;
}

THostSocket::TEnd THostSocket::Receive(std::string& ioBytes) const {
  char bytes[65536];
  const ssize_t count = recv(FFile, bytes, sizeof bytes, 0);
  if (count > 0) ioBytes.append(bytes, static_cast<size_t>(count));
  return count > 0 || (count < 0 && MustWait()) ? TEnd::None : TEnd::Closed;
}

THostSocket::TEnd THostSocket::Send(std::string_view iBytes, size_t& oSent) const {
  const ssize_t count = send(FFile, iBytes.data(), iBytes.size(), MSG_NOSIGNAL);
  oSent = count > 0 ? static_cast<size_t>(count) : 0;
  return count >= 0 || MustWait() ? TEnd::None : TEnd::Closed;
}

bool TakeLine(std::string& ioBytes, std::string& oLine) {
  const size_t end = ioBytes.find('\n');
  if (end == std::string::npos) return false;
  oLine = ioBytes.substr(0, end);
  ioBytes.erase(0, end + 1);
  return true;
}

}  // namespace kk
