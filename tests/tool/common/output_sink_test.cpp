// Tests of the escaping of texts for terminals.
#include "tools/vsa/common/writing/output_sink.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace vsa_tests {

namespace {

using vsa_tools::PrintableParts;

TEST(PrintableParts, EscapeControlsButNoLineFeeds) {
  PrintableParts parts;
  EXPECT_EQ(parts.add("a\x1b[2J\nb\\x\n\n"), "a\\x1b[2J\nb\\x\n\n");
  EXPECT_EQ(parts.end(), "");
}

// Wherever a text is divided, its characters are the same as in one part.
TEST(PrintableParts, KeepCharactersOfTwoParts) {
  constexpr std::string_view TEXT = "d\u00E9 \u0915\u2013\n\U0001F600!";
  for (std::size_t first = 0; first <= TEXT.size(); ++first) {
    for (std::size_t second = first; second <= TEXT.size(); ++second) {
      PrintableParts parts;
      std::string shown = parts.add(TEXT.substr(0, first));
      shown += parts.add(TEXT.substr(first, second - first));
      shown += parts.add(TEXT.substr(second));
      EXPECT_EQ(shown + parts.end(), TEXT) << first << ' ' << second;
    }
  }
}

TEST(PrintableParts, EscapeBytesThatAreNoCharacter) {
  PrintableParts parts;
  EXPECT_EQ(parts.add("a\xE2\x80"), "a");
  EXPECT_EQ(parts.add("b"), "\\xe2\\x80b");
  EXPECT_EQ(parts.add("\xF0\x9F"), "");
  EXPECT_EQ(parts.end(), "\\xf0\\x9f");
  EXPECT_EQ(parts.add("\x80\x80\x80\x80"), "\\x80\\x80\\x80\\x80");
}

}  // namespace

}  // namespace vsa_tests
