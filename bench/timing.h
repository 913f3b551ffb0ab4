// Timing shared by the benchmark programs.
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace bench {

// Median over `samples` samples of the time per call in microseconds, each
// sample timing `calls` calls back to back (after `prepare`, untimed) so that
// short calls stand well above the clock's step.
inline double medianMicros(int samples, int calls, const std::function<void()>& prepare,
                           const std::function<void()>& run) {
  std::vector<double> times;
  for (int s = 0; s < samples; ++s) {
    prepare();
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < calls; ++i) run();
    const auto end = std::chrono::steady_clock::now();
    times.push_back(std::chrono::duration<double, std::micro>(end - start).count() / calls);
  }
  std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
  return times[times.size() / 2];
}

}  // namespace bench
