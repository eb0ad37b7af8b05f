// Tracked: an element for tests of containers. It counts the existing elements and stores its own
// address. Thus it detects a container that leaks an element, destroys one twice, or moves one by
// copying its bytes.
#pragma once

#include <gtest/gtest.h>

#include <stdexcept>

namespace vsa_tests {

class Tracked {
 public:
  /// The number of existing elements.
  static inline int live = 0;
  /// The number of copies. Moves do not count.
  static inline int copies = 0;
  /// Makes the n-th of the following calls of the copy constructor throw std::runtime_error. 1 is
  /// the next call, and 0 makes no call throw.
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

/// A fixture that expects that a test destroys every element that it creates.
class TrackedTest : public testing::Test {
 protected:
  TrackedTest() { Tracked::live = Tracked::copies = Tracked::copiesUntilThrow = 0; }
  ~TrackedTest() override { EXPECT_EQ(Tracked::live, 0); }
};

}  // namespace vsa_tests
