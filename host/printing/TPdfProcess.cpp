#include "host/printing/TPdfProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

#include "host/base/Exception.h"
#include "host/common/TFileWriter.h"

namespace kk {
namespace {

constexpr int cTurnMs = 50;
constexpr size_t cMaxErrors = 64 * 1024;
constexpr std::string_view cErrorPrefix = "kaufkobolde-print: ";

std::string ProgramBeside() {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  return (self.parent_path() / "kaufkobolde-print").string();
}

// A failure names it; in a folder that is gone there is none.
std::string AbsolutePath(const std::string& iPath) {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(iPath, error);
  return error ? iPath : path.string();
}

[[noreturn]] void Fail(TStringView iReason) {
  throw Exception(Format(u"Das PDF wurde nicht geschrieben: %s", {iReason}));
}

// The new process takes over the environment and these two files alone.
int Spawn(std::string iProgram, std::string iPath, int iInput, int iErrors, pid_t& oProcess) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, iInput, STDIN_FILENO);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_adddup2(&files, iErrors, STDERR_FILENO);
  posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t none;
  sigemptyset(&none);
  sigset_t all;
  sigfillset(&all);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setsigdefault(&attributes, &all);
  // In a session of its own it does not get the Ctrl+C that is meant for this program.
  posix_spawnattr_setflags(
      &attributes,
      static_cast<short>(POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
  char* const arguments[] = {iProgram.data(), iPath.data(), nullptr};
  const int error =
      posix_spawn(&oProcess, iProgram.c_str(), &files, &attributes, arguments, environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  return error;
}

}  // namespace

TPdfProcess::TMemoryFile::TMemoryFile(const char* iName)
    : FHandle(memfd_create(iName, MFD_CLOEXEC)) {
  if (FHandle < 0) Fail(ErrorText(errno));
}

TPdfProcess::TMemoryFile::~TMemoryFile() { close(FHandle); }

void TPdfProcess::TMemoryFile::Write(std::string_view iBytes) {
  while (!iBytes.empty()) {
    const ssize_t count = write(FHandle, iBytes.data(), iBytes.size());
    if (count < 0 && errno != EINTR) Fail(ErrorText(errno));
    if (count > 0) iBytes.remove_prefix(static_cast<size_t>(count));
  }
  if (lseek(FHandle, 0, SEEK_SET) < 0) Fail(ErrorText(errno));
}

std::string TPdfProcess::TMemoryFile::Read(size_t iMax) const {
  std::string bytes(iMax, '\0');
  const ssize_t count = pread(FHandle, bytes.data(), bytes.size(), 0);
  bytes.resize(count > 0 ? static_cast<size_t>(count) : 0);
  return bytes;
}

TPdfProcess::TPdfProcess(const TPdfOptions& iOptions, const std::string& iPath,
                         std::string_view iJson)
    : FDeadline(TClock::now() + iOptions.Deadline) {
  if (iPath.empty() || iPath.find('\0') != std::string::npos) Fail(u"Der Dateiname ist ungültig");
  FInput.Write(iJson);
  const std::string program = iOptions.Program.empty() ? ProgramBeside() : iOptions.Program;
  const int error =
      Spawn(program, AbsolutePath(iPath), FInput.Handle(), FErrors.Handle(), FProcess);
  if (error != 0) {
    Fail(Format(u"Das Hilfsprogramm kaufkobolde-print lässt sich nicht starten: %s",
                {ErrorText(error)}));
  }
  // The library's own header for it can't be used from C++ (glibc 2.36).
  FProcessHandle = static_cast<int>(syscall(SYS_pidfd_open, FProcess, 0));
}

TPdfProcess::~TPdfProcess() {
  if (FProcess > 0) {
    kill(FProcess, SIGKILL);
    while (waitpid(FProcess, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  if (FProcessHandle >= 0) close(FProcessHandle);
}

void TPdfProcess::Wait(const std::stop_token& iStop) {
  int status = 0;
  while (!HasEnded(status)) {
    if (iStop.stop_requested()) Fail(u"Abgebrochen");
    if (TClock::now() > FDeadline) Fail(u"Das Hilfsprogramm kaufkobolde-print wird nicht fertig");
    // Without a handle, which a machine may refuse, this only waits.
    pollfd end = {FProcessHandle, POLLIN, 0};
    poll(&end, 1, cTurnMs);
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) Fail(ReasonOf(status));
}

bool TPdfProcess::HasEnded(int& oStatus) {
  const pid_t ended = waitpid(FProcess, &oStatus, WNOHANG);
  if (ended == 0 || (ended < 0 && errno == EINTR)) return false;
  FProcess = -1;
  if (ended < 0) Fail(u"Das Hilfsprogramm kaufkobolde-print ist verschwunden");
  return true;
}

// The libraries beneath the program may have written before.
TString TPdfProcess::ReasonOf(int iStatus) const {
  if (WIFSIGNALED(iStatus)) {
    return Format(u"Das Hilfsprogramm kaufkobolde-print wurde abgebrochen (Signal %d)",
                  {WTERMSIG(iStatus)});
  }
  const std::string text = FErrors.Read(cMaxErrors);
  const size_t begin = text.rfind(cErrorPrefix);
  if (begin == std::string::npos) return u"Das Hilfsprogramm kaufkobolde-print nennt keinen Grund";
  const size_t from = begin + cErrorPrefix.size();
  return WithoutControlCharacters(FromUtf8(text.substr(from, text.find('\n', from) - from)));
}

}  // namespace kk
