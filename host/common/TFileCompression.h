#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "host/base/TDelegate.h"
#include "host/base/TStream.h"
#include "host/base/TStringList.h"

namespace kk {

/// The bytes of an archive's entry as they lie in the archive (ZIP APPNOTE 4.4), so that an entry
/// that did not change is not packed again.
struct TPackedEntry {
  std::string Bytes;
  uint64_t UnpackedSize = 0;
  uint32_t Crc = 0;
  int Method = 0;  ///< 0 stored, 8 deflated
};

/// A named stream as an archive takes it. It either holds a stream, or an entry still packed that
/// is unpacked when the stream is asked for.
class TStreamForCompression : public TObject {
 public:
  /// With iOwnsStream the stream is freed with this object; otherwise it is borrowed.
  TStreamForCompression(TStringView iName, TMemoryStream* iStream, bool iOwnsStream);
  TStreamForCompression(TStringView iName, TPackedEntry iPacked);
  ~TStreamForCompression() override;

  const TString& GetName() const { return FName; }
  /// The stream; an entry still packed is unpacked first (raises EInOutError if it is damaged or
  /// beyond the size limit) and from now on counts as changed.
  TMemoryStream& GetStream();
  /// The stream, emptied, without unpacking what was there.
  TMemoryStream& GetEmptyStream();
  /// The packed bytes as long as nobody asked for the stream.
  const TPackedEntry* GetPacked() const { return FPacked ? &*FPacked : nullptr; }

 private:
  TString FName;
  TMemoryStream* FStream;
  std::unique_ptr<TMemoryStream> FOwned;
  std::optional<TPackedEntry> FPacked;
};

/// ZIP archives. Whole streams in memory; the archive is not open outside of a call. Names are
/// UTF-8 in the archive and have no folder part. Main thread, or any one thread at a time.
struct TFileCompression {
  /// No entry is unpacked beyond this size, whatever it claims: 1 GiB. Settable for tests.
  static size_t MaxEntrySize();
  static void SetMaxEntrySize(size_t iBytes);

  /// Writes an archive with one entry for each stream, in order, over the file, safely
  /// (WriteFileAtomically). iLevel: 0 stored, 1 fast, 2 normal, 3 maximum (zlib's 9). iFlag has no
  /// meaning here. An entry still packed goes into the archive byte by byte as it is. The folder
  /// part of a name is left out (unless two names would be the same without it, or nothing would be
  /// left). Two streams of one name, a stream beyond MaxEntrySize and every failure of the disk
  /// raise EInOutError. iMode: of a file that is new.
  static void CompressStreams(const std::vector<TStreamForCompression*>& iStreams,
                              TStringView iFileName, int iLevel, bool iFlag, unsigned iMode = 0644);
  /// Unpacks one entry into the stream, which is emptied before and stands at its start behind it.
  /// False if there is no entry of this name (regard to case as the archive has it) or no file.
  /// Raises EInOutError for a damaged archive or entry, and for one beyond the limit. Of two
  /// entries of one name the first counts. iOnStep: raised before each 64 KiB of an entry that is
  /// packed, when the archive is not open any more.
  static bool DecompressFile(TStringView iFileName, TStringView iEntryName, TMemoryStream& ioStream,
                             TNotifyEvent iOnStep = {});
  /// Fills the list with the entries' names in the archive's order. iFlag has no meaning here. No
  /// file, no names; a damaged archive raises EInOutError.
  static void FilesInside(TStringView iFileName, TStringList& ioList, bool iFlag);
  /// Every entry of the archive, still packed, in order; of two of one name the first. No file, no
  /// entries. Raises EInOutError for an archive that is damaged (the entries' own contents are
  /// looked at only when they are unpacked) and for one whose entries claim more bytes than the
  /// file has.
  static std::vector<std::unique_ptr<TStreamForCompression>> ReadPacked(TStringView iFileName);
  /// The same, appended one by one: after a failure the list holds what came before it.
  static void ReadPacked(TStringView iFileName,
                         std::vector<std::unique_ptr<TStreamForCompression>>& ioStreams);
};

}  // namespace kk
