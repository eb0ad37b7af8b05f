// Texts whose buffers share slabs.
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

std::string textOf(std::size_t length) {
  std::string text;
  for (std::size_t i = 0; i < length; ++i) text += static_cast<char>('a' + i % 26);
  return text;
}

TEST(StringSlabs, TextsAreWhatTheyAreMadeFrom) {
  StringSlabs slabs;
  std::vector<String> texts;
  for (std::size_t length = 0; length < 2000; ++length) {
    texts.push_back(slabs.copyOf(textOf(length)));
  }
  for (std::size_t length = 0; length < 2000; ++length) {
    EXPECT_EQ(texts[length].view(), textOf(length));
    EXPECT_EQ(texts[length].buf()[length], '\0');
  }
}

// Its maker has no slab yet, and makes one that is large enough.
TEST(StringSlabs, TheFirstTextMayHaveAnyLength) {
  for (std::size_t length = 0; length < 2000; ++length) {
    StringSlabs slabs;
    EXPECT_EQ(slabs.copyOf(textOf(length)).view(), textOf(length));
  }
}

// As a text of its own does, whose memory the allocator aligns.
TEST(StringSlabs, EveryTextLiesOnAMultipleOfEight) {
  const auto placeOf = [](const String& text) {
    return reinterpret_cast<std::uintptr_t>(text.buf()) % 8;
  };
  StringSlabs slabs;
  std::vector<String> texts;
  for (std::size_t length = 1; length < 300; ++length) {
    texts.push_back(slabs.copyOf(textOf(length)));
    EXPECT_EQ(placeOf(texts.back()), placeOf(String("alone"))) << length;
  }
}

TEST(StringSlabs, TextsOutliveTheirMakerInAnyOrder) {
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

TEST(StringSlabs, TheHashIsTheOneThatIsGiven) {
  StringSlabs slabs;
  EXPECT_EQ(slabs.copyOf("material", String::hashOf("material")).hash(), String("material").hash());
  EXPECT_EQ(slabs.copyOf("material").hash(), String("material").hash());
}

// The memory of a slab is its texts' for good: no text takes the place of another.
TEST(StringSlabs, AssignLeavesTheOthersAlone) {
  StringSlabs slabs;
  String first = slabs.copyOf("abc");
  const String second = slabs.copyOf("def");
  first.assign("a text that is longer than before");
  EXPECT_EQ(first.view(), "a text that is longer than before");
  EXPECT_EQ(second.view(), "def");
}

TEST(StringSlabs, TextsMayEndOnOtherThreads) {
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
