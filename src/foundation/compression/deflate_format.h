// The constants of the deflate format (RFC 1951) and the zlib format (RFC 1950). The encoder and
// the decoder share them. Internal.
//
// A compressed block contains symbols of two alphabets. A literal/length symbol is a byte, the end
// of the block, or the length of a match. A length is followed by a distance symbol. Each length or
// distance symbol represents a range of values. Extra bits after the code of the symbol select one
// value of the range.
//
// A dynamic block begins with the code lengths of both alphabets. The code lengths are coded with a
// third alphabet.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zn::deflate_format {

// --- the zlib header ---

inline constexpr unsigned METHOD_DEFLATE = 8;
inline constexpr unsigned MAX_WINDOW_SIZE_CODE = 7;  // A window of 32 KiB.
inline constexpr unsigned PRESET_DICTIONARY = 0x20;

/// The largest distance of a match.
inline constexpr std::size_t WINDOW_BYTES = 32768;

// --- blocks ---

enum class BlockType : unsigned { Stored = 0, FixedCodes = 1, DynamicCodes = 2 };

inline constexpr std::size_t MAX_STORED_BYTES = 65535;

// --- the literal/length and the distance alphabet ---

inline constexpr unsigned END_OF_BLOCK = 256;
inline constexpr unsigned FIRST_LENGTH_SYMBOL = 257;
inline constexpr unsigned LITLEN_COUNT = 286;   ///< The number of valid literal/length symbols.
inline constexpr unsigned DISTANCE_COUNT = 30;  ///< The number of valid distance symbols.
inline constexpr unsigned FIXED_LITLEN_COUNT = 288;  ///< The number of symbols with a fixed code.
inline constexpr unsigned FIXED_DISTANCE_COUNT = 32;

inline constexpr unsigned MIN_MATCH = 3;
inline constexpr unsigned MAX_MATCH = 258;

/// The values that one symbol represents: 2^extraBits consecutive values from `base` on.
struct ValueRange {
  std::uint16_t base;
  std::uint8_t extraBits;
};

/// Returns the ranges of the length symbols from FIRST_LENGTH_SYMBOL on. The first eight symbols
/// represent one length each. After them, four symbols have one extra bit, the next four have two,
/// and so on. The last symbol represents only the longest match.
constexpr auto makeLengthRanges() {
  std::array<ValueRange, LITLEN_COUNT - FIRST_LENGTH_SYMBOL> ranges{};
  unsigned base = MIN_MATCH;
  for (unsigned i = 0; i + 1 < ranges.size(); ++i) {
    const unsigned extraBits = i < 8 ? 0 : i / 4 - 1;
    ranges[i] = {static_cast<std::uint16_t>(base), static_cast<std::uint8_t>(extraBits)};
    base += 1U << extraBits;
  }
  ranges.back() = {MAX_MATCH, 0};
  return ranges;
}

/// Returns the ranges of the distance symbols. The first four symbols represent one distance each.
/// After them, two symbols have one extra bit, the next two have two, and so on.
constexpr auto makeDistanceRanges() {
  std::array<ValueRange, DISTANCE_COUNT> ranges{};
  unsigned base = 1;
  for (unsigned i = 0; i < ranges.size(); ++i) {
    const unsigned extraBits = i < 4 ? 0 : i / 2 - 1;
    ranges[i] = {static_cast<std::uint16_t>(base), static_cast<std::uint8_t>(extraBits)};
    base += 1U << extraBits;
  }
  return ranges;
}

inline constexpr auto LENGTH_RANGES = makeLengthRanges();
inline constexpr auto DISTANCE_RANGES = makeDistanceRanges();

// --- code lengths ---

/// The number of bits of the longest literal/length or distance code.
inline constexpr unsigned MAX_CODE_BITS = 15;

/// Returns the length of the fixed code of a literal/length symbol.
constexpr std::uint8_t fixedLitlenBits(unsigned symbol) {
  if (symbol < 144) return 8;
  if (symbol < 256) return 9;
  return symbol < 280 ? 7 : 8;
}
inline constexpr std::uint8_t FIXED_DISTANCE_BITS = 5;

/// The number of symbols of the third alphabet. A symbol is a code length, or repeats a code length
/// several times.
inline constexpr unsigned CODE_LENGTH_COUNT = 19;
/// The number of bits of the longest code of the third alphabet.
inline constexpr unsigned MAX_CODE_LENGTH_BITS = 7;
/// The order in which a block contains the lengths of the codes of the third alphabet.
inline constexpr std::array<std::uint8_t, CODE_LENGTH_COUNT> CODE_LENGTH_ORDER = {
    16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};

inline constexpr unsigned REPEAT_PREVIOUS = 16;
inline constexpr unsigned REPEAT_ZERO = 17;
inline constexpr unsigned REPEAT_ZERO_OFTEN = 18;

/// The repeat counts of the symbols REPEAT_PREVIOUS, REPEAT_ZERO and REPEAT_ZERO_OFTEN.
inline constexpr std::array<ValueRange, 3> REPETITION_RANGES = {{{3, 2}, {3, 3}, {11, 7}}};

constexpr ValueRange repetitionRange(unsigned symbol) {
  return REPETITION_RANGES[symbol - REPEAT_PREVIOUS];
}

/// Returns the largest value of the range.
constexpr unsigned maxOf(ValueRange range) {
  return range.base + (1U << range.extraBits) - 1;
}

// A dynamic block begins with three counts of code lengths. These constants are the number of bits
// of each count, and the count that the value 0 represents.
inline constexpr unsigned LITLEN_COUNT_BITS = 5;
inline constexpr unsigned DISTANCE_COUNT_BITS = 5;
inline constexpr unsigned CODE_LENGTH_COUNT_BITS = 4;
inline constexpr unsigned MIN_LITLEN_COUNT = FIRST_LENGTH_SYMBOL;
inline constexpr unsigned MIN_DISTANCE_COUNT = 1;
inline constexpr unsigned MIN_CODE_LENGTH_COUNT = 4;
/// The number of bits in which a block stores the length of each code of the third alphabet.
inline constexpr unsigned CODE_LENGTH_LENGTH_BITS = 3;

}  // namespace zn::deflate_format
