#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace quendo::bench {

/// What two ways of doing the same thing cost, measured in turns: the machine's moods of one second hit
/// both alike, so the ratio of each pair means more than either time.
struct PairedRatio {
  double ratio = 0;        ///< Median over the pairs of first / second.
  double firstMedian = 0;  ///< Seconds.
  double secondMedian = 0;
};

inline double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

template <typename Function>
double secondsOf(Function&& function) {
  const auto start = std::chrono::steady_clock::now();
  function();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Runs both once unmeasured, then `pairs` times in turns, each going first every other time. `prepare` runs
/// unmeasured before each `first`.
template <typename Prepare, typename First, typename Second>
PairedRatio measurePairs(std::size_t pairs, Prepare&& prepare, First&& first, Second&& second) {
  std::vector<double> ratios;
  std::vector<double> firstTimes;
  std::vector<double> secondTimes;
  for (std::size_t pair = 0; pair <= pairs; ++pair) {
    prepare();
    const bool firstGoesFirst = pair % 2 == 0;
    const double before = firstGoesFirst ? secondsOf(first) : secondsOf(second);
    const double behind = firstGoesFirst ? secondsOf(second) : secondsOf(first);
    if (pair == 0) continue;
    firstTimes.push_back(firstGoesFirst ? before : behind);
    secondTimes.push_back(firstGoesFirst ? behind : before);
    ratios.push_back(firstTimes.back() / secondTimes.back());
  }
  return {median(ratios), median(firstTimes), median(secondTimes)};
}

}  // namespace quendo::bench
