#include "host/delivery/sound/TSoundProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <filesystem>

namespace kk {

namespace {

constexpr size_t cMaxOutput = 4096;
constexpr size_t cPipeSize = 64 * 1024;
constexpr std::string_view cErrorPrefix = "kaufkobolde-play: ";
constexpr TStringView cCancelled = u"Abgebrochen, das Programm wird beendet";

TString SystemText(int iError) { return FromUtf8(std::strerror(iError)); }

std::string ProgramBeside() {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  return (self.parent_path() / "kaufkobolde-play").string();
}

void CloseHandle(int& ioHandle) {
  if (ioHandle >= 0) close(ioHandle);
  ioHandle = -1;
}

// What a new process takes over from this one: nothing but its environment and two ways out.
class TSpawn {
 public:
  TSpawn(int iOutput, int iErrors) {
    posix_spawn_file_actions_init(&FFiles);
    posix_spawn_file_actions_adddup2(&FFiles, iOutput, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&FFiles, iErrors, STDERR_FILENO);
    posix_spawn_file_actions_addopen(&FFiles, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
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
  posix_spawn_file_actions_t FFiles;
  posix_spawnattr_t FAttributes;
};

}  // namespace

bool TSoundProcess::TOutput::Open() {
  int ends[2] = {-1, -1};
  if (pipe2(ends, O_CLOEXEC) != 0) return false;
  Begin = ends[0];
  End = ends[1];
  return fcntl(Begin, F_SETFL, O_NONBLOCK) == 0;
}

// All that is there, and no more than a pipe holds, so that nobody can keep this going.
void TSoundProcess::TOutput::Read() {
  std::array<char, 4096> bytes{};
  for (size_t sum = 0; Begin >= 0 && sum < cPipeSize;) {
    const ssize_t count = read(Begin, bytes.data(), bytes.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (count <= 0) return CloseBegin();
    sum += static_cast<size_t>(count);
    Text.append(bytes.data(), static_cast<size_t>(count));
    if (Text.size() > cMaxOutput) Text.erase(0, Text.size() - cMaxOutput);
  }
}

void TSoundProcess::TOutput::CloseBegin() { CloseHandle(Begin); }

void TSoundProcess::TOutput::CloseEnd() { CloseHandle(End); }

TSoundProcess::TSoundProcess(const TSoundOptions& iOptions, const std::string& iPath)
    : FOptions(iOptions), FDeadline(TClock::now() + iOptions.Grace) {
  const int error = Start(iPath);
  FLengthLine.CloseEnd();
  FErrors.CloseEnd();
  if (error == 0) return;
  FStartFailure = {error, Format(u"Das Hilfsprogramm für Töne lässt sich nicht starten: %s",
                                 {SystemText(error)})};
}

// Answers the number of the operating system for what went wrong, or 0.
int TSoundProcess::Start(const std::string& iPath) {
  if (!FLengthLine.Open() || !FErrors.Open()) return errno;
  const TSpawn spawn(FLengthLine.End, FErrors.End);
  const std::string program = FOptions.Program.empty() ? ProgramBeside() : FOptions.Program;
  const int error = spawn.Run(program, iPath, FOptions.Environment, FProcess);
  if (error != 0) {
    FProcess = -1;
    return error;
  }
  // The library's own header for it can't be used from C++ (glibc 2.36).
  FProcessHandle = static_cast<int>(syscall(SYS_pidfd_open, FProcess, 0));
  return FProcessHandle < 0 ? errno : 0;
}

TSoundProcess::~TSoundProcess() {
  if (FProcess > 0) {
    kill(FProcess, SIGKILL);
    while (waitpid(FProcess, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  CloseHandle(FProcessHandle);
  FLengthLine.CloseBegin();
  FErrors.CloseBegin();
}

TSoundResult TSoundProcess::Wait(int iStop) {
  if (FStartFailure.Error != 0) return FStartFailure;
  TSoundResult failure;
  if (!WaitForEnd(iStop, failure)) return failure;
  int status = 0;
  while (waitpid(FProcess, &status, 0) < 0) {
    if (errno != EINTR) return {ECHILD, u"Das Hilfsprogramm für Töne ist verschwunden"};
  }
  FProcess = -1;
  return ResultOf(status);
}

bool TSoundProcess::WaitForEnd(int iStop, TSoundResult& oResult) {
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(FDeadline - TClock::now());
    if (left.count() <= 0) {
      oResult = {ETIMEDOUT, u"Die Tonausgabe des Rechners antwortet nicht"};
      return false;
    }
    std::array<pollfd, 4> handles = {pollfd{iStop, POLLIN, 0}, pollfd{FProcessHandle, POLLIN, 0},
                                     pollfd{FLengthLine.Begin, POLLIN, 0},
                                     pollfd{FErrors.Begin, POLLIN, 0}};
    poll(handles.data(), handles.size(), static_cast<int>(left.count()));
    if (handles[0].revents != 0) {
      oResult = {ECANCELED, TString(cCancelled)};
      return false;
    }
    FLengthLine.Read();
    FErrors.Read();
    if (!TakeLength(oResult)) return false;
    if (handles[1].revents != 0) return true;
  }
}

bool TSoundProcess::TakeLength(TSoundResult& oResult) {
  const size_t end = FLengthLine.Text.find('\n');
  if (FIsLengthKnown || end == std::string::npos) return true;
  int64_t length = 0;
  const char* last = FLengthLine.Text.data() + end;
  const auto parsed = std::from_chars(FLengthLine.Text.data(), last, length);
  if (parsed.ec != std::errc() || parsed.ptr != last || length < 0) {
    oResult = {EPROTO, u"Das Hilfsprogramm für Töne gibt eine unverständliche Antwort"};
    return false;
  }
  if (length > FOptions.MaxLength.count()) {
    const int64_t seconds =
        std::chrono::duration_cast<std::chrono::seconds>(FOptions.MaxLength).count();
    oResult = {EFBIG, Format(u"Der Ton dauert länger als %d Sekunden", {seconds})};
    return false;
  }
  FIsLengthKnown = true;
  FDeadline = TClock::now() + std::chrono::milliseconds(length) + FOptions.Grace;
  return true;
}

TSoundResult TSoundProcess::ResultOf(int iStatus) const {
  if (WIFSIGNALED(iStatus)) {
    return {EIO, Format(u"Das Hilfsprogramm für Töne wurde abgebrochen (Signal %d)",
                        {WTERMSIG(iStatus)})};
  }
  const int code = WEXITSTATUS(iStatus);
  if (code == 0 && FIsLengthKnown) return {};
  if (code == 0) return {EPROTO, u"Das Hilfsprogramm für Töne gibt eine unverständliche Antwort"};
  return {code, ToldReason()};
}

// The libraries beneath the program may have written before.
TString TSoundProcess::ToldReason() const {
  const size_t begin = FErrors.Text.rfind(cErrorPrefix);
  if (begin == std::string::npos) return u"Das Hilfsprogramm für Töne nennt keinen Grund";
  const size_t from = begin + cErrorPrefix.size();
  const size_t end = FErrors.Text.find('\n', from);
  return WithoutControlCharacters(FromUtf8(FErrors.Text.substr(from, end - from)));
}

}  // namespace kk
