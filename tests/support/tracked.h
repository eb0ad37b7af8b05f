// An element that knows how many of its kind live, and whether it is where it was made: a container
// that forgets one, ends one twice or moves one as bytes shows.
#pragma once

#include <gtest/gtest.h>

#include <stdexcept>

namespace vsa_tests {

class Tracked {
 public:
  /// Elements that live now.
  static inline int live = 0;
  /// Elements that were ever copied, not moved.
  static inline int copies = 0;
  /// From now on the n-th copy (1: the next one) throws std::runtime_error; 0: none does.
  static inline int copiesUntilThrow = 0;

  explicit Tracked(int n = 0) : number(n), self_(this) { ++live; }
  Tracked(const Tracked& other) : number(other.number), self_(this) {
    if (copiesUntilThrow != 0 && --copiesUntilThrow == 0) throw std::runtime_error("no copy");
    EXPECT_TRUE(other.isInPlace());
    ++live;
    ++copies;
  }
  Tracked(Tracked&& other) noexcept : number(other.number), self_(this) {
    EXPECT_TRUE(other.isInPlace());
    other.number = MOVED;
    ++live;
  }
  Tracked& operator=(const Tracked& other) {
    if (this == &other) return *this;
    EXPECT_TRUE(isInPlace() && other.isInPlace());
    number = other.number;
    ++copies;
    return *this;
  }
  Tracked& operator=(Tracked&& other) noexcept {
    EXPECT_TRUE(isInPlace() && other.isInPlace());
    number = other.number;
    other.number = MOVED;
    return *this;
  }
  ~Tracked() {
    EXPECT_TRUE(isInPlace());
    self_ = nullptr;
    --live;
  }

  static constexpr int MOVED = -1;
  int number;

 private:
  bool isInPlace() const { return self_ == this; }

  const Tracked* self_;
};

/// Expects every element that a test makes to have gone by its end.
class TrackedTest : public testing::Test {
 protected:
  TrackedTest() { Tracked::live = Tracked::copies = Tracked::copiesUntilThrow = 0; }
  ~TrackedTest() override { EXPECT_EQ(Tracked::live, 0); }
};

}  // namespace vsa_tests
