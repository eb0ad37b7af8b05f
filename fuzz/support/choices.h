// Makes pseudo-random choices from a seed.
#pragma once

#include <cstddef>
#include <iterator>
#include <random>

namespace vsa_fuzz {

class Choices {
 public:
  explicit Choices(unsigned seed) : engine_(seed) {}

  /// Returns a number from 0 to `limit` - 1. `limit` must not be 0.
  std::size_t below(std::size_t limit) { return engine_() % limit; }
  bool oneIn(std::size_t count) { return below(count) == 0; }

  template <class Table>
  const auto& pick(const Table& table) {
    return table[below(std::size(table))];
  }

 private:
  std::minstd_rand engine_;
};

}  // namespace vsa_fuzz
