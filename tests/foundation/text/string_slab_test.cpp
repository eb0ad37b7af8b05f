// Tests of StringSlabs: texts that share slabs of memory.
#include "foundation/text/string_slab.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <vsa/foundation/string.h>

namespace zn {
namespace {

std::string lettersOf(std::size_t length) {
  std::string text;
  for (std::size_t i = 0; i < length; ++i) text += static_cast<char>('a' + i % 26);
  return text;
}

TEST(StringSlabs, TextsAreCopies) {
  StringSlabs slabs;
  std::vector<String> texts;
  for (std::size_t length = 0; length < 2000; ++length) {
    texts.push_back(slabs.copyOf(lettersOf(length)));
  }
  for (std::size_t length = 0; length < 2000; ++length) {
    EXPECT_EQ(texts[length].view(), lettersOf(length));
    EXPECT_EQ(texts[length].buf()[length], '\0');
  }
}

// The first slab is large enough for every first text that is stored in a slab. A longer text has
// its own allocation.
TEST(StringSlabs, TheFirstTextMayHaveAnyLength) {
  for (std::size_t length = 0; length < 2000; ++length) {
    StringSlabs slabs;
    EXPECT_EQ(slabs.copyOf(lettersOf(length)).view(), lettersOf(length));
  }
}

TEST(StringSlabs, TextsAreAlignedLikeATextWithItsOwnBlock) {
  const auto placeOf = [](const String& text) {
    return reinterpret_cast<std::uintptr_t>(text.buf()) % 8;
  };
  StringSlabs slabs;
  std::vector<String> texts;
  for (std::size_t length = 1; length < 300; ++length) {
    texts.push_back(slabs.copyOf(lettersOf(length)));
    EXPECT_EQ(placeOf(texts.back()), placeOf(String("alone"))) << length;
  }
}

TEST(StringSlabs, TextsOutliveTheirStringSlabs) {
  std::vector<String> texts;
  {
    StringSlabs slabs;
    for (int i = 0; i < 1000; ++i) texts.push_back(slabs.copyOf("text " + std::to_string(i)));
  }
  for (std::size_t i = 0; i < 1000; i += 2) texts[i] = String();
  for (std::size_t i = 1; i < 1000; i += 2) {
    EXPECT_EQ(texts[i].view(), "text " + std::to_string(i));
  }
}

TEST(StringSlabs, UsesTheGivenHash) {
  StringSlabs slabs;
  EXPECT_EQ(slabs.copyOf("material", String::hashOf("material")).hash(), String("material").hash());
  EXPECT_EQ(slabs.copyOf("material").hash(), String("material").hash());
}

// The memory that a text leaves in a slab is not used again for another text.
TEST(StringSlabs, AssignDoesNotChangeOtherTexts) {
  StringSlabs slabs;
  String first = slabs.copyOf("abc");
  const String second = slabs.copyOf("def");
  first.assign("a text that is longer than before");
  EXPECT_EQ(first.view(), "a text that is longer than before");
  EXPECT_EQ(second.view(), "def");
}

TEST(StringSlabs, TextsMayBeReleasedOnOtherThreads) {
  auto slabs = std::make_unique<StringSlabs>();
  std::vector<std::vector<String>> shares(8);
  for (std::size_t i = 0; i < 4000; ++i) {
    shares[i % 8].push_back(slabs->copyOf("name_" + std::to_string(i)));
  }
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < 8; ++t) {
    threads.emplace_back([&shares, t] {
      for (std::size_t i = 0; i < shares[t].size(); ++i) {
        EXPECT_EQ(shares[t][i].view(), "name_" + std::to_string(8 * i + t));
      }
      shares[t].clear();
    });
  }
  slabs.reset();
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace zn
