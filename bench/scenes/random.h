// The generators' source of chance: the same numbers for a seed on every platform and library.
// The standard distributions are left out because their results differ between libraries.
#pragma once

#include <cstddef>
#include <cstdint>

namespace bench {

// SplitMix64 (Steele, Lea, Flood, 2014).
class Random {
 public:
  explicit Random(uint64_t seed) : state(seed) {}

  uint64_t next() {
    state += 0x9E3779B97F4A7C15u;
    uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }

  // A number of 0 .. bound - 1; bound is at least 1.
  size_t below(size_t bound) { return static_cast<size_t>(next() % bound); }

  // A number of first .. last, both included.
  size_t between(size_t first, size_t last) { return first + below(last - first + 1); }

  // A real of 0 up to, not including, 1.
  double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }

  // A real of low up to high.
  double real(double low, double high) { return low + unit() * (high - low); }

 private:
  uint64_t state;
};

}  // namespace bench
