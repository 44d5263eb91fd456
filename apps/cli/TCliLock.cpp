#include "apps/cli/TCliLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "host/base/Exception.h"

namespace kk {
namespace {

constexpr char cLockName[] = "/kaufkobolde.lock";

[[noreturn]] void Fail(TStringView iFormat, TStringView iPath, int iError) {
  throw EInOutError(Format(iFormat, {iPath, FromUtf8(std::strerror(iError))}));
}

}  // namespace

TCliLock::TCliLock(TStringView iFolder) {
  const std::string folder = ToUtf8(iFolder);
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) Fail(u"Der Ordner \"%s\" kann nicht angelegt werden: %s", iFolder, error.value());
  FFile = open((folder + cLockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (FFile < 0) Fail(u"Im Ordner \"%s\" kann nicht geschrieben werden: %s", iFolder, errno);
  if (flock(FFile, LOCK_EX | LOCK_NB) == 0) return;
  const int cause = errno;
  close(FFile);
  if (cause != EWOULDBLOCK) Fail(u"Der Ordner \"%s\" lässt sich nicht sperren: %s", iFolder, cause);
  throw Exception(Format(
      u"Die Beobachtenliste in \"%s\" ist gerade in einem anderen Aufruf offen. Bitte warten, "
      u"bis er fertig ist.",
      {iFolder}));
}

TCliLock::~TCliLock() { close(FFile); }

}  // namespace kk
