#include "host/printing/TPdfProcess.h"

#include <poll.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "host/base/Exception.h"
#include "host/common/TFileWriter.h"

namespace kk {
namespace {

constexpr int cTurnMs = 50;
constexpr size_t cMaxErrors = 64 * 1024;
constexpr std::string_view cErrorPrefix = "kaufkobolde-print: ";

// A failure names it; in a folder that is gone there is none.
std::string AbsolutePath(const std::string& iPath) {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(iPath, error);
  return error ? iPath : path.string();
}

[[noreturn]] void Fail(TStringView iReason) {
  throw Exception(Format(u"Das PDF wurde nicht geschrieben: %s", {iReason}));
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
  const std::string program = iOptions.Program.empty()
                                  ? THelperProcess::ProgramBeside("kaufkobolde-print")
                                  : iOptions.Program;
  const int error = FHelper.Start(program, AbsolutePath(iPath),
                                  {.Input = FInput.Handle(), .Errors = FErrors.Handle()});
  if (error != 0) {
    Fail(Format(u"Das Hilfsprogramm kaufkobolde-print lässt sich nicht starten: %s",
                {ErrorText(error)}));
  }
}

void TPdfProcess::Wait(const std::stop_token& iStop) {
  int status = 0;
  while (!HasEnded(status)) {
    if (iStop.stop_requested()) Fail(u"Abgebrochen");
    if (TClock::now() > FDeadline) Fail(u"Das Hilfsprogramm kaufkobolde-print wird nicht fertig");
    // Without a handle, which a machine may refuse, this only waits.
    pollfd end = {FHelper.Handle(), POLLIN, 0};
    poll(&end, 1, cTurnMs);
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) Fail(ReasonOf(status));
}

bool TPdfProcess::HasEnded(int& oStatus) {
  const THelperProcess::TEnd end = FHelper.TakeEnd(oStatus, false);
  if (end == THelperProcess::TEnd::Vanished) {
    Fail(u"Das Hilfsprogramm kaufkobolde-print ist verschwunden");
  }
  return end == THelperProcess::TEnd::Ended;
}

TString TPdfProcess::ReasonOf(int iStatus) const {
  if (WIFSIGNALED(iStatus)) {
    return Format(u"Das Hilfsprogramm kaufkobolde-print wurde abgebrochen (Signal %d)",
                  {WTERMSIG(iStatus)});
  }
  const TString reason = THelperProcess::LastLine(FErrors.Read(cMaxErrors), cErrorPrefix);
  return reason.empty() ? u"Das Hilfsprogramm kaufkobolde-print nennt keinen Grund" : reason;
}

}  // namespace kk
