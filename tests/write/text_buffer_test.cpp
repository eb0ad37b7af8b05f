// Tests of the block in which the writer collects a text.
#include "write/text/text_buffer.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace vsa::impl {

namespace {

class CollectingSink final : public vsa::Sink {
 public:
  bool write(std::string_view more) override {
    text += more;
    return true;
  }

  std::string text;
};

TEST(TextBuffer, FullBlockIsPassedToTheSinkBeforeTheNextCharacter) {
  CollectingSink sink;
  TextBuffer buffer(sink);
  std::string expected;
  while (buffer.flushed() == 0 && expected.size() < 100000) {
    expected += static_cast<char>('a' + expected.size() % 26);
    buffer.put(expected.back());
  }
  EXPECT_EQ(buffer.flushed(), expected.size() - 1);
  EXPECT_EQ(buffer.size(), expected.size());
  buffer.flush();
  EXPECT_TRUE(sink.text == expected);
}

}  // namespace

}  // namespace vsa::impl
