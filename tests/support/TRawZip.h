#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kk {

/// Builds archives by hand (ZIP APPNOTE 4.3), so that they can lie.
class TRawZip {
 public:
  struct TEntry {
    std::string Name;
    std::string Bytes;
    uint32_t Size = 0;
    uint32_t Crc = 0;
    uint16_t Method = 0;
  };

  void Add(const TEntry& iEntry) {
    FOffsets.push_back(static_cast<uint32_t>(FText.size()));
    FText += "PK\3\4" + Number(20, 2) + Common(iEntry) + iEntry.Name + iEntry.Bytes;
    Remember(iEntry, FOffsets.back());
  }
  void AddStored(const std::string& iName, const std::string& iBytes) {
    Add({iName, iBytes, static_cast<uint32_t>(iBytes.size()), Crc32(iBytes), 0});
  }
  /// A further name for the bytes of an entry.
  void AddAlias(const std::string& iName, size_t iIndex) {
    TEntry entry = FEntries[iIndex];
    entry.Name = iName;
    Remember(entry, FOffsets[iIndex]);
  }
  std::string ToBytes() const {
    const std::string count = Number(static_cast<uint32_t>(FEntries.size()), 2);
    return FText + FDirectory + std::string("PK\5\6\0\0\0\0", 8) + count + count +
           Number(static_cast<uint32_t>(FDirectory.size()), 4) +
           Number(static_cast<uint32_t>(FText.size()), 4) + Number(0, 2);
  }

  static uint32_t Crc32(const std::string& iBytes) {
    uint32_t crc = 0xFFFFFFFFu;
    for (const char byte : iBytes) {
      crc ^= static_cast<unsigned char>(byte);
      for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320u : 0u);
    }
    return ~crc;
  }

 private:
  static std::string Number(uint32_t iValue, int iBytes) {
    std::string bytes;
    for (int i = 0; i < iBytes; ++i) bytes += static_cast<char>(iValue >> (8 * i) & 0xFF);
    return bytes;
  }
  static std::string Common(const TEntry& iEntry) {
    return Number(0, 2) + Number(iEntry.Method, 2) + Number(0, 2) + Number(0x5821, 2) +
           Number(iEntry.Crc, 4) + Number(static_cast<uint32_t>(iEntry.Bytes.size()), 4) +
           Number(iEntry.Size, 4) + Number(static_cast<uint32_t>(iEntry.Name.size()), 2) +
           Number(0, 2);
  }
  void Remember(const TEntry& iEntry, uint32_t iOffset) {
    FEntries.push_back(iEntry);
    FDirectory += "PK\1\2" + Number(20, 2) + Number(20, 2) + Common(iEntry) + Number(0, 2) +
                  Number(0, 2) + Number(0, 2) + Number(0, 4) + Number(iOffset, 4) + iEntry.Name;
  }

  std::string FText;
  std::string FDirectory;
  std::vector<TEntry> FEntries;
  std::vector<uint32_t> FOffsets;
};

}  // namespace kk
