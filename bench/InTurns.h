#pragma once

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string>

namespace quendo::bench {

template <typename Function>
double secondsOf(Function&& function) {
  const auto start = std::chrono::steady_clock::now();
  function();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Measures two implementations alternately, which exposes both to the same fluctuations of the machine. Runs
/// both once as warm-up, then `pairs` times, swapping the order each time. `prepare` runs unmeasured before
/// each pair. Prints one line per pair: the name and both times in seconds, tab-separated; ratios.py computes
/// the ratios.
template <typename Prepare, typename First, typename Second>
void measureAlternately(const std::string& name, std::size_t pairs, Prepare&& prepare, First&& first,
                        Second&& second) {
  for (std::size_t pair = 0; pair <= pairs; ++pair) {
    prepare();
    const bool firstGoesFirst = pair % 2 == 0;
    double firstTime = 0;
    double secondTime = 0;
    if (firstGoesFirst) firstTime = secondsOf(first);
    secondTime = secondsOf(second);
    if (!firstGoesFirst) firstTime = secondsOf(first);
    if (pair > 0) std::printf("%s\t%.9f\t%.9f\n", name.c_str(), firstTime, secondTime);
  }
}

}  // namespace quendo::bench
