#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/TServerProcess.h"
#include "tests/support/TTempFolder.h"

namespace kk {

/// A sound server of the test's own: PulseAudio with an output that nobody hears. It works in real
/// time: a sound of a second plays for a second.
class TSoundServer {
 public:
  static constexpr int cRate = 44100;  ///< of the recording, one channel

  TSoundServer();

  /// "NAME=value" entries that lead a program to this server and keep it away from any other.
  std::vector<std::string> Environment() const;

  /// Begins to record what is played; it has begun when this returns.
  void StartRecording();
  /// Waits until the recording has something louder than silence; the test fails after some
  /// seconds.
  void WaitForSound() const;
  /// Ends it and answers the samples, -1 to 1.
  std::vector<float> StopRecording();

  /// The process of the server, to be frozen or killed.
  TServerProcess& Process() { return *FServer; }

 private:
  std::map<std::string, std::string> Variables() const;
  std::vector<float> Recorded() const;

  TTempFolder FFolder;
  std::unique_ptr<TServerProcess> FServer;
  std::unique_ptr<TServerProcess> FRecorder;
};

/// How much of the samples is a sine tone of this frequency (Goertzel's algorithm): the amplitude
/// that the tone has, averaged over all of them.
double ToneAmplitude(const std::vector<float>& iSamples, double iFrequency, int iRate);

}  // namespace kk
