// Tests of the encodings that the first bytes of a file show.
#include "tools/vsa/input/encoding.h"

#include <gtest/gtest.h>

#include <string_view>

namespace vsa_tools {

namespace {

using namespace std::string_view_literals;

TEST(EncodingTest, Utf32HasOneCharacterInFourBytes) {
  EXPECT_STREQ(foreignEncoding("a\0\0\0b\0\0\0"sv), "UTF-32");
  EXPECT_STREQ(foreignEncoding("\0\0\0a\0\0\0b"sv), "UTF-32");
  EXPECT_EQ(foreignEncoding("lamp a;\n"sv), nullptr);
  // The last character of Unicode is U+10FFFF.
  EXPECT_STREQ(foreignEncoding("a\0\x10\0a\0\x10\0"sv), "UTF-32");
  EXPECT_STREQ(foreignEncoding("a\0\x11\0a\0\x11\0"sv), "UTF-16");
}

// The second character would be U+0000. In UTF-16, a part of the text may be NULs.
TEST(EncodingTest, Utf32HasNoNul) {
  EXPECT_STREQ(foreignEncoding("a\0\0\0\0\0\0\0b\0\0\0"sv), "UTF-16");
  EXPECT_STREQ(foreignEncoding("a\0\0\0b\0\0\0\0\0\0\0"sv), "UTF-16");
}

}  // namespace

}  // namespace vsa_tools
