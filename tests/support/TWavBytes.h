#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>

namespace kk {

/// A number as a file of little-endian order has it.
inline std::string LittleEndianBytes(uint32_t iValue, int iBytes) {
  std::string bytes;
  for (int i = 0; i < iBytes; ++i) bytes += static_cast<char>(iValue >> (8 * i) & 0xFF);
  return bytes;
}

/// The bytes of a WAV file with one sine tone, 16 bit; what a test wants to be wrong is a field.
struct TWavBytes {
  int Frequency = 1000;  ///< Hz
  uint32_t Frames = 4410;
  uint32_t Rate = 44100;
  uint32_t Channels = 1;
  std::string ChunksBefore = {};  ///< between header and format

  std::string Bytes() const {
    std::string samples;
    for (uint32_t i = 0; i < Frames; ++i) {
      const double turn = 2 * std::numbers::pi * Frequency * i / Rate;
      const auto sample = static_cast<int16_t>(std::lround(16000 * std::sin(turn)));
      for (uint32_t channel = 0; channel < Channels; ++channel) {
        samples += LittleEndianBytes(static_cast<uint16_t>(sample), 2);
      }
    }
    const std::string format = LittleEndianBytes(1, 2) + LittleEndianBytes(Channels, 2) +
                               LittleEndianBytes(Rate, 4) +
                               LittleEndianBytes(Rate * Channels * 2, 4) +
                               LittleEndianBytes(Channels * 2, 2) + LittleEndianBytes(16, 2);
    const std::string chunks =
        "WAVE" + ChunksBefore + Chunk("fmt ", format) + Chunk("data", samples);
    return Chunk("RIFF", chunks);
  }

  static std::string Chunk(const std::string& iId, const std::string& iContents) {
    return iId + LittleEndianBytes(static_cast<uint32_t>(iContents.size()), 4) + iContents +
           std::string(iContents.size() % 2, '\0');
  }
};

}  // namespace kk
