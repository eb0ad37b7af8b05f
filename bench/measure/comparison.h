// Compares several implementations of the same work. The implementations run in turn, so that
// changes of the machine's speed affect all of them. The result is the median time of each
// implementation.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace bench {

// Measures the processor time of this process, including all its threads and system calls. Other
// processes affect the processor time less than the elapsed time. The processor time does not
// include waiting for a disk, so all files must be in the page cache.
class Stopwatch {
 public:
  double seconds() const { return now() - start; }

 private:
  static double now();

  double start = now();
};

// An implementation in a comparison. `read` does the whole work once and returns its time in
// seconds. The time does not include the destruction of the result. Check the result before you
// create a Candidate.
struct Candidate {
  std::string name;
  std::function<double()> read;
};

// Returns the median time of each candidate in seconds, in the order of `candidates`. Within a
// round, short work is repeated until the total time is long enough to be measured. The first round
// is a warm-up and not part of the result. `rounds`, which is without the warm-up, must not be 0.
std::vector<double> compare(const std::vector<Candidate>& candidates, size_t rounds);

// Returns the middle value, or the mean of the two middle ones. `values` must not be empty.
double median(std::vector<double> values);

// Throws std::runtime_error "WHO: found N WHAT, expected M" if the counts differ.
void requireCount(const std::string& who, const char* what, size_t found, size_t expected);

}  // namespace bench
