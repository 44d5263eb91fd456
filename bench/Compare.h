#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>

namespace kk {

/// How long it takes.
inline double Seconds(const std::function<void()>& iFunction) {
  const auto start = std::chrono::steady_clock::now();
  iFunction();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Runs both, which answer their seconds, in turn, so that what else the machine does meets both.
/// The row's "ratio" is our time over the bare one.
inline void Compare(benchmark::State& ioState, const std::function<double()>& iOurs,
                    const std::function<double()>& iBare) {
  double ours = 0;
  double bare = 0;
  for (auto _ : ioState) {
    const double seconds = iOurs();
    ioState.SetIterationTime(seconds);
    ours += seconds;
    bare += iBare();
  }
  ioState.counters["bare_ms"] = bare * 1e3 / static_cast<double>(ioState.iterations());
  ioState.counters["ratio"] = ours / bare;
  ioState.counters["ns_per_item"] = ours * 1e9 / static_cast<double>(ioState.iterations()) /
                                    static_cast<double>(ioState.range(0));
}

}  // namespace kk
