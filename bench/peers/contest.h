// Contests: several readers do the same work in turn (ours, theirs, ours, theirs, ...), so that a
// machine that slows down or speeds up meets all of them alike. What counts is each one's median.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace bench {

// Processor time of this process, all its threads and its share of the system's work included: what
// else runs on the machine then counts as little as may be. All files read are in the page cache.
class Stopwatch {
 public:
  double seconds() const { return now() - start; }

 private:
  static double now();

  double start = now();
};

// One side of a contest. `read` does the whole work once and returns its seconds; what it makes is
// torn down after the clock was read. It has shown the right result before it got here.
struct Contender {
  std::string name;
  std::function<double()> read;
};

// Median seconds of each contender, in the order given. Short work is repeated within a round until
// the round has lasted long enough to be measured. The first round is for warming up and is left
// out.
std::vector<double> contest(const std::vector<Contender>& contenders, size_t rounds);

double median(std::vector<double> values);

// Throws std::runtime_error "WHO: found N WHAT, expected M" unless both are equal.
void mustFind(const std::string& who, const char* what, size_t found, size_t expected);

}  // namespace bench
