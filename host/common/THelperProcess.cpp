#include "host/common/THelperProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

namespace kk {

namespace {

// What a new process takes over from this one.
class TSpawn {
 public:
  explicit TSpawn(const THelperProcess::TFiles& iFiles) {
    posix_spawn_file_actions_init(&FFiles);
    Give(iFiles.Input, STDIN_FILENO, O_RDONLY);
    Give(iFiles.Output, STDOUT_FILENO, O_WRONLY);
    Give(iFiles.Errors, STDERR_FILENO, O_WRONLY);
    posix_spawn_file_actions_addclosefrom_np(&FFiles, STDERR_FILENO + 1);
    sigset_t none;
    sigemptyset(&none);
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_init(&FAttributes);
    posix_spawnattr_setsigmask(&FAttributes, &none);
    posix_spawnattr_setsigdefault(&FAttributes, &all);
    // In a session of its own it does not get the Ctrl+C that is meant for this program.
    posix_spawnattr_setflags(
        &FAttributes,
        static_cast<short>(POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
  }
  ~TSpawn() {
    posix_spawnattr_destroy(&FAttributes);
    posix_spawn_file_actions_destroy(&FFiles);
  }
  TSpawn(const TSpawn&) = delete;
  TSpawn& operator=(const TSpawn&) = delete;

  int Run(std::string iProgram, std::string iArgument, std::vector<std::string> iEnvironment,
          pid_t& oProcess) const {
    char* const arguments[] = {iProgram.data(), iArgument.data(), nullptr};
    std::vector<char*> environment;
    // The first of two equal names counts.
    for (std::string& entry : iEnvironment) environment.push_back(entry.data());
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
      environment.push_back(*entry);
    }
    environment.push_back(nullptr);
    return posix_spawn(&oProcess, iProgram.c_str(), &FFiles, &FAttributes, arguments,
                       environment.data());
  }

 private:
  void Give(int iFile, int iAs, int iMode) {
    if (iFile >= 0) {
      posix_spawn_file_actions_adddup2(&FFiles, iFile, iAs);
    } else {
      posix_spawn_file_actions_addopen(&FFiles, iAs, "/dev/null", iMode, 0);
    }
  }

  posix_spawn_file_actions_t FFiles;
  posix_spawnattr_t FAttributes;
};

}  // namespace

THelperProcess::~THelperProcess() {
  if (FProcess > 0) {
    kill(FProcess, SIGKILL);
    int status = 0;
    TakeEnd(status, true);
  }
  if (FHandle >= 0) close(FHandle);
}

std::string THelperProcess::ProgramBeside(std::string_view iName) {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  return (self.parent_path() / iName).string();
}

int THelperProcess::Start(std::string iProgram, std::string iArgument, const TFiles& iFiles,
                          std::vector<std::string> iEnvironment) {
  const int error = TSpawn(iFiles).Run(std::move(iProgram), std::move(iArgument),
                                       std::move(iEnvironment), FProcess);
  if (error != 0) {
    FProcess = -1;
    return error;
  }
  // The library's own header for it can't be used from C++ (glibc 2.36).
  FHandle = static_cast<int>(syscall(SYS_pidfd_open, FProcess, 0));
  return 0;
}

THelperProcess::TEnd THelperProcess::TakeEnd(int& oStatus, bool iWaits) {
  if (FProcess < 0) return TEnd::Vanished;
  pid_t ended = -1;
  do {
    ended = waitpid(FProcess, &oStatus, iWaits ? 0 : WNOHANG);
  } while (ended < 0 && errno == EINTR);
  if (ended == 0) return TEnd::Runs;
  FProcess = -1;
  return ended > 0 ? TEnd::Ended : TEnd::Vanished;
}

TString THelperProcess::LastLine(std::string_view iTold, std::string_view iMark) {
  const size_t begin = iTold.rfind(iMark);
  if (begin == std::string_view::npos) return {};
  const std::string_view rest = iTold.substr(begin + iMark.size());
  return WithoutControlCharacters(FromUtf8(rest.substr(0, rest.find('\n'))));
}

}  // namespace kk
