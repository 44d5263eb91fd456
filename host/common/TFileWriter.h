#pragma once

#include <string>

#include "host/common/TFileHelper.h"

namespace kk {

/// What the machine says of an error (errno); the frequent ones in the user's language, whatever
/// the machine's. Any thread.
TString ErrorText(int iError);

/// Raises EInOutError with a text of two "%s": the path and what the machine says of the error.
[[noreturn]] void ThrowFileError(TStringView iFormat, const std::string& iPath, int iError);

/// One safe write of a file (WriteFileAtomically): a file beside the place, that takes the place
/// when it is whole. What is not brought to its end is taken away.
class TFileWriter {
 public:
  explicit TFileWriter(const std::string& iPath);
  ~TFileWriter();
  TFileWriter(const TFileWriter&) = delete;
  TFileWriter& operator=(const TFileWriter&) = delete;

  void Write(std::string_view iBytes, unsigned iMode);
  /// Closes the file, renames it over the place and flushes the folder.
  void Commit();

 private:
  void Open(unsigned iMode);
  void Fail();

  std::string FPath;
  std::string FTempPath;
  int FFile = -1;
  bool FMade = false;
};

/// Who may read and write a file; this user alone if it can't be told.
unsigned ModeOf(const std::string& iPath);

/// Makes sure that the names in the folder of a file are on the disk.
void FlushFolderOf(const std::string& iPath);

}  // namespace kk
