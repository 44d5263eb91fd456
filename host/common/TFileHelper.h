#pragma once

#include <string>

#include "host/base/TString.h"

namespace kk {

/// Where things lie on this machine; the host sets it once at start (SetHostFolders). All paths are
/// absolute, without a slash at the end.
struct THostFolders {
  TString Data;     ///< the user's data: the watch list, the sources' own files
  TString Config;   ///< the settings file
  TString State;    ///< the log
  TString Program;  ///< what is installed with the program: sounds, images
  TString Temp;     ///< temporary files
};

/// The folders of the XDG Base Directory Specification for this user ("kaufkobolde" in each), or
/// all that the user's data lie in as one folder if one is given. Program is ../share/kaufkobolde
/// beside the program; Temp is a folder of this user's in the machine's (TMPDIR, else /tmp).
/// Nothing is made on the disk.
THostFolders DefaultHostFolders(TStringView iOneFolder = {});

/// Main thread, before anything asks for a path.
void SetHostFolders(const THostFolders& iFolders);
const THostFolders& HostFolders();

/// Makes a folder and those above it, for this user alone (0700), where they are missing. Raises
/// EInOutError, also for an empty path.
void MakeHostFolder(TStringView iFolder);

/// Paths of files by the name alone. Each raises EInOutError while the host's folders are not set.
/// Main thread.
struct TFileHelper {
  /// In the program's data folder for this user; the folder is made if it is missing.
  static TString GetAppDataFileName(TStringView iName);
  /// In the program's folder.
  static TString GetLocalFileName(TStringView iName);
  /// In the folder for temporary files, which is made if it is missing; one that belongs to another
  /// user is refused.
  static TString GetTempFileName(TStringView iName);
};

/// The user's documents, the only folder that the system asks for.
inline constexpr int cSpecialFolderDocuments = 5;

/// The path of a known folder of the user; empty for one that isn't known. iFlag has no meaning
/// here. Documents: XDG_DOCUMENTS_DIR of user-dirs.dirs if there is such a folder, else the home
/// folder.
TString GetSpecialFolder(int iFolder, bool iFlag);

/// True if there is such a file (not a folder).
bool FileExists(TStringView iFileName);

/// No file beyond this size is read: a little below 2 GiB, what the text conversions can count.
inline constexpr int64_t cMaxFileSize = 0x7FFF0000;

/// All bytes of a file. Raises EInOutError with the reason if it can't be read, if it is a folder
/// or a device, and if it is beyond cMaxFileSize. Any thread.
std::string ReadFileBytes(TStringView iFileName);

/// Gives a file another name, over one that has it, and makes sure that both names are on the disk.
/// Raises EInOutError with the reason.
void RenameFile(TStringView iOldName, TStringView iNewName);
/// Takes a file away; no failure if there is none. Raises EInOutError with the reason.
void DeleteFile(TStringView iFileName);

/// Writes a file so that at every moment the old or the new one is on the disk: beside its place
/// (name + ".tmp"), flushed, renamed over it, and the folder flushed. Every step is checked; it
/// raises EInOutError with the reason and leaves the old file as it was. If the last step alone
/// fails, it raises as well, and the new file is in place but may not outlive a power failure.
///
/// The mode of an existing file stays; a new one gets iMode (less the process's umask). Where the
/// name is a symbolic link to a file, that file is written. A ".tmp" that lies there is taken away
/// and never followed. A pipe or a device is refused. Any thread; writes in this process come one
/// after the other.
void WriteFileAtomically(TStringView iFileName, std::string_view iBytes, unsigned iMode = 0644);

/// Puts a copy of a file beside it with date and time in its name ("name.2026-11-20-183000"), for a
/// file that can't be read and that a later save would write over. Where a copy of the same bytes
/// lies there already, nothing is made, and its name is the answer. Answers the copy's full name,
/// empty if it could not be made (the reason is logged).
TString PutAside(TStringView iFileName);

/// What the operations above do to the disk, one call each; tests install one that fails where it
/// is told to. Answers are those of the system calls: negative or false with errno set.
class IFileLayer {
 public:
  virtual ~IFileLayer() = default;
  virtual int Open(const char* iPath, int iFlags, unsigned iMode) = 0;
  virtual long Write(int iFile, const void* iBytes, size_t iCount) = 0;
  virtual int Flush(int iFile) = 0;
  virtual int Close(int iFile) = 0;
  virtual int Rename(const char* iOldPath, const char* iNewPath) = 0;
  virtual int Unlink(const char* iPath) = 0;
};
/// Installs a layer, which is borrowed, and answers the one before; null is the machine's.
IFileLayer* SetFileLayer(IFileLayer* iLayer);
/// The machine's own layer, for one that passes calls on.
IFileLayer& MachineFileLayer();

}  // namespace kk
