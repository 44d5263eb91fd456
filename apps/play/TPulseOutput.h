#pragma once

#include <pulse/simple.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace kk {

/// A stream to the user's sound server (PulseAudio, or what speaks its protocol). Each operation
/// waits for the server as long as that takes; who can't wait ends the process.
class TPulseOutput {
 public:
  /// Connects to the server of the environment (PULSE_SERVER, else the user's own). Raises
  /// ESoundError (ECONNREFUSED).
  TPulseOutput(int iChannels, int iRate);

  /// Plays the first so many frames of the block, its samples from -1 to 1 with the channels of a
  /// frame side by side. Raises ESoundError (EIO).
  void Write(const std::vector<float>& iBlock, int64_t iFrames);
  /// Waits until all of it has been heard. Raises ESoundError (EIO).
  void Drain();

 private:
  struct TClose {
    void operator()(pa_simple* iStream) const { pa_simple_free(iStream); }
  };
  const int FChannels;
  std::unique_ptr<pa_simple, TClose> FStream;
};

}  // namespace kk
