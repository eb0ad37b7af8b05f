#include "tools/vsa/common/files/ordered_workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>

namespace vsa_tools {
namespace {

constexpr std::size_t ITEMS = 200;

class OrderedWorkersTest : public testing::TestWithParam<unsigned> {};

std::string squareOf(std::size_t item, Turn&) {
  if (item % 7 == 0) std::this_thread::yield();
  return std::to_string(item * item);
}

TEST_P(OrderedWorkersTest, ResultsAreConsumedInOrder) {
  std::vector<std::string> found, expected;
  for (std::size_t i = 0; i < ITEMS; ++i) expected.push_back(std::to_string(i * i));
  workInOrder(ITEMS, GetParam(), squareOf, [&](std::size_t item, std::string result) {
    EXPECT_EQ(found.size(), item);
    found.push_back(std::move(result));
    return true;
  });
  EXPECT_EQ(expected, found);
}

TEST_P(OrderedWorkersTest, NoItemsNeedNoWork) {
  workInOrder(0, GetParam(), squareOf, [](std::size_t, const std::string&) {
    ADD_FAILURE() << "consumed a result";
    return true;
  });
}

TEST_P(OrderedWorkersTest, ConsumingMayEndEarly) {
  std::atomic<std::size_t> worked = 0;
  std::size_t consumed = 0;
  workInOrder(
      1000000, GetParam(), [&](std::size_t item, Turn&) { return ++worked, item; },
      [&](std::size_t, std::size_t) { return ++consumed < 3; });
  EXPECT_EQ(3u, consumed);
  EXPECT_LE(worked, 3u + vsa_tools::MAX_WAITING_RESULTS * GetParam());
}

TEST_P(OrderedWorkersTest, AnExceptionReachesTheCaller) {
  std::size_t consumed = 0;
  const auto work = [](std::size_t item, Turn&) {
    if (item == 5) throw std::runtime_error("five");
    return item;
  };
  const auto consume = [&](std::size_t, std::size_t) { return ++consumed > 0; };
  EXPECT_THROW(workInOrder(ITEMS, GetParam(), work, consume), std::runtime_error);
  EXPECT_EQ(5u, consumed);
  EXPECT_THROW(workInOrder(ITEMS, GetParam(), squareOf,
                           [](std::size_t, const std::string&) -> bool {
                             throw std::runtime_error("consumer");
                           }),
               std::runtime_error);
}

TEST_P(OrderedWorkersTest, AWorkerAtItsTurnFollowsAllEarlierResults) {
  std::size_t consumed = 0;  // the consumer does not change it while a worker has its turn
  workInOrder(
      ITEMS, GetParam(),
      [&](std::size_t item, Turn& turn) { return turn.await() && consumed == item; },
      [&](std::size_t, bool isInOrder) {
        EXPECT_TRUE(isInOrder);
        ++consumed;
        return true;
      });
  EXPECT_EQ(ITEMS, consumed);
}

// The last result is consumed when all other workers have taken later items. They await turns that
// do not come.
TEST_P(OrderedWorkersTest, NoWorkerHasItsTurnAfterTheEnd) {
  constexpr std::size_t LAST = 3;
  std::vector<std::size_t> turns;  // changed only by the worker that has its turn
  std::atomic<std::size_t> taken = 0;
  workInOrder(
      ITEMS, GetParam(),
      [&](std::size_t item, Turn& turn) {
        ++taken;
        while (item == LAST && taken < LAST + GetParam()) std::this_thread::yield();
        if (turn.await()) turns.push_back(item);
        return item;
      },
      [&](std::size_t item, std::size_t) { return item < LAST; });
  EXPECT_EQ((std::vector<std::size_t>{0, 1, 2, 3}), turns);
}

TEST_P(OrderedWorkersTest, NoWorkerHasItsTurnAfterAnException) {
  std::vector<std::size_t> turns;
  const auto work = [&](std::size_t item, Turn& turn) {
    if (item == 3) throw std::runtime_error("three");
    if (turn.await()) turns.push_back(item);
    return item;
  };
  EXPECT_THROW(workInOrder(ITEMS, GetParam(), work, [](std::size_t, std::size_t) { return true; }),
               std::runtime_error);
  EXPECT_EQ((std::vector<std::size_t>{0, 1, 2}), turns);
}

INSTANTIATE_TEST_SUITE_P(Threads, OrderedWorkersTest, testing::Values(1u, 2u, 5u));

}  // namespace
}  // namespace vsa_tools
