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
      [&](std::size_t item, Turn& turn) {
        turn.await();
        return consumed == item;
      },
      [&](std::size_t, bool isInOrder) {
        EXPECT_TRUE(isInOrder);
        ++consumed;
        return true;
      });
  EXPECT_EQ(ITEMS, consumed);
}

INSTANTIATE_TEST_SUITE_P(Threads, OrderedWorkersTest, testing::Values(1u, 2u, 5u));

}  // namespace
}  // namespace vsa_tools
