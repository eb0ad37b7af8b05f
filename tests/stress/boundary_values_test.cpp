// Tests of boundary values: words that are almost numbers, a buffer or a stream that is one byte
// too long, prefixes that are longer than the text, missing keys of a map, and reads after the last
// character.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include <vsa/foundation/decompress.h>
#include <vsa/foundation/string.h>
#include "foundation/containers/hash_map.h"
#include "foundation/numbers/number_text.h"
#include "tests/support/byte_source.h"
#include "vsa/lex/lexer_source.h"

namespace vsa_tests {

namespace {

using namespace zn::korvo_sdk::impl;
using zn::String;

template <class Real>
bool isReal(std::string_view text) {
  Real out = 1;
  const bool isRead = zn::realFromText(text.data(), text.data() + text.size(), out);
  EXPECT_TRUE(isRead || out == Real{1}) << text;
  return isRead;
}

TEST(BoundaryTest, WordsForNonFiniteNumbers) {
  for (const std::string_view text : {"inf", "Inf", "INF", "-inf", "nan", "NaN", "NAN"}) {
    EXPECT_TRUE(isReal<double>(text)) << text;
    EXPECT_TRUE(isReal<float>(text)) << text;
  }
  for (const std::string_view text : {"in", "inx", "ixf", "xnf", "infi", "na", "nax", "nxn", "xan",
                                      "nanx", "iaf", "nin", "infnan"}) {
    EXPECT_FALSE(isReal<double>(text)) << text;
    EXPECT_FALSE(isReal<float>(text)) << text;
  }
}

TEST(BoundaryTest, StartsWith) {
  const String text("abc");
  EXPECT_TRUE(text.startsWith("abc", false));
  EXPECT_TRUE(text.startsWith("", false));
  EXPECT_FALSE(text.startsWith("abcd", false));
  EXPECT_FALSE(text.startsWith("abd", false));
  EXPECT_FALSE(text.startsWith("ABC", false));
  EXPECT_TRUE(text.startsWith("ABC", true));
  EXPECT_FALSE(text.startsWith("ABCD", true));
}

// "abc" in a stored block of a DEFLATE stream.
constexpr char STORED[] = ".7801 01 0300 fcff 616263 024d0127";

/// Decompresses `text` into a buffer of `capacity` bytes. Returns the bytes or the error message.
std::string decompressed(const std::string& text, std::size_t capacity) {
  std::array<unsigned char, 64> out{};
  std::size_t length = 0;
  String error;
  const bool isDecompressed =
      zn::decompressInto(reinterpret_cast<const unsigned char*>(text.data()), text.size(), error,
                         out.data(), capacity, length);
  if (!isDecompressed) return error.buf();
  return {reinterpret_cast<const char*>(out.data()), length};
}

TEST(BoundaryTest, CapacityForAStoredBlock) {
  EXPECT_EQ(decompressed(STORED, 3), "abc");
  EXPECT_EQ(decompressed(STORED, 4), "abc");
  for (const std::size_t capacity : {0U, 1U, 2U}) {
    EXPECT_EQ(decompressed(STORED, capacity), "compressed data is larger than the buffer")
        << capacity;
  }
}

TEST(BoundaryTest, CapacityForALongStoredBlock) {
  std::string text = ".7801 01 2800 d7ff";
  for (int i = 0; i < 40; ++i) text += "61";
  for (std::size_t capacity = 0; capacity < 40; ++capacity) {
    EXPECT_EQ(decompressed(text, capacity), "compressed data is larger than the buffer")
        << capacity;
  }
  EXPECT_EQ(decompressed(text, 40), "compressed data ends early");
}

TEST(BoundaryTest, BytesAfterAStream) {
  for (const std::size_t count : {1U, 2U, 4U, 7U, 8U, 9U, 64U, 5000U}) {
    std::string behind;
    for (std::size_t i = 0; i < count; ++i) behind += "00";
    EXPECT_EQ(decompressed(STORED + behind, 3), "compressed data is corrupt") << count;
    const std::string far = std::string(20000, ' ') + behind;
    EXPECT_EQ(decompressed(STORED + far, 3), "compressed data is corrupt") << count;
  }
  EXPECT_EQ(decompressed(STORED + std::string(20000, ' '), 3), "abc");
}

TEST(BoundaryTest, MissingKeys) {
  using Map = zn::ds::HashMap<String, std::string>;
  Map map;
  Map other;
  map.set("one", "1");
  EXPECT_EQ(map.get("one"), "1");
  EXPECT_EQ(map.get("onf"), "");
  EXPECT_EQ(&map.get("onf"), &other.get("one"));
  EXPECT_EQ(&map.get("onf"), &Map::missing());
}

TEST(BoundaryTest, AfterTheLastCharacter) {
  constexpr char END = '\xFF';
  FileLexer ofFile(memoryFile("ab"));
  StringLexer ofString("ab");
  for (Lexer* const lexer : {static_cast<Lexer*>(&ofFile), static_cast<Lexer*>(&ofString)}) {
    EXPECT_EQ(lexer->consume(), 'a');
    EXPECT_EQ(lexer->lookaheadChar, 'b');
    EXPECT_EQ(lexer->consume(), 'b');
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(lexer->lookaheadChar, END) << i;
      EXPECT_EQ(lexer->consume(), END) << i;
    }
  }
}

}  // namespace

}  // namespace vsa_tests
