// Writes the sound that the program brings along: two tones of a bell, a major third downwards.
//   make_remind_wav FILE

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <numbers>
#include <vector>

namespace {

constexpr int cRate = 44100;          // Hz
constexpr double cSeconds = 1.0;      // of the whole
constexpr double cSecondTone = 0.32;  // s, its beginning
constexpr double cHigh = 880.0;       // Hz, a''
constexpr double cLow = 698.46;       // Hz, f''
constexpr double cFade = 0.01;        // s, at both ends, so that nothing clicks
constexpr double cVolume = 0.45;      // two tones together stay below full scale

// A tone of a struck bell: the fundamental and one overtone, which dies away sooner.
double Tone(double iFrequency, double iTime) {
  if (iTime < 0) return 0;
  const double turn = 2 * std::numbers::pi * iFrequency * iTime;
  const double fadeIn = std::min(iTime / cFade, 1.0);
  return fadeIn *
         (std::exp(-5 * iTime) * std::sin(turn) + 0.2 * std::exp(-9 * iTime) * std::sin(2 * turn));
}

}  // namespace

int main(int iCount, char** iArguments) {
  if (iCount != 2) return 2;
  std::vector<int16_t> samples(static_cast<size_t>(cRate * cSeconds));
  for (size_t i = 0; i < samples.size(); ++i) {
    const double time = static_cast<double>(i) / cRate;
    const double fadeOut = std::min((cSeconds - time) / cFade, 1.0);
    const double value = cVolume * fadeOut * (Tone(cHigh, time) + Tone(cLow, time - cSecondTone));
    samples[i] = static_cast<int16_t>(std::lround(value * INT16_MAX));
  }
  SF_INFO info{};
  info.samplerate = cRate;
  info.channels = 1;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  SNDFILE* file = sf_open(iArguments[1], SFM_WRITE, &info);
  const auto count = static_cast<sf_count_t>(samples.size());
  const bool written = file != nullptr && sf_write_short(file, samples.data(), count) == count;
  const bool closed = file != nullptr && sf_close(file) == 0;
  if (written && closed) return 0;
  std::fprintf(stderr, "%s: %s\n", iArguments[1], sf_strerror(nullptr));
  return 1;
}
