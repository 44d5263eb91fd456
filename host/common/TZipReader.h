#pragma once

#include <memory>
#include <string>

#include "host/common/TFileCompression.h"

struct zip;

namespace kk {

/// An archive open for reading. Everything that is wrong with the file, or with what it says of
/// itself, raises EInOutError.
class TZipReader {
 public:
  explicit TZipReader(TStringView iFileName);
  ~TZipReader();

  uint64_t GetCount() const;
  TString GetName(uint64_t iIndex) const;
  /// The position of the first entry of this name; -1 if there is none.
  int64_t IndexOf(TStringView iName) const;
  /// The bytes of an entry as they lie in the archive. All calls together may not bring more bytes
  /// than the file has: entries that lie over each other are none that anyone packed.
  TPackedEntry ReadPacked(uint64_t iIndex);

 private:
  struct TClose {
    void operator()(zip* iArchive) const;
  };
  [[noreturn]] void Fail(TStringView iReason) const;
  [[noreturn]] void FailAsArchiveSays() const;

  TString FFileName;
  std::unique_ptr<zip, TClose> FArchive;
  uint64_t FBytesLeft = 0;
};

/// Unpacks an entry, not beyond TFileCompression::MaxEntrySize, and checks its size and CRC; raises
/// EInOutError. The name is for the message. iOnStep: raised before each 64 KiB.
std::string UnpackEntry(const TPackedEntry& iPacked, TStringView iName, TNotifyEvent iOnStep = {});

}  // namespace kk
