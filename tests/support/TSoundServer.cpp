#include "tests/support/TSoundServer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <numbers>
#include <thread>
#include <utility>

namespace kk {

TSoundServer::TSoundServer() {
  const std::string socket = FFolder.Path() + "/native";
  FServer = std::make_unique<TServerProcess>(
      std::vector<std::string>{"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                               "--use-pid-file=no", "--realtime=no", "--high-priority=no",
                               "--disable-shm=yes", "--log-target=stderr", "--log-level=info", "-L",
                               "module-null-sink sink_name=test", "-L",
                               "module-native-protocol-unix auth-anonymous=1 socket=" + socket},
      Variables());
  FServer->WaitForLine("I: [pulseaudio] main.c: Daemon startup complete.");
}

std::map<std::string, std::string> TSoundServer::Variables() const {
  return {{"PULSE_SERVER", "unix:" + FFolder.Path() + "/native"},
          {"PULSE_RUNTIME_PATH", FFolder.Path()},
          {"XDG_RUNTIME_DIR", FFolder.Path()},
          {"XDG_CONFIG_HOME", FFolder.Path()},
          {"HOME", FFolder.Path()},
          {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
          {"LC_ALL", "C"}};
}

std::vector<std::string> TSoundServer::Environment() const {
  std::vector<std::string> entries;
  for (const auto& [name, value] : Variables()) entries.push_back(name + "=" + value);
  return entries;
}

void TSoundServer::StartRecording() {
  FRecorder = std::make_unique<TServerProcess>(
      std::vector<std::string>{"sh", "-c",
                               "exec parec -v --device=test.monitor --latency-msec=20"
                               " --format=float32le --channels=1 --rate=" +
                                   std::to_string(cRate) + " > '" + FFolder.Path() + "/record'"},
      Variables());
  FRecorder->WaitForLine("Connected to device test.monitor");
}

void TSoundServer::WaitForSound() const {
  const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  const auto isLoud = [](float sample) { return std::abs(sample) > 0.1F; };
  for (std::vector<float> heard; std::ranges::none_of(heard, isLoud); heard = Recorded()) {
    if (std::chrono::steady_clock::now() > last) {
      ADD_FAILURE() << "nothing is heard";
      return;
    }
    std::this_thread::yield();
  }
}

std::vector<float> TSoundServer::StopRecording() {
  FRecorder->Stop();
  return Recorded();
}

std::vector<float> TSoundServer::Recorded() const {
  const std::string bytes = FFolder.Read(u"record");
  std::vector<float> samples(bytes.size() / sizeof(float));
  if (samples.empty()) return samples;
  std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(float));
  return samples;
}

double ToneAmplitude(const std::vector<float>& iSamples, double iFrequency, int iRate) {
  if (iSamples.empty()) return 0;
  const double step = 2 * std::numbers::pi * iFrequency / iRate;
  const double factor = 2 * std::cos(step);
  double last = 0;
  double beforeLast = 0;
  for (const float sample : iSamples) {
    const double next = sample + factor * last - beforeLast;
    beforeLast = std::exchange(last, next);
  }
  const double power = last * last + beforeLast * beforeLast - factor * last * beforeLast;
  return 2 * std::sqrt(std::max(power, 0.0)) / static_cast<double>(iSamples.size());
}

}  // namespace kk
