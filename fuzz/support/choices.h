// Choices that follow from a seed.
#pragma once

#include <cstddef>
#include <iterator>
#include <random>

namespace vsa_fuzz {

class Choices {
 public:
  explicit Choices(unsigned seed) : engine_(seed) {}

  /// 0 to `limit` - 1; `limit` is 1 or more.
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
