#include "host/delivery/sound/TSoundProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>

namespace kk {

namespace {

constexpr size_t cMaxOutput = 4096;
constexpr size_t cPipeSize = 64 * 1024;
constexpr std::string_view cErrorPrefix = "kaufkobolde-play: ";
constexpr TStringView cCancelled = u"Abgebrochen, das Programm wird beendet";

TString SystemText(int iError) { return FromUtf8(std::strerror(iError)); }

void CloseHandle(int& ioHandle) {
  if (ioHandle >= 0) close(ioHandle);
  ioHandle = -1;
}

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
  const std::string program = FOptions.Program.empty()
                                  ? THelperProcess::ProgramBeside("kaufkobolde-play")
                                  : FOptions.Program;
  const int error = FHelper.Start(
      program, iPath, {.Output = FLengthLine.End, .Errors = FErrors.End}, FOptions.Environment);
  if (error != 0) return error;
  return FHelper.Handle() < 0 ? errno : 0;
}

TSoundProcess::~TSoundProcess() {
  FLengthLine.CloseBegin();
  FErrors.CloseBegin();
}

TSoundResult TSoundProcess::Wait(int iStop) {
  if (FStartFailure.Error != 0) return FStartFailure;
  TSoundResult failure;
  if (!WaitForEnd(iStop, failure)) return failure;
  int status = 0;
  if (FHelper.TakeEnd(status, true) != THelperProcess::TEnd::Ended) {
    return {ECHILD, u"Das Hilfsprogramm für Töne ist verschwunden"};
  }
  return ResultOf(status);
}

bool TSoundProcess::WaitForEnd(int iStop, TSoundResult& oResult) {
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(FDeadline - TClock::now());
    if (left.count() <= 0) {
      oResult = {ETIMEDOUT, u"Die Tonausgabe des Rechners antwortet nicht"};
      return false;
    }
    std::array<pollfd, 4> handles = {pollfd{iStop, POLLIN, 0}, pollfd{FHelper.Handle(), POLLIN, 0},
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

TString TSoundProcess::ToldReason() const {
  const TString reason = THelperProcess::LastLine(FErrors.Text, cErrorPrefix);
  return reason.empty() ? u"Das Hilfsprogramm für Töne nennt keinen Grund" : reason;
}

}  // namespace kk
