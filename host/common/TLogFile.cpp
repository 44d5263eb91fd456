#include "host/common/TLogFile.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <filesystem>
#include <string>

#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"

namespace kk {

namespace {

struct TLevel {
  spdlog::level::level_enum Level;
  const char* Name;
};

TLevel LevelOf(TLogLevel iLevel) {
  switch (iLevel) {
    case TLogLevel::llError:
      return {spdlog::level::err, "Fehler"};
    case TLogLevel::llException:
      return {spdlog::level::err, "Ausnahme"};
    case TLogLevel::llDetails:
      return {spdlog::level::info, "Detail"};
    case TLogLevel::llDebug:
      return {spdlog::level::debug, "Debug"};
    case TLogLevel::llInfo:
    default:
      return {spdlog::level::info, "Info"};
  }
}

std::string OneLine(TStringView iText) {
  return ToUtf8(WithoutControlCharacters(ToSingleLine(iText)));
}

std::shared_ptr<spdlog::logger> MakeLogger(const spdlog::sink_ptr& iSink, bool iVerbose) {
  auto logger = std::make_shared<spdlog::logger>("kaufkobolde", iSink);
  logger->set_pattern("%Y-%m-%d %H:%M:%S.%e %v");
  logger->set_level(iVerbose ? spdlog::level::debug : spdlog::level::info);
  logger->flush_on(spdlog::level::trace);
  return logger;
}

}  // namespace

struct TLogFile::TImpl {
  std::shared_ptr<spdlog::logger> File;
  std::shared_ptr<spdlog::logger> Stderr;

  void Open(TStringView iFileName, bool iVerbose) {
    const std::string path = ToUtf8(iFileName);
    MakeHostFolder(FromUtf8(std::filesystem::path(path).parent_path().string()));
    File = MakeLogger(std::make_shared<spdlog::sinks::rotating_file_sink_mt>(
                          path, TLogFile::cMaxFileSize, TLogFile::cOldFiles),
                      iVerbose);
  }
};

TLogFile::TLogFile(TStringView iFileName, bool iVerbose) : FImpl(std::make_unique<TImpl>()) {
  FImpl->Stderr = MakeLogger(std::make_shared<spdlog::sinks::stderr_sink_mt>(), iVerbose);
  // Without its file the log says so where it still can, and goes on there.
  try {
    FImpl->Open(iFileName, iVerbose);
  } catch (const std::exception& e) {
    FImpl->Stderr->set_level(iVerbose ? spdlog::level::debug : spdlog::level::err);
    Write(TLogLevel::llException, u"Host", MessageOf(e));
    return;
  }
  if (!iVerbose) FImpl->Stderr->set_level(spdlog::level::off);
}

TLogFile::~TLogFile() = default;

bool TLogFile::IsOpen() const { return FImpl->File != nullptr; }

void TLogFile::Write(TLogLevel iLevel, TStringView iSender, TStringView iText) {
  const TLevel level = LevelOf(iLevel);
  std::string line = std::string("[") + level.Name + "] ";
  if (iLevel != TLogLevel::llDetails) line += OneLine(iSender) + ": ";
  line += OneLine(iText);
  const spdlog::string_view_t view(line.data(), line.size());
  if (FImpl->File) FImpl->File->log(level.Level, view);
  FImpl->Stderr->log(level.Level, view);
}

TString DefaultLogFileName() { return HostFolders().State + u"/kaufkobolde.log"; }

}  // namespace kk
