#include "host/common/TZipReader.h"

#include <sys/stat.h>
#include <zip.h>
#include <zlib.h>

#include <algorithm>

#include "host/base/Exception.h"

namespace kk {

namespace {

constexpr size_t cChunk = 64 * 1024;
constexpr uint64_t cFirstReserve = 1 << 20;
// ZIP APPNOTE 4.3.16: the record that ends every archive.
constexpr off_t cSmallestArchive = 22;
constexpr int cStored = ZIP_CM_STORE;
constexpr int cDeflated = ZIP_CM_DEFLATE;

constexpr TStringView cTooBig = u"Ein Eintrag ist größer als erlaubt";
constexpr TStringView cEntryDamaged = u"Ein Eintrag ist beschädigt";

TString ReasonOf(zip_error_t* ioError) {
  switch (zip_error_code_zip(ioError)) {
    case ZIP_ER_NOZIP:
      return u"Die Datei ist kein ZIP-Archiv";
    case ZIP_ER_CRC:
    case ZIP_ER_ZLIB:
    case ZIP_ER_COMPRESSED_DATA:
      return TString(cEntryDamaged);
    case ZIP_ER_INCONS:
    case ZIP_ER_EOF:
    case ZIP_ER_SEEK:
      return u"Das Archiv ist unvollständig oder widersprüchlich";
    case ZIP_ER_MEMORY:
      return u"Der Speicher reicht nicht";
    default:
      return FromUtf8(zip_error_strerror(ioError));
  }
}

// iWhat: the archive, or the entry if that is all that is known.
[[noreturn]] void FailWith(TStringView iWhat, TStringView iReason) {
  throw EInOutError(Format(u"%s lässt sich nicht lesen: %s", {iWhat, iReason}));
}

struct TCloseEntry {
  void operator()(zip_file_t* iFile) const { zip_fclose(iFile); }
};

}  // namespace

void TZipReader::TClose::operator()(zip* iArchive) const { zip_discard(iArchive); }

TZipReader::TZipReader(TStringView iFileName) : FFileName(iFileName) {
  const std::string path = ToUtf8(iFileName);
  struct stat info {};
  if (stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) {
    Fail(u"Es gibt keine solche Datei");
  }
  if (info.st_size < cSmallestArchive) Fail(u"Die Datei ist kein ZIP-Archiv");
  int code = 0;
  FArchive.reset(zip_open(path.c_str(), ZIP_RDONLY, &code));
  if (!FArchive) {
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    const TString reason = ReasonOf(&error);
    zip_error_fini(&error);
    Fail(reason);
  }
  FBytesLeft = static_cast<uint64_t>(info.st_size);
}

TZipReader::~TZipReader() = default;

void TZipReader::Fail(TStringView iReason) const { FailWith(FFileName, iReason); }

void TZipReader::FailAsArchiveSays() const { Fail(ReasonOf(zip_get_error(FArchive.get()))); }

uint64_t TZipReader::GetCount() const {
  return static_cast<uint64_t>(std::max<zip_int64_t>(zip_get_num_entries(FArchive.get(), 0), 0));
}

TString TZipReader::GetName(uint64_t iIndex) const {
  const char* name = zip_get_name(FArchive.get(), iIndex, ZIP_FL_ENC_GUESS);
  if (name == nullptr) FailAsArchiveSays();
  return FromUtf8(name);
}

int64_t TZipReader::IndexOf(TStringView iName) const {
  for (uint64_t i = 0; i < GetCount(); ++i) {
    const char* name = zip_get_name(FArchive.get(), i, ZIP_FL_ENC_GUESS);
    // As GetName tells it: bytes that are no UTF-8 have been replaced there.
    if (name != nullptr && FromUtf8(name) == iName) return static_cast<int64_t>(i);
  }
  return -1;
}

TPackedEntry TZipReader::ReadPacked(uint64_t iIndex) {
  zip_stat_t info;
  if (zip_stat_index(FArchive.get(), iIndex, 0, &info) != 0) FailAsArchiveSays();
  if (info.comp_size > FBytesLeft) Fail(u"Die Einträge überlappen sich");
  FBytesLeft -= info.comp_size;
  TPackedEntry packed;
  packed.UnpackedSize = info.size;
  packed.Crc = info.crc;
  packed.Method = info.comp_method;
  packed.Bytes.resize(info.comp_size);
  const std::unique_ptr<zip_file_t, TCloseEntry> file(
      zip_fopen_index(FArchive.get(), iIndex, ZIP_FL_COMPRESSED));
  if (!file) FailAsArchiveSays();
  // Not read to its end, where the library would check the CRC of stored bytes: a damaged entry
  // must not keep the others from being read.
  for (size_t size = 0; size < packed.Bytes.size();) {
    const zip_int64_t count =
        zip_fread(file.get(), packed.Bytes.data() + size, packed.Bytes.size() - size);
    if (count < 0) Fail(ReasonOf(zip_file_get_error(file.get())));
    if (count == 0) Fail(cEntryDamaged);
    size += static_cast<size_t>(count);
  }
  return packed;
}

namespace {

// Raw deflate (RFC 1951) as it stands in archives.
class TInflate {
 public:
  explicit TInflate(const std::string& iBytes) {
    FStream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(iBytes.data()));
    FStream.avail_in = static_cast<uInt>(iBytes.size());
    FReady = inflateInit2(&FStream, -MAX_WBITS) == Z_OK;
  }
  ~TInflate() {
    if (FReady) inflateEnd(&FStream);
  }
  TInflate(const TInflate&) = delete;
  TInflate& operator=(const TInflate&) = delete;

  // True if the stream ends well and has not more than so many bytes.
  bool Run(uint64_t iSize, TNotifyEvent iOnStep, std::string& ioBytes) {
    std::string chunk(cChunk, '\0');
    int state = FReady ? Z_OK : Z_MEM_ERROR;
    while (state == Z_OK && ioBytes.size() <= iSize) {
      if (iOnStep) iOnStep(nullptr);
      FStream.next_out = reinterpret_cast<Bytef*>(chunk.data());
      FStream.avail_out = static_cast<uInt>(chunk.size());
      state = inflate(&FStream, Z_NO_FLUSH);
      ioBytes.append(chunk, 0, chunk.size() - FStream.avail_out);
    }
    return state == Z_STREAM_END;
  }

 private:
  z_stream FStream{};
  bool FReady = false;
};

}  // namespace

std::string UnpackEntry(const TPackedEntry& iPacked, TStringView iName, TNotifyEvent iOnStep) {
  if (iPacked.UnpackedSize > TFileCompression::MaxEntrySize()) FailWith(iName, cTooBig);
  std::string bytes;
  bytes.reserve(std::min(iPacked.UnpackedSize, cFirstReserve));
  bool whole = false;
  if (iPacked.Method == cStored) {
    bytes = iPacked.Bytes;
    whole = true;
  } else if (iPacked.Method == cDeflated) {
    whole = TInflate(iPacked.Bytes).Run(iPacked.UnpackedSize, iOnStep, bytes);
  } else {
    FailWith(iName, u"Das Packverfahren eines Eintrags ist nicht bekannt");
  }
  const bool right =
      whole && bytes.size() == iPacked.UnpackedSize &&
      crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()) == iPacked.Crc;
  if (!right) FailWith(iName, cEntryDamaged);
  return bytes;
}

}  // namespace kk
