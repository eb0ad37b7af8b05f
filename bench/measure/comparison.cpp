// Runs the rounds of a comparison and computes the medians.
#include "bench/measure/comparison.h"

#include <time.h>

#include <algorithm>
#include <stdexcept>

namespace bench {
namespace {

// Repeats the work until it has taken ENOUGH_SECONDS of the time that it measures. Returns the mean
// time that the candidate reports. Does not count the first run, because another candidate has left
// its data in the heap and the caches.
double meanSeconds(const Candidate& candidate) {
  constexpr double ENOUGH_SECONDS = 0.05;
  candidate.read();
  double total = 0;
  size_t reads = 0;
  do {
    total += candidate.read();
    ++reads;
  } while (total < ENOUGH_SECONDS);
  return total / static_cast<double>(reads);
}

}  // namespace

double Stopwatch::now() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

std::vector<double> compare(const std::vector<Candidate>& candidates, size_t rounds) {
  std::vector<std::vector<double>> seconds(candidates.size());
  for (size_t round = 0; round <= rounds; ++round) {
    for (size_t i = 0; i < candidates.size(); ++i) {
      const double time = meanSeconds(candidates[i]);
      if (round > 0) seconds[i].push_back(time);
    }
  }
  std::vector<double> medians;
  for (const std::vector<double>& times : seconds) medians.push_back(median(times));
  return medians;
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void requireCount(const std::string& who, const char* what, size_t found, size_t expected) {
  if (found == expected) return;
  throw std::runtime_error(who + ": found " + std::to_string(found) + " " + what + ", expected " +
                           std::to_string(expected));
}

}  // namespace bench
