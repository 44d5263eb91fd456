#include "host/common/TZipWriter.h"

#include <zip.h>
#include <zlib.h>

#include <algorithm>
#include <cstring>

#include "host/base/Exception.h"

namespace kk {

namespace {

// ZIP APPNOTE 4.3.16; the library writes no archive without entries.
constexpr std::string_view cEmptyArchive{"PK\5\6\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 22};

[[noreturn]] void FailWith(zip_error_t* ioError) {
  throw EInOutError(Format(u"Das Archiv lässt sich nicht erstellen: %s",
                           {FromUtf8(zip_error_strerror(ioError))}));
}

// Bytes that are packed already, as a source: what it says of itself keeps the library from packing
// them once more.
class TPackedSource {
 public:
  explicit TPackedSource(const TPackedEntry& iPacked) : FPacked(iPacked) {
    zip_error_init(&FError);
  }
  ~TPackedSource() { zip_error_fini(&FError); }
  TPackedSource(const TPackedSource&) = delete;
  TPackedSource& operator=(const TPackedSource&) = delete;

  static zip_int64_t Callback(void* iSelf, void* oData, zip_uint64_t iLength,
                              zip_source_cmd_t iCommand) {
    auto* self = static_cast<TPackedSource*>(iSelf);
    switch (iCommand) {
      case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                              ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE,
                                              -1);
      case ZIP_SOURCE_OPEN:
        self->FPosition = 0;
        return 0;
      case ZIP_SOURCE_READ:
        return self->Read(oData, iLength);
      case ZIP_SOURCE_CLOSE:
        return 0;
      case ZIP_SOURCE_STAT:
        return self->Stat(oData, iLength);
      case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&self->FError, oData, iLength);
      case ZIP_SOURCE_FREE:
        std::unique_ptr<TPackedSource>{self}.reset();
        return 0;
      default:
        zip_error_set(&self->FError, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
  }

 private:
  zip_int64_t Read(void* oData, zip_uint64_t iLength) {
    const size_t count = std::min(static_cast<size_t>(iLength), FPacked.Bytes.size() - FPosition);
    std::memcpy(oData, FPacked.Bytes.data() + FPosition, count);
    FPosition += count;
    return static_cast<zip_int64_t>(count);
  }

  zip_int64_t Stat(void* oData, zip_uint64_t iLength) {
    zip_stat_t info;
    if (iLength < sizeof info) return -1;
    zip_stat_init(&info);
    info.valid = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC;
    info.size = FPacked.UnpackedSize;
    info.comp_size = FPacked.Bytes.size();
    info.comp_method = static_cast<zip_uint16_t>(FPacked.Method);
    info.crc = FPacked.Crc;
    std::memcpy(oData, &info, sizeof info);
    return sizeof info;
  }

  const TPackedEntry& FPacked;
  size_t FPosition = 0;
  zip_error_t FError{};
};

bool IsWholeStored(const TPackedEntry& iPacked) {
  const auto* bytes = reinterpret_cast<const Bytef*>(iPacked.Bytes.data());
  return iPacked.UnpackedSize == iPacked.Bytes.size() &&
         crc32_z(0, bytes, iPacked.Bytes.size()) == iPacked.Crc;
}

// The bytes as stored blocks of deflate (RFC 1951, 3.2.4), with the size and CRC that they had.
TPackedEntry AsStoredBlocks(const TPackedEntry& iPacked) {
  constexpr size_t cMaxBlock = 0xFFFF;
  TPackedEntry result;
  result.UnpackedSize = iPacked.UnpackedSize;
  result.Crc = iPacked.Crc;
  result.Method = ZIP_CM_DEFLATE;
  std::string_view rest = iPacked.Bytes;
  do {
    const std::string_view block = rest.substr(0, cMaxBlock);
    rest.remove_prefix(block.size());
    const auto size = static_cast<unsigned>(block.size());
    result.Bytes += rest.empty() ? '\1' : '\0';
    for (const unsigned word : {size, ~size}) {
      result.Bytes += static_cast<char>(word & 0xFF);
      result.Bytes += static_cast<char>(word >> 8 & 0xFF);
    }
    result.Bytes += block;
  } while (!rest.empty());
  return result;
}

zip_uint32_t PackLevel(int iLevel) {
  constexpr zip_uint32_t cLevels[] = {1, 6, 9};
  return cLevels[std::clamp(iLevel, 1, 3) - 1];
}

}  // namespace

void TZipWriter::TDiscard::operator()(zip* iArchive) const { zip_discard(iArchive); }

void TZipWriter::TFree::operator()(zip_source* iSource) const { zip_source_free(iSource); }

TZipWriter::TZipWriter() {
  zip_error_t error;
  zip_error_init(&error);
  FBytes.reset(zip_source_buffer_create(nullptr, 0, 0, &error));
  if (!FBytes) FailWith(&error);
  FArchive.reset(zip_open_from_source(FBytes.get(), ZIP_CREATE | ZIP_TRUNCATE, &error));
  if (!FArchive) FailWith(&error);
  zip_source_keep(FBytes.get());  // one reference for the archive, one for us
  zip_error_fini(&error);
}

TZipWriter::~TZipWriter() = default;

void TZipWriter::Fail() const { FailWith(zip_get_error(FArchive.get())); }

uint64_t TZipWriter::AddSource(const std::string& iName, zip_source* iSource) {
  if (iSource == nullptr) Fail();
  const zip_int64_t index = zip_file_add(FArchive.get(), iName.c_str(), iSource, ZIP_FL_ENC_UTF_8);
  if (index >= 0) return static_cast<uint64_t>(index);
  zip_source_free(iSource);
  Fail();
}

void TZipWriter::Add(const std::string& iName, const std::string& iBytes, int iLevel) {
  const uint64_t index =
      AddSource(iName, zip_source_buffer(FArchive.get(), iBytes.data(), iBytes.size(), 0));
  const int method = iLevel > 0 ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
  const zip_uint32_t level = iLevel > 0 ? PackLevel(iLevel) : 0;
  if (zip_set_file_compression(FArchive.get(), index, method, level) != 0) Fail();
}

void TZipWriter::AddPacked(const std::string& iName, const TPackedEntry& iPacked) {
  // Of stored bytes the library makes a new CRC, under which a damage would look sound.
  if (iPacked.Method == ZIP_CM_STORE && !IsWholeStored(iPacked)) {
    FRepacked.push_back(AsStoredBlocks(iPacked));
    AddPacked(iName, FRepacked.back());
    return;
  }
  auto packed = std::make_unique<TPackedSource>(iPacked);
  zip_source_t* source =
      zip_source_function(FArchive.get(), &TPackedSource::Callback, packed.get());
  if (source != nullptr) (void)packed.release();  // NOLINT: the source frees it
  const uint64_t index = AddSource(iName, source);
  if (iPacked.Method == ZIP_CM_STORE &&
      zip_set_file_compression(FArchive.get(), index, ZIP_CM_STORE, 0) != 0) {
    Fail();
  }
}

std::string TZipWriter::Finish() {
  if (zip_get_num_entries(FArchive.get(), 0) == 0) return std::string(cEmptyArchive);
  if (zip_close(FArchive.get()) != 0) Fail();
  (void)FArchive.release();  // closing frees it

  zip_source_t* source = FBytes.get();
  zip_stat_t info;
  zip_stat_init(&info);
  if (zip_source_stat(source, &info) != 0 || zip_source_open(source) != 0) {
    FailWith(zip_source_error(source));
  }
  std::string bytes(info.size, '\0');
  const zip_int64_t count = zip_source_read(source, bytes.data(), bytes.size());
  if (count != static_cast<zip_int64_t>(bytes.size())) FailWith(zip_source_error(source));
  zip_source_close(source);
  return bytes;
}

}  // namespace kk
