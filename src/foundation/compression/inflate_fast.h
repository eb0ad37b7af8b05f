// The bit buffer and the copying of matches for the decoder's fast loop. Internal.
//
// The functions check no bounds. An iteration of the loop begins only if the input has at least
// FAST_INPUT_BYTES left and the output has at least FAST_OUTPUT_BYTES left.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "foundation/base/load_word.h"
#include "foundation/base/sanitizers.h"
#include "foundation/compression/deflate_format.h"
#include "foundation/compression/inflate_table.h"

namespace zn::inflate {

inline constexpr std::ptrdiff_t COPY_BYTES = 16;
/// The maximum number of bytes that copying a match may write after the end of the match.
inline constexpr std::ptrdiff_t MAX_OVERSHOOT = 2 * COPY_BYTES;

/// The number of bytes that one iteration of the loop may read and write. An iteration decodes up
/// to three literals, or two literals and a match. It loads 8 bytes at most twice, and each load
/// advances the input by up to 7 bytes. FAST_INPUT_BYTES would even suffice for three loads.
inline constexpr std::ptrdiff_t FAST_INPUT_BYTES = 2 * 7 + 8;
inline constexpr std::ptrdiff_t FAST_OUTPUT_BYTES = 3 + deflate_format::MAX_MATCH + MAX_OVERSHOOT;

/// Returns the low `count` bits. `count` must be at most 63.
constexpr std::uint64_t lowBits(std::uint64_t bits, unsigned count) {
  return bits & ((std::uint64_t{1} << count) - 1);
}

/// The bit buffer and the input of the loop. The lowest bit of `bits` is the next bit of the
/// stream. The lowest `count` bits are counted as loaded. The bits above them are zero, or bits of
/// the byte at `in`, which the next refill loads again and counts.
struct FastBits {
  std::uint64_t bits;
  unsigned count;
  const unsigned char* in;

  /// Loads 8 bytes. Afterwards the buffer contains 56 to 63 bits. `in` advances by the bytes that
  /// fit as a whole, and `count` grows by the bits of these bytes. The new count is 56 + count % 8.
  /// This is `count | 56`, because `count` is less than 64. Loading single bytes would take a
  /// quarter more time on the benchmark inflate/stream.
  VSA_WRAPS_AROUND void refill() {
    bits |= detail::loadLittleEndian(in) << count;
    in += (63 - count) >> 3;
    count |= 56;
  }

  void drop(unsigned dropped) {
    bits >>= dropped;
    count -= dropped;
  }

  /// Returns the table entry for the next code. If the code is in a subtable, returns the entry
  /// that leads to the subtable.
  Entry peek(const Table& table) const { return table.slots[lowBits(bits, table.primaryBits)]; }

  /// Returns the entry of a code in a subtable. `entry` is the entry that leads to the subtable, as
  /// returned by `peek`. Removes the primary bits from the buffer.
  Entry enterSubtable(const Table& table, Entry entry) {
    drop(droppedBits(entry));
    return table.slots[entryValue(entry) + lowBits(bits, codeBits(entry))];
  }

  /// Returns the length or distance of an entry, including its extra bits. Removes the code and the
  /// extra bits from the buffer.
  unsigned readValue(Entry entry) {
    const unsigned dropped = droppedBits(entry);
    const auto extra = static_cast<unsigned>(lowBits(bits, dropped) >> codeBits(entry));
    drop(dropped);
    return entryValue(entry) + extra;
  }

  /// Writes the byte of a literal. Removes its code from the buffer.
  void writeLiteral(Entry entry, unsigned char*& out) {
    drop(droppedBits(entry));
    *out++ = static_cast<unsigned char>(entry >> 16 & 0xFF);
  }
};

template <std::size_t Bytes>
inline void copyBytes(unsigned char* to, const unsigned char* from) {
  // `to` and `from` may overlap.
  unsigned char chunk[Bytes];
  std::memcpy(chunk, from, Bytes);
  std::memcpy(to, chunk, Bytes);
}

/// Copies a match of `length` bytes from `distance` bytes before `to`. `length` must be at least 3.
/// May write up to MAX_OVERSHOOT unspecified bytes after the match. Copying single bytes would take
/// a fifth more time on the benchmark inflate/stream. The steps of 16 bytes save 20 % of the time
/// of inflate/scene, and the branch for a distance of 1 saves 75 % of that of inflate/zeros.
inline void copyMatch(unsigned char* to, std::size_t distance, std::size_t length) {
  const unsigned char* from = to - distance;
  const unsigned char* const end = to + length;
  if (distance >= COPY_BYTES) {
    copyBytes<COPY_BYTES>(to, from);
    copyBytes<COPY_BYTES>(to + COPY_BYTES, from + COPY_BYTES);
    for (to += 2 * COPY_BYTES, from += 2 * COPY_BYTES; to < end;
         to += COPY_BYTES, from += COPY_BYTES) {
      copyBytes<COPY_BYTES>(to, from);
    }
  } else if (distance == 1) {
    std::memset(to, *from, COPY_BYTES);
    for (to += COPY_BYTES; to < end; to += COPY_BYTES) std::memset(to, *from, COPY_BYTES);
  } else if (distance >= 8) {
    for (; to < end; to += 8, from += 8) copyBytes<8>(to, from);
  } else {
    // Only the first `distance` of the 8 copied bytes are correct. The next copy starts after these
    // bytes.
    for (; to < end; to += distance, from += distance) copyBytes<8>(to, from);
  }
}

}  // namespace zn::inflate
