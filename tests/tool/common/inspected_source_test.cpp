// Tests of InspectedSource: what it delivers of a text with a NUL byte.
#include "tools/vsa/input/inspected_source.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace vsa_tools {

namespace {

using namespace std::string_literals;

class MemorySource final : public InspectedSource {
 public:
  explicit MemorySource(std::string text) : text_(std::move(text)) {}

 private:
  std::size_t readRaw(char* to, std::size_t capacity) override {
    const std::size_t count = text_.copy(to, capacity);
    text_.erase(0, count);
    return count;
  }
  std::string rawError() const override { return {}; }

  std::string text_;
};

// The bytes after the NUL are read from the source before they are delivered.
TEST(InspectedSourceTest, DeliversTheBytesAfterANul) {
  const std::string texts[] = {"lamp a;\n# x\0y\n"s,
                               "lamp a\0; lamp moon; # "s + std::string(50, 'z')};
  for (const std::string& text : texts) {
    MemorySource source(text);
    std::string delivered;
    std::string block(100, 'b');
    while (const std::size_t count = source.read(block)) {
      delivered.append(block, 0, count);
      std::fill(block.begin(), block.end(), 'b');
    }
    EXPECT_EQ(delivered, text);
    EXPECT_TRUE(source.firstNul().has_value());
  }
}

}  // namespace

}  // namespace vsa_tools
