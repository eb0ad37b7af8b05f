// Random numbers for the generators. The same seed gives the same numbers on every platform. The
// distributions of the standard library are not used, because their results differ between
// implementations.
#pragma once

#include <cstddef>
#include <cstdint>

namespace bench {

// The generator SplitMix64 (Steele, Lea, Flood, 2014).
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

  // Returns a number from 0 to bound - 1. `bound` must not be 0.
  size_t below(size_t bound) { return static_cast<size_t>(next() % bound); }

  // Returns a number from first to last, inclusive.
  size_t between(size_t first, size_t last) { return first + below(last - first + 1); }

  // Returns a real from 0, inclusive, to 1, exclusive. It has 53 random bits, because a double has
  // a precision of 53 bits.
  double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }

  // Returns a real from low to high.
  double real(double low, double high) { return low + unit() * (high - low); }

 private:
  uint64_t state;
};

}  // namespace bench
