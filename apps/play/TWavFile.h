#pragma once

#include <sndfile.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kk {

/// A WAV file (RIFF/WAVE) that is read from its beginning to its end, whatever its samples are
/// stored as. Not more of it is in memory than the reader's block.
class TWavFile {
 public:
  static constexpr int cMaxChannels = 8;
  static constexpr int cMinRate = 4000;  ///< Hz
  static constexpr int cMaxRate = 192000;

  /// Opens the file and looks at its header. Raises ESoundError: with the system's own number if it
  /// can't be opened; EISDIR, EINVAL for what is no file, no WAV file or of an absurd format;
  /// ENODATA if it has no sound in it or less than its header tells.
  explicit TWavFile(const std::string& iPath);

  int Channels() const { return FInfo.channels; }
  int Rate() const { return FInfo.samplerate; }
  int64_t Frames() const { return FInfo.frames; }
  /// The time that it plays, in ms, rounded up.
  int64_t LengthMs() const;

  /// Reads on: samples from -1 to 1, the channels of a frame side by side, as many whole frames as
  /// the block holds. Answers how many; 0 at the end.
  int64_t Read(std::vector<float>& ioBlock);

 private:
  void CheckFormat() const;

  struct TClose {
    void operator()(SNDFILE* iFile) const { sf_close(iFile); }
  };
  SF_INFO FInfo{};
  std::unique_ptr<SNDFILE, TClose> FFile;
};

}  // namespace kk
