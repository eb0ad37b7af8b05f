// Codes are canonical: sorted by length and then by symbol, each is the one before plus one.
// Streams hold a code's highest bit first in their lowest bit, so codes are counted here with their
// bits reversed. The primary slots grow with the lengths: all codes of n bits stand in the first
// 2^n slots, and to go on to n + 1 bits these slots are written once more behind themselves.

#include "foundation/compression/inflate_table.h"

#include <algorithm>
#include <array>

namespace zn::inflate {

namespace {

constexpr Entry plainEntry(unsigned base, unsigned extraBits) {
  return base << 16 | extraBits;
}

// What a symbol's entry holds before the bits of its code are known.
template <std::size_t Count>
using Meanings = std::array<Entry, Count>;

constexpr Meanings<SYMBOL_COUNT> makeSymbolMeanings() {
  Meanings<SYMBOL_COUNT> meanings{};
  for (unsigned byte = 0; byte < 256; ++byte) meanings[byte] = LITERAL | plainEntry(byte, 0);
  meanings[256] = NO_VALUE | END_OF_BLOCK;
  unsigned base = 3;
  for (unsigned i = 0; i < 28; ++i) {
    const unsigned extraBits = i < 8 ? 0 : i / 4 - 1;
    meanings[257 + i] = plainEntry(base, extraBits);
    base += 1U << extraBits;
  }
  meanings[285] = plainEntry(258, 0);
  meanings[286] = meanings[287] = NO_VALUE;
  return meanings;
}

constexpr Meanings<DISTANCE_COUNT> makeDistanceMeanings() {
  Meanings<DISTANCE_COUNT> meanings{};
  unsigned base = 1;
  for (unsigned i = 0; i < 30; ++i) {
    const unsigned extraBits = i < 4 ? 0 : i / 2 - 1;
    meanings[i] = plainEntry(base, extraBits);
    base += 1U << extraBits;
  }
  meanings[30] = meanings[31] = NO_VALUE;
  return meanings;
}

constexpr Meanings<LENGTH_CODE_COUNT> makeLengthCodeMeanings() {
  Meanings<LENGTH_CODE_COUNT> meanings{};
  for (unsigned i = 0; i < LENGTH_CODE_COUNT; ++i) meanings[i] = plainEntry(i, 0);
  return meanings;
}

constexpr auto SYMBOL_MEANINGS = makeSymbolMeanings();
constexpr auto DISTANCE_MEANINGS = makeDistanceMeanings();
constexpr auto LENGTH_CODE_MEANINGS = makeLengthCodeMeanings();

struct AlphabetFacts {
  const Entry* meanings;
  unsigned primaryBits;
  bool mayLeaveBits;
};

constexpr AlphabetFacts FACTS[] = {
    {SYMBOL_MEANINGS.data(), SYMBOL_PRIMARY_BITS, true},
    {DISTANCE_MEANINGS.data(), DISTANCE_PRIMARY_BITS, true},
    {LENGTH_CODE_MEANINGS.data(), LENGTH_CODE_BITS, false},
};

// Codes of each length; those of length 0, which are none, are never asked for.
using LengthCounts = std::array<unsigned, LONGEST_CODE + 1>;

// The bits of a code as an entry counts them: among the dropped ones, and as the code's own.
constexpr Entry codeOf(unsigned bits) {
  return bits << 8 | bits;
}

enum class Fit { Complete, LeavesBits, TooMany };

Fit fitOf(const LengthCounts& counts) {
  unsigned free = 1;
  for (unsigned bits = 1; bits <= LONGEST_CODE; ++bits) {
    free <<= 1;
    if (counts[bits] > free) return Fit::TooMany;
    free -= counts[bits];
  }
  return free == 0 ? Fit::Complete : Fit::LeavesBits;
}

unsigned longestOf(const LengthCounts& counts) {
  unsigned longest = LONGEST_CODE;
  while (longest > 0 && counts[longest] == 0) --longest;
  return longest;
}

void sortByLength(const std::uint8_t* lengths, unsigned count, const LengthCounts& counts,
                  std::uint16_t* sorted) {
  LengthCounts next{};
  for (unsigned bits = 1; bits < LONGEST_CODE; ++bits) next[bits + 1] = next[bits] + counts[bits];
  for (unsigned symbol = 0; symbol < count; ++symbol) {
    if (lengths[symbol] != 0) sorted[next[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
  }
}

// Writes the slots of a complete set, from the shortest code to the longest.
class Filler {
 public:
  Filler(const AlphabetFacts& facts, const LengthCounts& counts, const std::uint16_t* sorted,
         Entry* slots, unsigned primaryBits)
      : meanings_(facts.meanings),
        left_(counts),
        next_(sorted),
        slots_(slots),
        primaryBits_(primaryBits) {}

  void fillPrimary() {
    slots_[0] = slots_[1] = NO_VALUE;
    for (unsigned bits = 1; bits <= primaryBits_; ++bits) {
      const std::size_t half = std::size_t{1} << (bits - 1);
      if (bits > 1) std::copy(slots_, slots_ + half, slots_ + half);
      for (; left_[bits] > 0; --left_[bits]) {
        slots_[code_] = meanings_[*next_++] + codeOf(bits);
        countUp(bits);
      }
    }
  }

  void fillSubtables(unsigned longest) {
    const unsigned primaryMask = (1U << primaryBits_) - 1;
    unsigned prefix = ~0U;
    std::size_t start = 0;
    std::size_t end = std::size_t{1} << primaryBits_;
    std::size_t subtableSize = 0;
    for (unsigned bits = primaryBits_ + 1; bits <= longest; ++bits) {
      for (; left_[bits] > 0; --left_[bits]) {
        if ((code_ & primaryMask) != prefix) {
          prefix = code_ & primaryMask;
          const unsigned indexBits = subtableBits(bits, longest);
          start = end;
          subtableSize = std::size_t{1} << indexBits;
          end += subtableSize;
          slots_[prefix] =
              NO_VALUE | SUBTABLE | static_cast<Entry>(start << 16) | indexBits << 8 | primaryBits_;
        }
        const unsigned ownBits = bits - primaryBits_;
        const Entry entry = meanings_[*next_++] + codeOf(ownBits);
        const std::size_t stride = std::size_t{1} << ownBits;
        for (std::size_t at = code_ >> primaryBits_; at < subtableSize; at += stride) {
          slots_[start + at] = entry;
        }
        countUp(bits);
      }
    }
  }

 private:
  // The next code of `bits` bits, reversed: the carry runs from the highest bit downwards. The last
  // code of a complete set, all ones, is followed by 0.
  void countUp(unsigned bits) {
    unsigned bit = 1U << (bits - 1);
    while ((code_ & bit) != 0) {
      code_ ^= bit;
      bit >>= 1;
    }
    code_ |= bit;
  }

  // How many bits past the primary ones the codes of one prefix go, when the first of them has
  // `bits` bits: as many as it takes until the codes that come next fill the prefix.
  unsigned subtableBits(unsigned bits, unsigned longest) const {
    unsigned indexBits = bits - primaryBits_;
    unsigned free = 1U << indexBits;
    while (primaryBits_ + indexBits < longest && left_[primaryBits_ + indexBits] < free) {
      free = (free - left_[primaryBits_ + indexBits]) << 1;
      ++indexBits;
    }
    return indexBits;
  }

  const Entry* meanings_;
  LengthCounts left_;
  const std::uint16_t* next_;
  Entry* slots_;
  unsigned primaryBits_;
  unsigned code_ = 0;
};

// The two sets that leave bits over, with a table of one bit: slot 1 begins no code.
bool buildShortTable(const AlphabetFacts& facts, const LengthCounts& counts, unsigned longest,
                     const std::uint16_t* sorted, Entry* slots, Table& table) {
  if (!facts.mayLeaveBits || longest > 1) return false;
  slots[0] = slots[1] = NO_VALUE | codeOf(1);
  if (counts[1] == 1) slots[0] = facts.meanings[sorted[0]] + codeOf(1);
  table = Table{slots, 1};
  return true;
}

}  // namespace

bool buildTable(Alphabet alphabet, const std::uint8_t* lengths, unsigned count, Entry* slots,
                Table& table) {
  const AlphabetFacts& facts = FACTS[static_cast<unsigned>(alphabet)];
  LengthCounts counts{};
  for (unsigned symbol = 0; symbol < count; ++symbol) ++counts[lengths[symbol]];
  const Fit fit = fitOf(counts);
  if (fit == Fit::TooMany) return false;

  const unsigned longest = longestOf(counts);
  std::uint16_t sorted[SYMBOL_COUNT];
  sortByLength(lengths, count, counts, sorted);
  if (fit == Fit::LeavesBits) {
    return buildShortTable(facts, counts, longest, sorted, slots, table);
  }
  const unsigned primaryBits = std::min(longest, facts.primaryBits);
  Filler filler(facts, counts, sorted, slots, primaryBits);
  filler.fillPrimary();
  filler.fillSubtables(longest);
  table = Table{slots, primaryBits};
  return true;
}

FixedTables::FixedTables() {
  std::uint8_t lengths[SYMBOL_COUNT];
  std::fill(lengths, lengths + 144, std::uint8_t{8});
  std::fill(lengths + 144, lengths + 256, std::uint8_t{9});
  std::fill(lengths + 256, lengths + 280, std::uint8_t{7});
  std::fill(lengths + 280, lengths + 288, std::uint8_t{8});
  buildTable(Alphabet::Symbols, lengths, SYMBOL_COUNT, symbolSlots, symbols);
  std::fill(lengths, lengths + DISTANCE_COUNT, std::uint8_t{5});
  buildTable(Alphabet::Distances, lengths, DISTANCE_COUNT, distanceSlots, distances);
}

const FixedTables& fixedTables() {
  static const FixedTables tables;
  return tables;
}

}  // namespace zn::inflate
