// Tests of the names of nodes. Names of at most 15 characters are stored in the node.
#include "scene/model/storage/inline_name.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/text.h"

namespace zn::korvo_sdk {
namespace {

using vsa_tests::string;
using vsa_tests::text;

static_assert(sizeof(InlineName) == 16);

constexpr std::size_t LENGTHS = 40;  // more than twice the longest name that is stored in the node

/// Returns a name in which each character differs from its neighbours. Some characters have the
/// highest bit set.
std::string sample(std::size_t length) {
  std::string name;
  for (std::size_t i = 0; i < length; ++i) name += static_cast<char>('a' + 7 * i);
  return name;
}

bool isEqual(const std::string& stored, const std::string& asked) {
  const String name = string(asked);
  return InlineName(string(stored)) == InlineName::Key(name);
}

TEST(InlineName, ReturnsNamesOfEveryLength) {
  for (std::size_t length = 0; length < LENGTHS; ++length) {
    const InlineName name(string(sample(length)));
    EXPECT_EQ(text(name.text()), sample(length)) << length;
    EXPECT_TRUE(isEqual(sample(length), sample(length))) << length;
  }
}

TEST(InlineName, DiffersInEveryCharacter) {
  for (std::size_t length = 1; length < LENGTHS; ++length) {
    for (std::size_t i = 0; i < length; ++i) {
      std::string other = sample(length);
      other[i] = static_cast<char>(other[i] ^ 1);
      EXPECT_FALSE(isEqual(sample(length), other)) << length << ' ' << i;
      other[i] = static_cast<char>(other[i] ^ 0x81);
      EXPECT_FALSE(isEqual(sample(length), other)) << length << ' ' << i;
    }
  }
}

TEST(InlineName, DiffersFromALongerOne) {
  for (std::size_t length = 0; length < LENGTHS; ++length) {
    EXPECT_FALSE(isEqual(sample(length), sample(length + 1))) << length;
    EXPECT_FALSE(isEqual(sample(length + 1), sample(length))) << length;
    // The unused bytes of a short name are zero, but they are not a part of the name.
    EXPECT_FALSE(isEqual(sample(length), sample(length) + '\0')) << length;
    EXPECT_FALSE(isEqual(std::string(length, 'a'), std::string(length + 1, 'a'))) << length;
  }
}

TEST(InlineName, NameMayContainNul) {
  for (std::size_t length = 1; length < LENGTHS; ++length) {
    const std::string zeros(length, '\0');
    EXPECT_EQ(text(InlineName(string(zeros)).text()), zeros) << length;
    EXPECT_TRUE(isEqual(zeros, zeros)) << length;
  }
}

TEST(InlineName, SharesTheBufferOfALongName) {
  const String name = string(sample(16));
  EXPECT_EQ(InlineName(name).text().buf(), name.buf());
}

}  // namespace
}  // namespace zn::korvo_sdk
