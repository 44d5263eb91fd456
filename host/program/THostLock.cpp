#include "host/program/THostLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "host/common/TFileWriter.h"

namespace kk {
namespace {

constexpr char cLockName[] = "/kaufkobolde.lock";

}  // namespace

THostLock::THostLock(TStringView iFolder) {
  const std::string folder = ToUtf8(iFolder);
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) {
    ThrowFileError(u"Der Ordner \"%s\" kann nicht angelegt werden: %s", folder, error.value());
  }
  FFile = open((folder + cLockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (FFile < 0) {
    ThrowFileError(u"Im Ordner \"%s\" kann nicht geschrieben werden: %s", folder, errno);
  }
  if (flock(FFile, LOCK_EX | LOCK_NB) == 0) return;
  const int cause = errno;
  close(FFile);
  if (cause != EWOULDBLOCK) {
    ThrowFileError(u"Der Ordner \"%s\" lässt sich nicht sperren: %s", folder, cause);
  }
  throw EHostBusy(Format(
      u"Die Beobachtenliste in \"%s\" ist gerade in einem anderen Aufruf offen. Bitte warten, "
      u"bis er fertig ist.",
      {iFolder}));
}

THostLock::~THostLock() { close(FFile); }

}  // namespace kk
