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

/// Measures two ways of doing the same thing in turns: the machine's moods of one second hit both alike.
/// Runs both once unmeasured, then `pairs` times, each going first every other time. `prepare` runs
/// unmeasured before each pair. Prints a line for each pair, the name and both times in seconds between tabs;
/// ratios.py makes a ratio of them.
template <typename Prepare, typename First, typename Second>
void measureInTurns(const std::string& name, std::size_t pairs, Prepare&& prepare, First&& first,
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
