#include "host/common/TFileHelper.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "host/base/Exception.h"
#include "host/common/TFileWriter.h"

namespace kk {

namespace fs = std::filesystem;

namespace {

constexpr char cProgramFolder[] = "kaufkobolde";
constexpr size_t cMaxUserDirsLine = 4096;

THostFolders& Installed() {
  static THostFolders folders;
  return folders;
}

std::string HomeFolder() {
  if (const char* home = std::getenv("HOME"); home != nullptr && home[0] == '/') return home;
  const passwd* user = getpwuid(geteuid());
  return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

// A folder of the XDG specification; a relative path counts as not set, as it demands.
std::string XdgFolder(const char* iVariable, const char* iBelowHome) {
  const char* value = std::getenv(iVariable);
  if (value != nullptr && value[0] == '/') return value;
  return HomeFolder() + "/" + iBelowHome;
}

TString Normal(const fs::path& iPath) {
  std::string path = fs::absolute(iPath).lexically_normal().string();
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return FromUtf8(path);
}

TString ProgramFolder() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  if (error) return Normal(fs::path("/usr/share") / cProgramFolder);
  return Normal(program.parent_path() / ".." / "share" / cProgramFolder);
}

TString TempFolder() {
  const char* value = std::getenv("TMPDIR");
  const fs::path folder = value != nullptr && value[0] == '/' ? value : "/tmp";
  return Normal(folder / (std::string(cProgramFolder) + "-" + std::to_string(geteuid())));
}

TString InFolder(const TString& iFolder, TStringView iName) {
  if (iFolder.empty()) throw EInOutError(u"Die Ordner des Programms sind nicht bekannt");
  return iFolder + u"/" + TString(iName);
}

// Folders that are missing are made for this user alone.
void MakeFolder(const TString& iFolder) {
  const std::string path = ToUtf8(iFolder);
  for (size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
    const std::string part = path.substr(0, end);
    if (mkdir(part.c_str(), 0700) != 0 && errno != EEXIST && errno != EISDIR) {
      const int error = errno;
      if (!fs::is_directory(part))
        ThrowFileError(u"Der Ordner %s lässt sich nicht anlegen: %s", part, error);
    }
    if (end == std::string::npos) return;
  }
}

// The folder for temporary files lies where every user of the machine may write.
void CheckOwnFolder(const TString& iFolder) {
  struct stat info {};
  const bool own = lstat(ToUtf8(iFolder).c_str(), &info) == 0 && S_ISDIR(info.st_mode) &&
                   info.st_uid == geteuid();
  if (!own) throw EInOutError(Format(u"Der Ordner %s gehört einem anderen Benutzer", {iFolder}));
}

// The value of one line of user-dirs.dirs: NAME="$HOME/Folder" or NAME="/Folder", with backslashes
// before characters that a shell would take.
std::string UserDirsValue(const std::string& iLine, const std::string& iName) {
  const size_t start = iLine.find_first_not_of(" \t");
  const std::string begin = iName + "=\"";
  if (start == std::string::npos || iLine.compare(start, begin.size(), begin) != 0) return {};
  std::string value;
  for (size_t i = start + begin.size(); i < iLine.size() && iLine[i] != '"'; ++i) {
    if (iLine[i] == '\\' && i + 1 < iLine.size()) ++i;
    value += iLine[i];
  }
  if (value == "$HOME" || value.starts_with("$HOME/")) value = HomeFolder() + value.substr(5);
  return value.starts_with('/') ? value : std::string();
}

std::string DocumentsFolder() {
  std::ifstream file(XdgFolder("XDG_CONFIG_HOME", ".config") + "/user-dirs.dirs");
  std::string folder;
  for (std::string line; std::getline(file, line) && line.size() < cMaxUserDirsLine;) {
    const std::string value = UserDirsValue(line, "XDG_DOCUMENTS_DIR");
    if (!value.empty()) folder = value;
  }
  std::error_code ignored;
  return fs::is_directory(folder, ignored) ? folder : HomeFolder();
}

}  // namespace

THostFolders DefaultHostFolders(TStringView iOneFolder) {
  THostFolders folders;
  folders.Program = ProgramFolder();
  folders.Temp = TempFolder();
  if (!iOneFolder.empty()) {
    folders.Data = folders.Config = folders.State = Normal(ToUtf8(iOneFolder));
    return folders;
  }
  const auto below = [](const std::string& iBase) {
    return Normal(fs::path(iBase) / cProgramFolder);
  };
  folders.Data = below(XdgFolder("XDG_DATA_HOME", ".local/share"));
  folders.Config = below(XdgFolder("XDG_CONFIG_HOME", ".config"));
  folders.State = below(XdgFolder("XDG_STATE_HOME", ".local/state"));
  return folders;
}

void SetHostFolders(const THostFolders& iFolders) { Installed() = iFolders; }

const THostFolders& HostFolders() { return Installed(); }

void MakeHostFolder(TStringView iFolder) {
  if (iFolder.empty()) throw EInOutError(u"Die Ordner des Programms sind nicht bekannt");
  MakeFolder(TString(iFolder));
}

TString TFileHelper::GetAppDataFileName(TStringView iName) {
  TString fileName = InFolder(HostFolders().Data, iName);
  MakeFolder(HostFolders().Data);
  return fileName;
}

TString TFileHelper::GetLocalFileName(TStringView iName) {
  return InFolder(HostFolders().Program, iName);
}

TString TFileHelper::GetTempFileName(TStringView iName) {
  TString fileName = InFolder(HostFolders().Temp, iName);
  MakeFolder(HostFolders().Temp);
  CheckOwnFolder(HostFolders().Temp);
  return fileName;
}

TString GetSpecialFolder(int iFolder, bool /*iFlag*/) {
  return iFolder == cSpecialFolderDocuments ? Normal(DocumentsFolder()) : TString();
}

bool FileExists(TStringView iFileName) {
  struct stat info {};
  return stat(ToUtf8(iFileName).c_str(), &info) == 0 && !S_ISDIR(info.st_mode);
}

}  // namespace kk
