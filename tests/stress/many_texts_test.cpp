// Tests how much memory remains in use when many short texts are read into a scene. For example, an
// editor may send one statement at a time. Also tests how the buffer of a long token grows.
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

/// Returns by how much a call of `what` increases the memory in use.
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

// A text with one declaration keeps less than 600 bytes: the node, and one memory block that all
// names of the text share.
TEST(ManyTextsTest, AShortTextKeepsLittleMemory) {
  constexpr int TEXTS = 2000;
  Scene scene;
  read(scene, "lamp first;");
  const std::int64_t kept = bytesKept([&] {
    for (int i = 0; i < TEXTS; ++i) read(scene, "lamp lamp" + std::to_string(i) + ';');
  });
  EXPECT_EQ(scene.nodeCount(), TEXTS + 1U);
  EXPECT_LT(kept / TEXTS, 600);
}

// When a string is replaced by a longer one, its block is used again for another string. Therefore
// the memory does not contain a block for each earlier length.
TEST(ManyTextsTest, GrowingStringsKeepLittleMemory) {
  constexpr int INPUTS = 200;
  constexpr std::size_t MAX_LENGTH = 4000;
  Scene scene;
  const std::int64_t kept = bytesKept([&] {
    for (std::size_t length = 40; length <= MAX_LENGTH; length += 40) {
      std::string text = "note n:";
      for (int i = 0; i < INPUTS; ++i) {
        text += ".t" + std::to_string(i) + "=\"" + std::string(length, 'x') + "\";";
      }
      read(scene, text);
    }
  });
  EXPECT_EQ(std::string(scene.findNode("n")->input("t7")->string()), std::string(MAX_LENGTH, 'x'));
  EXPECT_LT(static_cast<std::size_t>(kept) / INPUTS, 16 * MAX_LENGTH);
}

// The buffer of a long token grows by doubling, for reads of any size. If it grew by the size of
// each read, it would be copied hundreds of times.
TEST(ManyTextsTest, TheBufferOfALongListDoubles) {
  std::string list = "(1";
  while (list.size() < 2'000'000) list += " 0.25";
  for (const std::size_t bytesPerRead : {std::size_t{64}, std::size_t{4096}, list.size()}) {
    zn::korvo_sdk::impl::FileLexer lexer(memoryFile(list + ")", bytesPerRead));
    AllocationTracker::start();
    const zn::korvo_sdk::impl::Token token = lexer.nextToken();
    AllocationTracker::stop();
    EXPECT_EQ(token.text.len(), list.size() + 1);
    EXPECT_LT(AllocationTracker::count().calls, 40U) << bytesPerRead << " bytes per read";
  }
}

}  // namespace

}  // namespace vsa_tests
