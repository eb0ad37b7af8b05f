// Look-up tables that turn the next bits of a deflate stream into symbols. Internal.
//
// A code of up to `primaryBits` bits is found in one step: the stream's next bits, read as a
// number, index the table, and each code fills every slot whose index begins with its bits. A
// longer code leads to a subtable after the primary slots, indexed by the bits that follow. An
// entry is one 32-bit number that contains everything the decoder needs:
//
//   bits 0..5    how many bits to drop: the code's, and those of the extra bits that follow it
//   bits 8..11   how many of these are the code's, so that the rest can be read as the extra bits
//   bit  13      the end of the block
//   bit  14      a subtable: bits 8..11 are its index bits, bits 16..30 the slot where it starts
//   bit  15      NO_VALUE: a subtable, the end of the block, or, if no other bit is set, no code
//   bits 16..30  the value: a literal byte, the base of a length or of a distance
//   bit  31      a literal byte
//
// In a subtable, the bits dropped and the code's bits count from the end of the primary bits.
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

/// Enough slots for every set of codes. The longest code of a subtable of 2^k slots has k more
/// bits, and a complete set with such a code has at least k + 1 codes. So subtables take at most
/// 2^k / (k + 1) slots per symbol: 16/5 of 288 for literals and lengths (k <= 4), 128/8 of 32 for
/// distances (k <= 7).
inline constexpr std::size_t LITLEN_SLOTS = 2048 + 928;
inline constexpr std::size_t DISTANCE_SLOTS = 256 + 512;

/// A view of a table that has been built.
struct Table {
  const Entry* slots;
  unsigned primaryBits;  ///< How many bits index the primary slots.
};

/// What the codes of a table represent. It determines the values and which incomplete sets are
/// accepted.
enum class Alphabet { Litlen, Distance, CodeLength };

/// Builds into `slots` the table of the codes whose lengths in bits are the `count` numbers at
/// `lengths`: 0 for a symbol without a code, none above MAX_CODE_BITS (for code lengths
/// MAX_CODE_LENGTH_BITS). `slots` holds LITLEN_SLOTS or DISTANCE_SLOTS entries; a table of code
/// lengths fits into either. Returns false when the set of codes is over-subscribed or incomplete.
/// Two incomplete sets are accepted, except for code lengths, because encoders write them for
/// blocks with one distance or none: a single code of one bit, and no code at all. Bits that begin
/// no code then lead to an entry in which only NO_VALUE is set.
bool buildTable(Alphabet alphabet, const std::uint8_t* lengths, unsigned count, Entry* slots,
                Table& table);

/// The tables of blocks with fixed codes, built once.
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

const FixedTables& fixedTables();

}  // namespace zn::inflate
