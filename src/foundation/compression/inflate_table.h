// Look-up tables that decode the next bits of a deflate stream to a symbol. Internal.
//
// The next `primaryBits` bits of the stream, read as a number, index the table. A code of up to
// `primaryBits` bits fills every slot whose index has the code in its lowest bits, so one look-up
// finds its entry. A longer code leads to a subtable after the primary slots. The following bits of
// the stream index the subtable. An entry is one 32-bit number:
//
//   bits 0..5    the number of bits to drop: the bits of the code and the extra bits after it
//   bits 8..11   the number of bits of the code. The other dropped bits are the extra bits.
//   bit  13      the end of the block
//   bit  14      a subtable. Bits 0..5: the primary bits. Bits 8..11: the number of bits that index
//                the subtable. Bits 16..30: the slot where it starts.
//   bit  15      NO_VALUE: a subtable, the end of the block, or, if bits 13 and 14 are 0, no symbol
//   bits 16..30  the value: a literal byte, the base of a length or distance, or a code length
//   bit  31      a literal byte
//
// In the entries of a subtable, both numbers of bits exclude the primary bits.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/compression/deflate_format.h"

namespace zn::inflate {

using Entry = std::uint32_t;

inline constexpr Entry LITERAL = 0x80000000U;
inline constexpr Entry NO_VALUE = 0x8000U;
inline constexpr Entry SUBTABLE = 0x4000U;
inline constexpr Entry BLOCK_END = 0x2000U;

constexpr unsigned droppedBits(Entry entry) {
  return entry & 63U;
}
constexpr unsigned codeBits(Entry entry) {
  return entry >> 8 & 15U;
}
constexpr unsigned entryValue(Entry entry) {
  return entry >> 16 & 0x7FFFU;
}

inline constexpr unsigned LITLEN_PRIMARY_BITS = 11;
inline constexpr unsigned DISTANCE_PRIMARY_BITS = 8;

/// The number of slots that is sufficient for every set of codes. If a subtable has 2^k slots, its
/// longest code has k bits after the primary bits. A complete subtable with such a code contains at
/// least k + 1 codes. Subtables therefore take at most 2^k / (k + 1) slots per symbol. k is at most
/// MAX_CODE_BITS minus the number of primary bits. For the 288 literal/length symbols, k is at most
/// 4, which gives 288 * 16 / 5 slots, less than 928. For the 32 distance symbols, k is at most 7,
/// which gives 32 * 128 / 8 = 512 slots.
inline constexpr std::size_t LITLEN_SLOTS = 2048 + 928;
inline constexpr std::size_t DISTANCE_SLOTS = 256 + 512;

/// A view of a table that was built.
struct Table {
  const Entry* slots;
  unsigned primaryBits;  ///< The number of bits that index the primary slots.
};

/// The alphabet of a table. It determines the values of the entries, and which incomplete sets are
/// accepted.
enum class Alphabet { Litlen, Distance, CodeLength };

/// Builds the table of a set of codes in `slots`. `lengths` contains the length of each of the
/// `count` codes in bits. The length 0 means that the symbol has no code. No length may exceed
/// MAX_CODE_BITS, or MAX_CODE_LENGTH_BITS for code lengths. `slots` must have LITLEN_SLOTS or
/// DISTANCE_SLOTS entries. Both are sufficient for code lengths.
///
/// Returns false if the set is over-subscribed (there are not enough codes of these lengths) or
/// incomplete (some bits begin no code). Two incomplete sets are accepted, except for code lengths:
/// a single code of one bit, and no code at all. Encoders write these sets for blocks with one
/// distance or no distance. Bits that begin no code lead to an entry with NO_VALUE and neither
/// SUBTABLE nor BLOCK_END, and so does the code of a symbol that is not valid.
bool buildTable(Alphabet alphabet, const std::uint8_t* lengths, unsigned count, Entry* slots,
                Table& table);

/// The tables of the blocks with fixed codes.
struct FixedTables {
  FixedTables();
  FixedTables(const FixedTables&) = delete;
  FixedTables& operator=(const FixedTables&) = delete;

  Table litlen;
  Table distance;

 private:
  Entry litlenSlots_[LITLEN_SLOTS];
  Entry distanceSlots_[DISTANCE_SLOTS];
};

/// Returns the tables. The first call builds them.
const FixedTables& fixedTables();

}  // namespace zn::inflate
