// Tests of Strings of every length up to MAX_LENGTH. The texts that are hashed have a memory block
// of exactly their size, so that AddressSanitizer detects an access past their end.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include <vsa/foundation/string.h>

namespace zn {
namespace {

constexpr std::size_t MAX_LENGTH = 40;

std::string textOf(std::size_t length) {
  std::string text;
  for (std::size_t i = 0; i < length; ++i) text += static_cast<char>('a' + i % 26);
  return text;
}

/// Returns a copy in a memory block that has the size of the text.
std::unique_ptr<char[]> exact(const std::string& text) {
  auto copy = std::make_unique<char[]>(text.size());
  text.copy(copy.get(), text.size());
  return copy;
}

// Strings whose hashes are known compare the hashes before the characters.
TEST(StringLengths, EqualTextsWithHashesAreEqual) {
  for (std::size_t length = 1; length <= MAX_LENGTH; ++length) {
    const std::string characters(length, 'a');
    const String text = String::copyOf(characters), same = String::copyOf(characters);
    EXPECT_EQ(text.hash(), same.hash());
    EXPECT_TRUE(text == same) << length;
    const String other = String::copyOf(characters.substr(1) + 'b');
    EXPECT_NE(text.hash(), other.hash());
    EXPECT_FALSE(text == other) << length;
  }
}

// Strings with a hash differ at once if their hashes do, so the Strings here have none.
TEST(StringLengths, EqualIfAllCharactersAre) {
  for (std::size_t length = 0; length <= MAX_LENGTH; ++length) {
    std::string text = textOf(length);
    const String one = String::copyOf(text);
    EXPECT_EQ(one, String::copyOf(text)) << length;
    EXPECT_NE(one, String::copyOf(text + "_")) << length;
    for (char& c : text) {
      const char kept = std::exchange(c, '_');
      EXPECT_NE(one, String::copyOf(text)) << length << ' ' << kept;
      c = kept;
    }
  }
}

// Every character affects the hash, and memory after the text does not.
TEST(StringLengths, HashesOfEveryLength) {
  for (std::size_t length = 0; length <= MAX_LENGTH; ++length) {
    const std::string text = textOf(length);
    const auto one = exact(text);
    const std::uint64_t hash = String::hashOf({one.get(), length});
    EXPECT_EQ(hash, String::hashOf(text)) << length;
    EXPECT_NE(hash, 0U);
    for (std::size_t at = 0; at < length; ++at) {
      one[at] = '_';
      EXPECT_NE(String::hashOf({one.get(), length}), hash) << length << ' ' << at;
      one[at] = text[at];
    }
  }
}

TEST(StringLengths, AssignOfEveryLengthOverEveryLength) {
  for (std::size_t first = 1; first <= MAX_LENGTH; ++first) {
    for (std::size_t second = 0; second <= MAX_LENGTH; ++second) {
      String text = String::copyOf(textOf(first));
      const std::uint64_t before = text.hash();
      const std::string expected = std::string(second, 'x');
      text.assign(expected);
      ASSERT_EQ(text.view(), expected) << first;
      ASSERT_EQ(text.buf()[second], '\0') << first;
      ASSERT_EQ(text.hash(), String::hashOf(expected)) << first;
      ASSERT_NE(text.hash(), before) << first;
    }
  }
}

TEST(StringLengths, AssignDoesNotChangeASharedText) {
  String text = String::copyOf("abcdef");
  const String held = text;
  text.assign("uvwxyz");
  EXPECT_EQ(held.view(), "abcdef");
  EXPECT_EQ(text.view(), "uvwxyz");
  String letter('a');
  letter.assign("b");
  EXPECT_EQ(String('a').view(), "a");
}

}  // namespace
}  // namespace zn
