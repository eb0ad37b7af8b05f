// Tests of Vector: its capacity is 0 at first, then 2, and then doubles. reserve() sets the
// capacity, and removes the elements that do not fit into it.
#include <vsa/foundation/vector.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <vsa/foundation/string.h>
#include "tests/foundation/containers/tracked.h"

namespace zn::ds {
namespace {

using vsa_tests::Tracked;
class VectorElements : public vsa_tests::TrackedTest {};

template <class T>
std::vector<T> elements(const Vector<T>& vector) {
  return std::vector<T>(vector.begin(), vector.end());
}

TEST(Vector, StartsEmpty) {
  const Vector<int> vector;
  EXPECT_EQ(vector.data, nullptr);
  EXPECT_EQ(vector.size, 0U);
  EXPECT_EQ(vector.capacity, 0U);
}

TEST(Vector, ItsFieldsInOrder) {
  Vector<char> vector;
  vector.reserve(5);
  vector.push_back('a');
  const auto& [data, size, capacity] = vector;
  static_assert(std::is_same_v<decltype(data), char* const>);
  static_assert(std::is_same_v<decltype(size), const std::uint64_t>);
  static_assert(std::is_same_v<decltype(capacity), const std::uint64_t>);
  EXPECT_EQ(*data, 'a');
  EXPECT_EQ(size, 1U);
  EXPECT_EQ(capacity, 5U);
}

TEST(Vector, GrowsByDoublingFromTwo) {
  Vector<std::string> vector;
  const std::uint64_t capacities[] = {2, 2, 4, 4, 8};
  for (int i = 0; i < 5; ++i) {
    vector.push_back(std::to_string(i));
    EXPECT_EQ(vector.capacity, capacities[i]);
    EXPECT_EQ(vector.size, static_cast<std::uint64_t>(i) + 1);
  }
  EXPECT_EQ(elements(vector), (std::vector<std::string>{"0", "1", "2", "3", "4"}));
}

TEST(Vector, ReserveSetsTheCapacity) {
  Vector<int> vector;
  vector.reserve(5);
  EXPECT_EQ(vector.capacity, 5U);
  EXPECT_EQ(vector.size, 0U);
  vector.push_back(1);
  EXPECT_EQ(vector.capacity, 5U);
  vector.reserve(3);
  EXPECT_EQ(vector.capacity, 3U);
  EXPECT_EQ(elements(vector), std::vector<int>{1});
}

TEST(Vector, ReserveOfTheSizeDoesNothing) {
  Vector<int> vector;
  vector.reserve(8);
  vector.push_back(1);
  vector.push_back(2);
  vector.reserve(2);
  EXPECT_EQ(vector.capacity, 8U);
}

TEST(Vector, ReserveOfFewerDropsTheLast) {
  Vector<std::string> vector;
  for (const char* const text : {"a", "b", "c"}) vector.push_back(text);
  vector.reserve(2);
  EXPECT_EQ(elements(vector), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(vector.capacity, 2U);
}

TEST(Vector, ReserveOfZeroFreesTheStorage) {
  Vector<int> vector;
  vector.push_back(1);
  vector.reserve(0);
  EXPECT_EQ(vector.data, nullptr);
  EXPECT_EQ(vector.size, 0U);
  EXPECT_EQ(vector.capacity, 0U);
  vector.push_back(2);
  EXPECT_EQ(vector.capacity, 2U);
}

TEST(Vector, FullAfterReserveDoublesItsSize) {
  Vector<int> vector;
  vector.reserve(3);
  for (int i = 0; i < 4; ++i) vector.push_back(i);
  EXPECT_EQ(vector.capacity, 6U);
}

TEST(Vector, ReserveAdditionalAtLeastDoubles) {
  Vector<int> vector;
  vector.reserveAdditional(5);
  EXPECT_EQ(vector.capacity, 5U);
  for (int i = 0; i < 5; ++i) vector.push_back(i);
  vector.reserveAdditional(0);
  EXPECT_EQ(vector.capacity, 5U);
  vector.reserveAdditional(1);
  EXPECT_EQ(vector.capacity, 10U);
  vector.reserveAdditional(5);
  EXPECT_EQ(vector.capacity, 10U);
  vector.reserveAdditional(20);
  EXPECT_EQ(vector.capacity, 25U);
  EXPECT_EQ(vector.size, 5U);
  EXPECT_EQ(vector[4], 4);
}

TEST(Vector, ACopyHasTheCapacityOfItsSource) {
  Vector<std::string> vector;
  vector.reserve(5);
  vector.push_back("a");
  const Vector<std::string> copy(vector);
  EXPECT_EQ(copy.capacity, 5U);
  EXPECT_EQ(elements(copy), std::vector<std::string>{"a"});
  EXPECT_NE(copy.data, vector.data);
  const Vector<std::string> empty{Vector<std::string>()};
  EXPECT_EQ(empty.data, nullptr);
}

TEST(Vector, AssigningReplacesTheElements) {
  Vector<std::string> one;
  Vector<std::string> other;
  one.push_back("a");
  other.push_back("b");
  other.push_back("c");
  one = other;
  EXPECT_EQ(elements(one), elements(other));
  const Vector<std::string>& same = one;
  one = same;
  EXPECT_EQ(elements(one), elements(other));
}

TEST(Vector, MovingLeavesTheSourceEmpty) {
  Vector<std::string> one;
  one.push_back("a");
  Vector<std::string> other(std::move(one));
  EXPECT_EQ(one.data, nullptr);  // NOLINT: a moved-from vector is empty
  EXPECT_EQ(one.size, 0U);
  one = std::move(other);
  EXPECT_EQ(other.size, 0U);  // NOLINT: as above
  EXPECT_EQ(elements(one), std::vector<std::string>{"a"});
}

TEST(Vector, AppendsItsOwnElements) {
  Vector<std::string> vector;
  vector.push_back("a text too long to be kept inside the object itself");
  for (int i = 0; i < 6; ++i) vector.push_back(vector[0]);
  for (const std::string& text : vector) EXPECT_EQ(text, vector[0]);
}

TEST(Vector, ClearKeepsTheStorage) {
  Vector<String> vector;
  vector.push_back(String("a"));
  vector.clear();
  EXPECT_EQ(vector.size, 0U);
  EXPECT_EQ(vector.capacity, 2U);
}

TEST(Vector, TooMuchIsRefusedAndChangesNothing) {
  Vector<std::uint64_t> vector;
  vector.push_back(7);
  EXPECT_THROW(vector.reserve(std::numeric_limits<unsigned long>::max()), std::bad_alloc);
  EXPECT_EQ(elements(vector), std::vector<std::uint64_t>{7});
  EXPECT_EQ(vector.capacity, 2U);
}

// --- the lifetime of elements ---

std::vector<int> numbers(const Vector<Tracked>& vector) {
  std::vector<int> all;
  for (const Tracked& element : vector) all.push_back(element.number);
  return all;
}

Vector<Tracked> filled(int count) {
  Vector<Tracked> vector;
  for (int i = 0; i < count; ++i) vector.push_back(Tracked(i));
  return vector;
}

TEST_F(VectorElements, AreAsManyAsTheSizeAndDestroyedWithTheVector) {
  {
    const Vector<Tracked> vector = filled(5);
    EXPECT_EQ(vector.capacity, 8U);
    EXPECT_EQ(Tracked::live, 5);
    EXPECT_EQ(numbers(vector), (std::vector<int>{0, 1, 2, 3, 4}));
  }
  EXPECT_EQ(Tracked::live, 0);
}

TEST_F(VectorElements, ThatReserveDropsAreDestroyed) {
  Vector<Tracked> vector = filled(5);
  vector.reserve(2);
  EXPECT_EQ(Tracked::live, 2);
  EXPECT_EQ(numbers(vector), (std::vector<int>{0, 1}));
  vector.reserve(0);
  EXPECT_EQ(Tracked::live, 0);
  vector.reserve(0);
  vector.reserve(4);
  EXPECT_EQ(Tracked::live, 0);
}

TEST_F(VectorElements, MoveWhenTheVectorGrows) {
  const Vector<Tracked> vector = filled(100);
  EXPECT_EQ(Tracked::copies, 0);
  EXPECT_EQ(Tracked::live, 100);
}

TEST_F(VectorElements, ThatAreReplacedAreDestroyed) {
  Vector<Tracked> vector = filled(5);
  const Vector<Tracked> other = filled(3);
  EXPECT_EQ(Tracked::live, 8);
  vector = other;
  EXPECT_EQ(Tracked::live, 6);
  EXPECT_EQ(numbers(vector), (std::vector<int>{0, 1, 2}));
  vector = filled(1);
  EXPECT_EQ(Tracked::live, 4);
  vector.clear();
  EXPECT_EQ(Tracked::live, 3);
}

TEST_F(VectorElements, ThatCannotBeCopiedLeaveTheVectorUnchanged) {
  Vector<Tracked> vector = filled(2);
  const Vector<Tracked> source = filled(4);
  const Tracked more(9);
  Tracked::copiesUntilThrow = 1;
  EXPECT_THROW(vector.push_back(more), std::runtime_error);
  EXPECT_EQ(vector.capacity, 2U);
  Tracked::copiesUntilThrow = 3;
  EXPECT_THROW(vector = source, std::runtime_error);
  Tracked::copiesUntilThrow = 3;
  EXPECT_THROW(const Vector<Tracked> copy(source), std::runtime_error);
  EXPECT_EQ(numbers(vector), (std::vector<int>{0, 1}));
  EXPECT_EQ(Tracked::live, 7);
}

}  // namespace
}  // namespace zn::ds
