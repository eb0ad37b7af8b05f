// Classifies characters, and finds the ends of names, numbers, strings, comments and short lists.
// With SSE2, most steps process 16 bytes (32 in a string). Internal.
#pragma once

#include <array>
#include <cstdint>

#include <vsa/foundation/char_class.h>
#include "foundation/base/sanitizers.h"
#include "vsa/lex/byte_scan.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

namespace detail {

constexpr std::array<Token::Type, 256> makeFirst() {
  using enum Token::Type;
  struct Row {
    char c;
    Token::Type type;
  };
  constexpr Row ROWS[] = {
      {'"', Str},    {'#', Comment}, {'(', Parens},    {'{', Braces}, {'[', Brackets},
      {'\'', Quote}, {'*', Star},    {'+', Plus},      {',', Comma},  {'.', Dot},
      {'/', Slash},  {':', Colon},   {';', Semicolon}, {'=', Equals}, {'\\', Backslash},
      {'|', Pipe},   {'-', Int},     {'_', Id},
  };
  std::array<Token::Type, 256> types{};
  for (unsigned byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    types[byte] = char_class::is(c, char_class::LETTER)  ? Id
                  : char_class::is(c, char_class::DIGIT) ? Int
                                                         : Invalid;
  }
  for (const Row& row : ROWS) types[static_cast<unsigned char>(row.c)] = row.type;
  return types;
}

inline constexpr std::array<Token::Type, 256> FIRST = makeFirst();

#if defined(__SSE2__)
inline std::uint32_t maskOf(__m128i flags) {
  return static_cast<std::uint32_t>(_mm_movemask_epi8(flags));
}

/// Flags the bytes from `first` to `last`, inclusive. SSE2 has only signed comparisons. A constant
/// is therefore added that makes `last` the largest signed byte, 127. `first` becomes 127 - (last -
/// first), and bytes above `last` become negative.
inline __m128i within(__m128i bytes, char first, char last) {
  const __m128i moved = _mm_add_epi8(bytes, _mm_set1_epi8(static_cast<char>(127 - last)));
  return _mm_cmpgt_epi8(moved, _mm_set1_epi8(static_cast<char>(126 - (last - first))));
}

inline __m128i equal(__m128i bytes, char c) {
  return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c));
}

/// Converts letters to lower case. Changes other bytes, too, but converts none of them to a letter.
inline __m128i folded(__m128i bytes) {
  return _mm_or_si128(bytes, _mm_set1_epi8(0x20));
}

inline std::uint32_t nameMask(__m128i bytes) {
  // High bytes are part of a name, except the end mark. As signed bytes, 0x80 to 0xFE are less than
  // -1, and the end mark 0xFF is -1.
  const __m128i high = _mm_cmplt_epi8(bytes, _mm_set1_epi8(-1));
  const __m128i letters = _mm_or_si128(within(folded(bytes), 'a', 'z'), equal(bytes, '_'));
  return maskOf(_mm_or_si128(_mm_or_si128(letters, within(bytes, '0', '9')), high));
}

/// Flags the characters that make a number a real number: the point, and the letters of the suffix
/// "f", of "inf" and of "nan".
inline __m128i realMarkers(__m128i bytes) {
  const __m128i lower = folded(bytes);
  return _mm_or_si128(
      _mm_or_si128(equal(bytes, '.'), equal(lower, 'f')),
      _mm_or_si128(_mm_or_si128(equal(lower, 'n'), equal(lower, 'a')), equal(lower, 'i')));
}

inline std::uint32_t numberMask(__m128i bytes, __m128i markers) {
  const __m128i lower = folded(bytes);
  const __m128i digits = _mm_or_si128(within(bytes, '0', '9'), within(lower, 'a', 'f'));
  const __m128i others =
      _mm_or_si128(_mm_or_si128(equal(bytes, '-'), equal(bytes, '+')), equal(lower, 'u'));
  return maskOf(_mm_or_si128(_mm_or_si128(digits, others), markers));
}
#endif

}  // namespace detail

/// Whether the character is a bracket of any kind. In a list, brackets of another kind separate
/// numbers like blanks.
constexpr bool isBracket(char c) {
  return c == '(' || c == ')' || c == '[' || c == ']' || c == '{' || c == '}';
}

/// Whether the character may be in a parenthesis or brace list.
constexpr bool mayBeInList(char c) {
  return char_class::is(c, char_class::NUMBER | char_class::WHITE) || c == ',' || isBracket(c);
}

/// Whether the character may be in a bracket list, before the "]" that closes the list.
constexpr bool mayBeInBrackets(char c) {
  return c == '[' || c == '*' || char_class::is(c, char_class::DIGIT | char_class::WHITE);
}

/// Returns the type of the token that begins with `c`. The type is Int for every number, Id for
/// every word, and Invalid if no token begins with `c`.
constexpr Token::Type firstOf(char c) {
  return detail::FIRST[static_cast<unsigned char>(c)];
}

/// Whether a token is a single character. `first` is the result of firstOf for its first character.
constexpr bool isOneCharacter(Token::Type first) {
  return static_cast<int>(first) >= static_cast<int>(Token::Type::Dot);
}

/// Returns the first byte in [at, end) that is not part of a name. Returns `end` if there is no
/// such byte.
inline const char* endOfName(const char* at, const char* end) {
#if defined(__SSE2__)
  for (; end - at >= 16; at += 16) {
    const std::uint32_t stops = ~detail::nameMask(detail::load16(at)) & 0xFFFF;
    if (stops != 0) return at + __builtin_ctz(stops);
  }
#endif
  while (at < end && char_class::is(*at, char_class::NAME)) ++at;
  return at;
}

/// Whether the character makes a number a real number: the point, or a letter of the suffix "f", of
/// "inf" or of "nan".
inline bool isRealMarker(char c) {
  return c == '.' || c == 'f' || c == 'F' || c == 'n' || c == 'N' || c == 'a' || c == 'A' ||
         c == 'i' || c == 'I';
}

/// The end of a number.
struct NumberEnd {
  const char* at;  ///< One past the last number character.
  bool isReal;     ///< Whether the number is a real number.
};

inline NumberEnd endOfNumber(const char* at, const char* end) {
  bool isReal = false;
#if defined(__SSE2__)
  for (; end - at >= 16; at += 16) {
    const __m128i bytes = detail::load16(at);
    const __m128i markers = detail::realMarkers(bytes);
    const std::uint32_t stops = ~detail::numberMask(bytes, markers) & 0xFFFF;
    const std::uint32_t marks = detail::maskOf(markers);
    if (stops != 0) {
      const std::uint32_t inNumber = (stops & (~stops + 1)) - 1;
      return {at + __builtin_ctz(stops), isReal || (marks & inNumber) != 0};
    }
    isReal = isReal || marks != 0;
  }
#endif
  for (; at < end && char_class::is(*at, char_class::NUMBER); ++at) {
    isReal = isReal || isRealMarker(*at);
  }
  return {at, isReal};
}

/// The end of a quoted string, and facts about its characters.
struct StringEnd {
  /// One past the closing quote. Null if the closing quote is not buffered, or if the string
  /// contains a NUL or the end mark 0xFF.
  const char* at = nullptr;
  LineFeeds feeds{0, nullptr};
  bool hasBackslash = false;  ///< Whether the string contains a backslash.
};

namespace detail {

#if defined(__SSE2__)
/// Flags the bytes from NUL to `last`, inclusive, and the end mark 0xFF. SSE2 has only signed
/// comparisons. A constant is therefore added that makes the end mark the smallest signed byte and
/// NUL the next one.
inline __m128i upToOrMark(__m128i bytes, char last) {
  const __m128i moved = _mm_add_epi8(bytes, _mm_set1_epi8(-127));
  return _mm_cmplt_epi8(moved, _mm_set1_epi8(static_cast<char>(last - 126)));
}

/// Bit masks of 32 bytes of a string. A mask flags the bytes that equal a given character, or the
/// bytes that are control characters.
struct StringMasks {
  explicit StringMasks(const char* at) : low_(load16(at)), high_(load16(at + 16)) {}

  std::uint32_t of(char c) const { return both(equal(low_, c), equal(high_, c)); }
  /// Flags line feeds, NUL and the end mark, and also the other control characters below the line
  /// feed.
  std::uint32_t controls() const { return both(upToOrMark(low_, '\n'), upToOrMark(high_, '\n')); }
  bool areEmpty() const { return maskOf(_mm_or_si128(special(low_), special(high_))) == 0; }

 private:
  static std::uint32_t both(__m128i low, __m128i high) { return maskOf(low) | maskOf(high) << 16; }
  static __m128i special(__m128i bytes) {
    const __m128i delimiters = _mm_or_si128(equal(bytes, '"'), equal(bytes, '\\'));
    return _mm_or_si128(upToOrMark(bytes, '\n'), delimiters);
  }

  __m128i low_, high_;
};
#endif

/// Flags the bytes that a backslash escapes. `carry` states whether the first byte is escaped. On
/// return, it states whether the byte after the 32 bytes is escaped. The function has no branches,
/// because the positions of escapes are unpredictable. Together with the steps of 32 bytes, this
/// saves 9 % of the instructions of the benchmark text.
VSA_WRAPS_AROUND inline std::uint32_t escapedMask(std::uint32_t backslashes, std::uint32_t& carry) {
  // In a run of backslashes, the first, third, fifth and so on escape the next byte. The
  // subtraction carries through each run, which gives the parity of the run's length.
  constexpr std::uint32_t ODD = 0xAAAAAAAA;
  const std::uint32_t starts = backslashes & ~carry;
  const std::uint32_t codes = ((starts << 1 | ODD) - starts) ^ ODD;
  const std::uint32_t escaped = codes ^ (backslashes | carry);
  carry = (codes & backslashes) >> 31;
  return escaped;
}

/// Flags the bits below the lowest bit set in `mask`. Flags all bits if `mask` is 0.
VSA_WRAPS_AROUND inline std::uint32_t bitsBelowLowest(std::uint32_t mask) {
  return (mask - 1) & ~mask;
}

/// Counts the byte if it is a line feed. Returns false for NUL and the end mark 0xFF. The fast path
/// does not read a string that contains them.
inline bool passInString(const char* at, LineFeeds& feeds) {
  if (*at == '\n') feeds = {feeds.count + 1, at};
  return *at != '\0' && *at != static_cast<char>(0xFF);
}

}  // namespace detail

/// Finds the end of the string whose opening quote is at `at`. If the string does not end before
/// `end`, or contains a NUL or the end mark 0xFF, `StringEnd::at` is null.
inline StringEnd endOfString(const char* at, const char* end) {
  StringEnd found;
  // Whether the byte at `at` is escaped.
  std::uint32_t isEscaped = 0;
  ++at;
#if defined(__SSE2__)
  for (; end - at >= 32; at += 32) {
    const detail::StringMasks masks(at);
    if (masks.areEmpty()) {
      isEscaped = 0;
      continue;
    }
    const std::uint32_t backslashes = masks.of('\\');
    const std::uint32_t ends = masks.of('"') & ~detail::escapedMask(backslashes, isEscaped);
    const std::uint32_t inString = detail::bitsBelowLowest(ends);
    for (std::uint32_t left = masks.controls() & inString; left != 0; left &= left - 1) {
      if (!detail::passInString(at + __builtin_ctz(left), found.feeds)) return found;
    }
    found.hasBackslash = found.hasBackslash || (backslashes & inString) != 0;
    if (ends == 0) continue;
    found.at = at + __builtin_ctz(ends) + 1;
    return found;
  }
#endif
  for (; at < end && detail::passInString(at, found.feeds); ++at) {
    if (*at == '"' && isEscaped == 0) {
      found.at = at + 1;
      return found;
    }
    isEscaped = *at == '\\' && isEscaped == 0 ? 1 : 0;
    found.hasBackslash = found.hasBackslash || *at == '\\';
  }
  return found;
}

/// Returns the end of the comment at `at`: the first line break, NUL or end mark 0xFF. Returns
/// `end` if there is none before it.
inline const char* endOfComment(const char* at, const char* end) {
  const auto isEnd = [](char c) {
    return c == '\n' || c == '\r' || c == '\0' || c == static_cast<char>(0xFF);
  };
#if defined(__SSE2__)
  for (; end - at >= 16; at += 16) {
    std::uint32_t left = detail::maskOf(detail::upToOrMark(detail::load16(at), '\r'));
    for (; left != 0; left &= left - 1) {
      if (isEnd(at[__builtin_ctz(left)])) return at + __builtin_ctz(left);
    }
  }
#endif
  while (at < end && !isEnd(*at)) ++at;
  return at;
}

/// Returns the first byte in [at, end) that is neither a number character nor a single blank
/// after a number character. Returns `end` if there is no such byte.
inline const char* endOfPlainList(const char* at, const char* end) {
#if defined(__SSE2__)
  // Whether the byte before this step is a blank. Initially 1, because a list may not begin with a
  // blank.
  std::uint32_t before = 1;
  for (; end - at >= 16; at += 16) {
    const __m128i bytes = detail::load16(at);
    const std::uint32_t blanks = detail::equalMask(bytes, ' ');
    const std::uint32_t numbers = detail::numberMask(bytes, detail::realMarkers(bytes));
    const std::uint32_t doubled = blanks & (blanks << 1 | before);
    const std::uint32_t stops = (~(blanks | numbers) | doubled) & 0xFFFF;
    if (stops != 0) return at + __builtin_ctz(stops);
    before = blanks >> 15;
  }
  bool afterBlank = before != 0;
#else
  bool afterBlank = true;
#endif
  for (; at < end; ++at) {
    const bool isBlank = *at == ' ';
    if (isBlank ? afterBlank : !char_class::is(*at, char_class::NUMBER)) break;
    afterBlank = isBlank;
  }
  return at;
}

}  // namespace zn::korvo_sdk::impl
