// Tests that a ListLayout writes the same lines for many numbers together as for one number after
// another.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tools/vsa/common/writing/string_sink.h"
#include "tools/vsa/fmt/layout/list_layout.h"
#include "tools/vsa/fmt/layout/plain_numbers.h"

namespace vsa_tools {

namespace {

enum class Adding { Together, OneByOne };

std::string listOf(std::string_view numbers, const ListShape& shape, Adding adding) {
  StringSink sink;
  OutputBuffer out(sink);
  ListLayout list(out);
  list.begin('{', shape, 2);
  list.add("0", false);
  if (adding == Adding::Together) {
    list.addNumbers(numbers);
  } else {
    forEachNumber(numbers, [&](std::string_view number) { list.add(number, false); });
  }
  list.add("7", false);
  list.end('}', false);
  out.flush();
  return sink.text;
}

/// Returns numbers of at most `maxSize` characters, each with a separator after it.
std::string randomList(std::mt19937& random, std::size_t maxSize) {
  constexpr std::string_view SEPARATORS[] = {" ", " ",  " ",      " ",   " ",
                                             " ", "\n", "\n    ", " , ", "  "};
  std::string text;
  const auto separators = random() % std::size(SEPARATORS) + 1;
  for (auto count = random() % 300 + 1; count > 0; --count) {
    text += std::string(random() % maxSize + 1, static_cast<char>('0' + random() % 10));
    text += SEPARATORS[random() % separators];
  }
  return text;
}

TEST(ListLayoutTest, WritesTheSameLinesForManyNumbers) {
  std::mt19937 random(9);
  for (int i = 0; i < 3000; ++i) {
    const std::size_t maxSize = i % 10 == 0 ? 150 : 1 + random() % 20;
    const std::string text = randomList(random, maxSize);
    for (const ListShape& shape : {ListShape{}, ListShape{2, 0}, ListShape{3, 0}, ListShape{4, 0},
                                   ListShape{3, 3}, ListShape{4, 4}}) {
      ASSERT_EQ(listOf(text, shape, Adding::Together), listOf(text, shape, Adding::OneByOne))
          << text << ' ' << shape.numbersPerLine;
    }
  }
}

TEST(ListLayoutTest, LinesAreAsLongAsTheyMayBe) {
  std::string text;
  for (int i = 0; i < 500; ++i) text += "123 ";
  const std::string list = listOf(text, {}, Adding::Together);
  const std::size_t begin = list.find('\n') + 1;
  const std::size_t end = list.find('\n', begin);
  EXPECT_LE(end - begin, FORMATTED_WIDTH);
  EXPECT_GT(end - begin + 4, FORMATTED_WIDTH);
}

/// Counts the blocks that it receives.
struct BlockCounter final : vsa::Sink {
  bool write(std::string_view) override {
    ++blocks;
    return true;
  }

  int blocks = 0;
};

TEST(OutputBufferTest, CountsColumnsFromTheLastLineFeed) {
  BlockCounter sink;
  OutputBuffer out(sink);
  out.put("abc");
  out.putLines("de");
  EXPECT_EQ(out.column(), 5U);
  out.putLines("\"1\n23\n456\"");
  EXPECT_EQ(out.column(), 4U);
  EXPECT_TRUE(out.flush());
}

TEST(OutputBufferTest, WritesBlocks) {
  BlockCounter sink;
  OutputBuffer out(sink);
  for (int i = 0; i < 1000; ++i) out.put('x');
  EXPECT_EQ(sink.blocks, 0);
  EXPECT_TRUE(out.flush());
  EXPECT_EQ(sink.blocks, 1);
}

}  // namespace

}  // namespace vsa_tools
