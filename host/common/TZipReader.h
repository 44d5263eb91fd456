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
  /// Unpacks an entry, not beyond the limit, and checks its size and CRC.
  std::string Unpack(uint64_t iIndex) const;
  /// The bytes of an entry as they lie in the archive. All calls together may not bring more bytes
  /// than the file has: entries that lie over each other are none that anyone packed.
  TPackedEntry ReadPacked(uint64_t iIndex);

 private:
  struct TClose {
    void operator()(zip* iArchive) const;
  };
  [[noreturn]] void Fail(TStringView iReason) const;
  [[noreturn]] void FailAsArchiveSays() const;
  std::string ReadEntry(uint64_t iIndex, unsigned iFlags, uint64_t iLimit,
                        TStringView iBeyondLimit) const;

  TString FFileName;
  std::unique_ptr<zip, TClose> FArchive;
  uint64_t FBytesLeft = 0;
};

/// Unpacks an entry that was read still packed, as TZipReader::Unpack does.
std::string UnpackEntry(const TPackedEntry& iPacked, TStringView iName);

}  // namespace kk
