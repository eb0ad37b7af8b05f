// Tests that the ends of tokens are found in texts of every length, compared with plain loops. The
// memory block ends with the text, so that AddressSanitizer detects a read past its end.
#include "vsa/lex/token_scan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <string_view>

#include "tests/support/text.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::visible;

/// A copy of some bytes in a memory block of exactly their size.
class Exact {
 public:
  explicit Exact(std::string_view bytes)
      : bytes_(std::make_unique<char[]>(bytes.size())), size_(bytes.size()) {
    bytes.copy(bytes_.get(), size_);
  }
  const char* begin() const { return bytes_.get(); }
  const char* end() const { return bytes_.get() + size_; }

 private:
  std::unique_ptr<char[]> bytes_;
  std::size_t size_;
};

/// Returns `length` random bytes. On average, one byte in `rarity` is from `rare`, and the
/// remaining ones are from `usual`.
std::string drawn(std::mt19937& random, std::size_t length, std::string_view usual,
                  std::string_view rare, unsigned rarity) {
  std::string bytes;
  while (bytes.size() < length) {
    const std::string_view from = random() % rarity == 0 ? rare : usual;
    bytes += from[random() % from.size()];
  }
  return bytes;
}

constexpr std::size_t LONGEST = 70;
constexpr int ROUNDS = 40;

/// Calls `check` with many texts of every length.
template <class Check>
void forTexts(std::string_view usual, std::string_view rare, const Check& check) {
  std::mt19937 random(7);
  for (std::size_t length = 0; length <= LONGEST; ++length) {
    for (int round = 0; round < ROUNDS; ++round) {
      check(drawn(random, length, usual, rare, round % 2 == 0 ? 4 : 30));
    }
  }
}

TEST(TokenScan, NamesEndBeforeTheFirstOtherByte) {
  forTexts("azAZ09_\x80\xFE", "\xFF@[`{/:^-. \n", [](const std::string& text) {
    const Exact bytes(text);
    std::size_t expected = 0;
    while (expected < text.size() && char_class::is(text[expected], char_class::NAME)) ++expected;
    ASSERT_EQ(endOfName(bytes.begin(), bytes.end()) - bytes.begin(),
              static_cast<std::ptrdiff_t>(expected))
        << visible(text);
  });
}

TEST(TokenScan, NumbersEndBeforeTheFirstOtherByteAndDetectReals) {
  forTexts("0123456789+-bcdeuBCDEU", ".fFnNaAiI gGhHjJ@\x80\xFF;", [](const std::string& text) {
    const Exact bytes(text);
    std::size_t expected = 0;
    bool isReal = false;
    for (; expected < text.size() && char_class::is(text[expected], char_class::NUMBER);
         ++expected) {
      isReal = isReal || std::string_view(".fFnNaAiI").find(text[expected]) != std::string::npos;
    }
    const NumberEnd end = endOfNumber(bytes.begin(), bytes.end());
    ASSERT_EQ(end.at - bytes.begin(), static_cast<std::ptrdiff_t>(expected)) << visible(text);
    ASSERT_EQ(end.isReal, isReal) << visible(text);
  });
}

TEST(TokenScan, PlainListsHaveSingleBlanksBetweenNumbers) {
  forTexts("0123456789.", " ,\t()x", [](const std::string& text) {
    const Exact bytes(text);
    std::size_t expected = 0;
    for (char before = ' '; expected < text.size(); before = text[expected++]) {
      const bool isNumber = char_class::is(text[expected], char_class::NUMBER);
      if (!isNumber && (text[expected] != ' ' || before == ' ')) break;
    }
    ASSERT_EQ(endOfPlainList(bytes.begin(), bytes.end()) - bytes.begin(),
              static_cast<std::ptrdiff_t>(expected))
        << visible(text);
  });
}

/// Returns the offset after the closing quote of the string at the beginning of the text, or 0 if a
/// NUL, a 0xFF or the end of the text is before it. Reads one character or escape sequence at a
/// time. The last byte of the text is only lookahead.
std::size_t stringEnd(const std::string& text) {
  for (std::size_t at = 1; at + 1 < text.size(); ++at) {
    if (text[at] == '"') return at + 1;
    if (text[at] == '\0' || text[at] == '\xFF') return 0;
    if (text[at] == '\\' && (text[at + 1] == '\\' || text[at + 1] == '"')) ++at;
  }
  return 0;
}

void checkString(const std::string& tail) {
  const std::string text = '"' + tail + '"';
  const Exact bytes(text);
  const StringEnd end = endOfString(bytes.begin(), bytes.end() - 1);
  const std::size_t expected = stringEnd(text);
  ASSERT_EQ(end.at == nullptr ? 0 : end.at - bytes.begin(), static_cast<std::ptrdiff_t>(expected))
      << visible(text);
  if (expected == 0) return;
  const std::string_view inside = std::string_view(text).substr(0, expected);
  const std::size_t last = inside.rfind('\n');
  ASSERT_EQ(end.feeds.count,
            static_cast<std::size_t>(std::count(inside.begin(), inside.end(), '\n')))
      << visible(text);
  ASSERT_EQ(end.feeds.last, last == std::string_view::npos ? nullptr : bytes.begin() + last)
      << visible(text);
  ASSERT_EQ(end.hasBackslash, inside.find('\\') != std::string_view::npos) << visible(text);
}

TEST(TokenScan, StringsEndAfterTheClosingQuote) {
  constexpr std::string_view RARE("\"\\\\\\\n\n\t\x01\0\xFF", 10);
  forTexts("ab'\x7F\x80\xFE ", RARE, checkString);
}

TEST(TokenScan, RunsOfBackslashesEscapeTheClosingQuoteOrNot) {
  forTexts("\\", "\"", checkString);
  forTexts("\\\\\\\\\\a", "\"\n", checkString);
}

TEST(TokenScan, CommentsEndBeforeALineBreakANulOrTheEndMark) {
  constexpr std::string_view RARE("\n\r\0\xFF\t\t\x01\x0B\x0E\x0E", 10);
  forTexts("#ab\x7F\x80\xFE ", RARE, [](const std::string& text) {
    const Exact bytes(text);
    constexpr std::string_view ENDS("\n\r\0\xFF", 4);
    ASSERT_EQ(endOfComment(bytes.begin(), bytes.end()) - bytes.begin(),
              static_cast<std::ptrdiff_t>(std::min(text.find_first_of(ENDS), text.size())))
        << visible(text);
  });
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
