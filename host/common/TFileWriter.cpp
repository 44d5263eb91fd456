#include "host/common/TFileWriter.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <utility>

#include "host/base/Exception.h"
#include "host/base/Log.h"
#include "host/base/TClock.h"

namespace kk {

namespace fs = std::filesystem;

namespace {

class TMachineFileLayer : public IFileLayer {
 public:
  int Open(const char* iPath, int iFlags, unsigned iMode) override {
    return open(iPath, iFlags, iMode);
  }
  long Write(int iFile, const void* iBytes, size_t iCount) override {
    return write(iFile, iBytes, iCount);
  }
  int Flush(int iFile) override { return fsync(iFile); }
  int Close(int iFile) override { return close(iFile); }
  int Rename(const char* iOldPath, const char* iNewPath) override {
    return rename(iOldPath, iNewPath);
  }
  int Unlink(const char* iPath) override { return unlink(iPath); }
};

std::atomic<IFileLayer*> installedLayer{nullptr};

IFileLayer& Layer() {
  IFileLayer* layer = installedLayer.load();
  return layer != nullptr ? *layer : MachineFileLayer();
}

constexpr TStringView cCannotRead = u"Die Datei %s lässt sich nicht lesen: %s";
constexpr TStringView cCannotWrite = u"Die Datei %s lässt sich nicht schreiben: %s";

// A call that a signal interrupted is made again.
template <class Call>
auto Retried(Call&& iCall) {
  for (;;) {
    const auto result = iCall();
    if (result >= 0 || errno != EINTR) return result;
  }
}

// A link stays a link: what is replaced is the file behind it.
std::string BehindLinks(const std::string& iPath) {
  std::error_code error;
  const fs::path path = fs::canonical(iPath, error);
  return error ? iPath : path.string();
}

// An open file that is closed at the end of a scope.
class TOpenFile {
 public:
  TOpenFile(IFileLayer& ioLayer, const std::string& iPath, int iFlags)
      : FLayer(ioLayer), FFile(ioLayer.Open(iPath.c_str(), iFlags | O_CLOEXEC, 0)) {}
  ~TOpenFile() {
    if (FFile >= 0) FLayer.Close(FFile);
  }
  TOpenFile(const TOpenFile&) = delete;
  TOpenFile& operator=(const TOpenFile&) = delete;
  int Get() const { return FFile; }

 private:
  IFileLayer& FLayer;
  int FFile;
};

std::string ReadAll(int iFile, const std::string& iPath, size_t iExpected) {
  std::string bytes(iExpected + 1, '\0');  // one more, so that the end shows without growing
  size_t size = 0;
  for (;;) {
    const ssize_t count =
        Retried([&] { return read(iFile, bytes.data() + size, bytes.size() - size); });
    if (count < 0) ThrowFileError(cCannotRead, iPath, errno);
    if (count == 0) break;
    size += static_cast<size_t>(count);
    if (size > cMaxFileSize) ThrowFileError(cCannotRead, iPath, EFBIG);
    if (size == bytes.size()) bytes.resize(size * 2);
  }
  bytes.resize(size);
  return bytes;
}

// Names of copies put aside: the file's own, a dot, and the moment.
std::string CopyStem(const std::string& iPath) { return iPath + "."; }

std::string FindSameCopy(const std::string& iPath, const std::string& iBytes) {
  const std::string stem = CopyStem(fs::path(iPath).filename().string());
  for (const auto& entry : fs::directory_iterator(fs::absolute(iPath).parent_path())) {
    const std::string name = entry.path().filename().string();
    const bool copy = name.starts_with(stem) && name.size() > stem.size() &&
                      name.find_first_not_of("0123456789-", stem.size()) == std::string::npos;
    if (!copy || !entry.is_regular_file() || entry.file_size() != iBytes.size()) continue;
    if (ReadFileBytes(FromUtf8(entry.path().string())) == iBytes) return entry.path().string();
  }
  return {};
}

std::string NewCopyName(const std::string& iPath) {
  const std::string stem = CopyStem(iPath) + ToUtf8(FormatDateTime(u"yyyy-mm-dd-hhnnss", Now()));
  std::string name = stem;
  for (int i = 2; fs::exists(fs::symlink_status(name)); ++i) name = stem + "-" + std::to_string(i);
  return name;
}

std::string MakeCopy(const std::string& iPath) {
  const std::string bytes = ReadFileBytes(FromUtf8(iPath));
  std::string copy = FindSameCopy(iPath, bytes);
  if (!copy.empty()) return copy;
  copy = NewCopyName(iPath);
  WriteFileAtomically(FromUtf8(copy), bytes, ModeOf(iPath));
  return copy;
}

}  // namespace

TString ErrorText(int iError) {
  switch (iError) {
    case ENOENT:
      return u"Datei oder Ordner nicht gefunden";
    case EACCES:
    case EPERM:
      return u"Zugriff verweigert";
    case ENOSPC:
    case EDQUOT:
      return u"Der Datenträger ist voll";
    case EROFS:
      return u"Der Datenträger ist schreibgeschützt";
    case EIO:
      return u"Fehler beim Zugriff auf den Datenträger";
    case EISDIR:
      return u"Ist ein Ordner";
    case ENOTDIR:
      return u"Ist kein Ordner";
    case EFBIG:
      return u"Die Datei ist zu groß";
    case ENAMETOOLONG:
      return u"Der Name ist zu lang";
    case ENOEXEC:
      return u"Ist kein Programm für diesen Rechner";
    default:
      return FromUtf8(std::generic_category().message(iError));
  }
}

void ThrowFileError(TStringView iFormat, const std::string& iPath, int iError) {
  throw EInOutError(Format(iFormat, {FromUtf8(iPath), ErrorText(iError)}));
}

IFileLayer& MachineFileLayer() {
  static TMachineFileLayer layer;
  return layer;
}

IFileLayer* SetFileLayer(IFileLayer* iLayer) { return installedLayer.exchange(iLayer); }

unsigned ModeOf(const std::string& iPath) {
  struct stat info {};
  return stat(iPath.c_str(), &info) == 0 ? info.st_mode & 0777 : 0600;
}

void FlushFolderOf(const std::string& iPath) {
  const std::string folder = fs::path(iPath).parent_path().string();
  const TOpenFile file(Layer(), folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY);
  // Some network file systems can't flush a folder and say so with EINVAL.
  const bool flushed = file.Get() >= 0 &&
                       (Retried([&] { return Layer().Flush(file.Get()); }) == 0 || errno == EINVAL);
  if (!flushed) ThrowFileError(u"Der Ordner %s lässt sich nicht sichern: %s", folder, errno);
}

TFileWriter::TFileWriter(const std::string& iPath) : FPath(iPath), FTempPath(iPath + ".tmp") {}

TFileWriter::~TFileWriter() {
  if (FFile >= 0) Layer().Close(FFile);
  if (FMade) Layer().Unlink(FTempPath.c_str());
}

void TFileWriter::Fail() { ThrowFileError(cCannotWrite, FPath, errno); }

void TFileWriter::Open(unsigned iMode) {
  struct stat old {};
  const bool keepMode = stat(FPath.c_str(), &old) == 0;
  // A pipe or a device would be gone for everyone.
  if (keepMode && !S_ISREG(old.st_mode) && !S_ISDIR(old.st_mode)) {
    throw EInOutError(Format(cCannotWrite, {FromUtf8(FPath), u"Ist keine gewöhnliche Datei"}));
  }
  if (Layer().Unlink(FTempPath.c_str()) != 0 && errno != ENOENT) Fail();
  FFile =
      Layer().Open(FTempPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, iMode);
  if (FFile < 0) Fail();
  FMade = true;
  if (keepMode && fchmod(FFile, old.st_mode & 0777) != 0) Fail();
}

void TFileWriter::Write(std::string_view iBytes, unsigned iMode) {
  Open(iMode);
  while (!iBytes.empty()) {
    const long count = Retried([&] { return Layer().Write(FFile, iBytes.data(), iBytes.size()); });
    if (count == 0) errno = EIO;
    if (count <= 0) Fail();
    iBytes.remove_prefix(std::min(static_cast<size_t>(count), iBytes.size()));
  }
  if (Retried([&] { return Layer().Flush(FFile); }) != 0) Fail();
}

void TFileWriter::Commit() {
  const int file = std::exchange(FFile, -1);  // closed even if closing fails
  if (Layer().Close(file) != 0) Fail();
  if (Layer().Rename(FTempPath.c_str(), FPath.c_str()) != 0) Fail();
  FMade = false;
  FlushFolderOf(FPath);
}

std::string ReadFileBytes(TStringView iFileName) {
  const std::string path = ToUtf8(iFileName);
  // Without O_NONBLOCK a named pipe would hold the program until somebody writes.
  const TOpenFile file(MachineFileLayer(), path, O_RDONLY | O_NONBLOCK);
  struct stat info {};
  if (file.Get() < 0 || fstat(file.Get(), &info) != 0) ThrowFileError(cCannotRead, path, errno);
  if (S_ISDIR(info.st_mode)) ThrowFileError(cCannotRead, path, EISDIR);
  if (!S_ISREG(info.st_mode)) ThrowFileError(cCannotRead, path, EINVAL);
  if (info.st_size > cMaxFileSize) ThrowFileError(cCannotRead, path, EFBIG);
  return ReadAll(file.Get(), path, static_cast<size_t>(info.st_size));
}

void RenameFile(TStringView iOldName, TStringView iNewName) {
  const std::string oldPath = ToUtf8(iOldName);
  const std::string newPath = ToUtf8(iNewName);
  if (Layer().Rename(oldPath.c_str(), newPath.c_str()) != 0) {
    ThrowFileError(u"Die Datei %s lässt sich nicht umbenennen: %s", oldPath, errno);
  }
  FlushFolderOf(newPath);
  if (fs::path(oldPath).parent_path() != fs::path(newPath).parent_path()) FlushFolderOf(oldPath);
}

void DeleteFile(TStringView iFileName) {
  const std::string path = ToUtf8(iFileName);
  if (Layer().Unlink(path.c_str()) != 0) {
    if (errno == ENOENT) return;
    ThrowFileError(u"Die Datei %s lässt sich nicht löschen: %s", path, errno);
  }
  FlushFolderOf(path);
}

void WriteFileAtomically(TStringView iFileName, std::string_view iBytes, unsigned iMode) {
  static std::mutex oneAtATime;  // two writers of one file would share its ".tmp"
  const std::lock_guard lock(oneAtATime);
  TFileWriter writer(BehindLinks(ToUtf8(iFileName)));
  writer.Write(iBytes, iMode);
  writer.Commit();
}

TString PutAside(TStringView iFileName) {
  try {
    return FromUtf8(MakeCopy(ToUtf8(iFileName)));
  } catch (const std::exception& e) {
    LogError(u"Host", u"Von der Datei %s konnte keine Kopie angelegt werden: %s",
             {iFileName, ToSingleLine(MessageOf(e))});
    return {};
  }
}

}  // namespace kk
