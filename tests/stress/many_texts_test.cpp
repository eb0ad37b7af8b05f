// What a scene holds on to that is read into again and again, a little each time: an editor sends
// it one statement after another, and its values grow and shrink.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/support/allocation_tracker.h"
#include "tests/support/byte_source.h"
#include "tests/support/text.h"
#include "vsa/lex/lexer_source.h"

namespace vsa_tests {

namespace {

using zn::korvo_sdk::Scene;

/// Bytes that are in use after it and were not before.
template <class Do>
std::int64_t bytesKept(const Do& what) {
  AllocationTracker::start();
  what();
  AllocationTracker::stop();
  return AllocationTracker::count().liveBytes;
}

void read(Scene& scene, const std::string& text) {
  ASSERT_TRUE(zn::korvo_sdk::impl::parseString(&scene, string(text)));
}

// A name keeps the memory that it shares with the other names of its text, and no more.
TEST(ManyTextsTest, AShortTextLeavesLittleBehind) {
  constexpr int TEXTS = 2000;
  Scene scene;
  read(scene, "lamp first;");
  const std::int64_t kept = bytesKept([&] {
    for (int i = 0; i < TEXTS; ++i) read(scene, "lamp lamp" + std::to_string(i) + ';');
  });
  EXPECT_EQ(scene.nodeCount(), TEXTS + 1U);
  EXPECT_LT(kept / TEXTS, 600);
}

// The memory of the shorter texts is there for others, but not as much of it as there were lengths.
TEST(ManyTextsTest, StringsThatGrowLeaveLittleBehind) {
  constexpr int INPUTS = 200;
  constexpr std::size_t LONGEST = 4000;
  Scene scene;
  const std::int64_t kept = bytesKept([&] {
    for (std::size_t length = 40; length <= LONGEST; length += 40) {
      std::string text = "note n:";
      for (int i = 0; i < INPUTS; ++i) {
        text += ".t" + std::to_string(i) + "=\"" + std::string(length, 'x') + "\";";
      }
      read(scene, text);
    }
  });
  EXPECT_EQ(std::string(scene.findNode("n")->input("t7")->string()), std::string(LONGEST, 'x'));
  EXPECT_LT(static_cast<std::size_t>(kept) / INPUTS, 16 * LONGEST);
}

// A long token's memory doubles, whatever its source shows at a time: were it to grow by a block
// each time, an allocator that moves it would copy it hundreds of times.
TEST(ManyTextsTest, ALongListGrowsAFewTimes) {
  std::string list = "(1";
  while (list.size() < 2'000'000) list += " 0.25";
  for (const std::size_t most : {std::size_t{64}, std::size_t{4096}, list.size()}) {
    zn::korvo_sdk::impl::FileLexer lexer(memoryFile(list + ")", most));
    AllocationTracker::start();
    const zn::korvo_sdk::impl::Token token = lexer.nextToken();
    AllocationTracker::stop();
    EXPECT_EQ(token.text.len(), list.size() + 1);
    EXPECT_LT(AllocationTracker::count().calls, 40U) << most << " bytes a read";
  }
}

}  // namespace

}  // namespace vsa_tests
