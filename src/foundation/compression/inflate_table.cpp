// Builds the tables of canonical codes. The codes are sorted by length and then by symbol. Each
// code is the previous code plus one, followed by zeros if the code is longer.
//
// A stream contains the highest bit of a code first. The decoder reads this bit as the lowest bit,
// so the codes in this file have their bits in reverse order. The codes of up to n bits are in the
// first 2^n primary slots. Before the codes of n + 1 bits are added, these slots are copied to the
// next 2^n slots, because bit n does not change the meaning of a shorter code.
#include "foundation/compression/inflate_table.h"

#include <algorithm>
#include <array>

namespace zn::inflate {

namespace {

using namespace deflate_format;

constexpr Entry plainEntry(ValueRange range) {
  return Entry{range.base} << 16 | range.extraBits;
}

// The entry of each symbol, without the bits of its code.
template <std::size_t Count>
using Meanings = std::array<Entry, Count>;

constexpr auto makeLitlenMeanings() {
  Meanings<FIXED_LITLEN_COUNT> meanings{};
  for (unsigned byte = 0; byte < 256; ++byte) {
    meanings[byte] = LITERAL | plainEntry({static_cast<std::uint16_t>(byte), 0});
  }
  meanings[END_OF_BLOCK] = NO_VALUE | BLOCK_END;
  for (unsigned i = 0; i < LENGTH_RANGES.size(); ++i) {
    meanings[FIRST_LENGTH_SYMBOL + i] = plainEntry(LENGTH_RANGES[i]);
  }
  std::fill(meanings.begin() + LITLEN_COUNT, meanings.end(), NO_VALUE);
  return meanings;
}

constexpr auto makeDistanceMeanings() {
  Meanings<FIXED_DISTANCE_COUNT> meanings{};
  std::transform(DISTANCE_RANGES.begin(), DISTANCE_RANGES.end(), meanings.begin(), plainEntry);
  std::fill(meanings.begin() + DISTANCE_COUNT, meanings.end(), NO_VALUE);
  return meanings;
}

constexpr auto makeCodeLengthMeanings() {
  Meanings<CODE_LENGTH_COUNT> meanings{};
  for (unsigned i = 0; i < CODE_LENGTH_COUNT; ++i) {
    meanings[i] = plainEntry({static_cast<std::uint16_t>(i), 0});
  }
  return meanings;
}

constexpr auto LITLEN_MEANINGS = makeLitlenMeanings();
constexpr auto DISTANCE_MEANINGS = makeDistanceMeanings();
constexpr auto CODE_LENGTH_MEANINGS = makeCodeLengthMeanings();

struct AlphabetFacts {
  const Entry* meanings;
  unsigned primaryBits;
  bool mayBeIncomplete;
};

// The facts about each alphabet. The index is an Alphabet.
constexpr AlphabetFacts FACTS[] = {
    {LITLEN_MEANINGS.data(), LITLEN_PRIMARY_BITS, true},
    {DISTANCE_MEANINGS.data(), DISTANCE_PRIMARY_BITS, true},
    {CODE_LENGTH_MEANINGS.data(), MAX_CODE_LENGTH_BITS, false},
};

// The number of codes of each length. The index is the length. Index 0 is not used.
using LengthCounts = std::array<unsigned, MAX_CODE_BITS + 1>;

// Returns the two fields of an entry that contain the length of its code: the number of bits to
// drop and the number of bits of the code.
constexpr Entry codeOf(unsigned bits) {
  return bits << 8 | bits;
}

enum class Fit { Complete, Incomplete, OverSubscribed };

Fit fitOf(const LengthCounts& counts) {
  unsigned free = 1;
  for (unsigned bits = 1; bits <= MAX_CODE_BITS; ++bits) {
    free <<= 1;
    if (counts[bits] > free) return Fit::OverSubscribed;
    free -= counts[bits];
  }
  return free == 0 ? Fit::Complete : Fit::Incomplete;
}

unsigned longestOf(const LengthCounts& counts) {
  unsigned longest = MAX_CODE_BITS;
  while (longest > 0 && counts[longest] == 0) --longest;
  return longest;
}

void sortByLength(const std::uint8_t* lengths, unsigned count, const LengthCounts& counts,
                  std::uint16_t* sorted) {
  LengthCounts next{};
  for (unsigned bits = 1; bits < MAX_CODE_BITS; ++bits) next[bits + 1] = next[bits] + counts[bits];
  for (unsigned symbol = 0; symbol < count; ++symbol) {
    if (lengths[symbol] != 0) sorted[next[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
  }
}

// Fills the slots of a complete set of codes, from the shortest code to the longest.
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
        advance(bits);
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
          const unsigned indexBits = subtableBits(bits);
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
        advance(bits);
      }
    }
  }

 private:
  // Advances to the next code of `bits` bits. The bits are in reverse order, so the carry
  // propagates from the highest bit down. The last code of a complete set has only ones. The code
  // after it is 0.
  void advance(unsigned bits) {
    unsigned bit = 1U << (bits - 1);
    while ((code_ & bit) != 0) {
      code_ ^= bit;
      bit >>= 1;
    }
    code_ |= bit;
  }

  // Returns the number of bits that index the subtable of a prefix. `bits` is the length of the
  // first code with this prefix. The subtable is large enough for all codes with this prefix. The
  // loop ends at the longest code at the latest, because the set is complete.
  unsigned subtableBits(unsigned bits) const {
    unsigned indexBits = bits - primaryBits_;
    unsigned free = 1U << indexBits;
    while (left_[primaryBits_ + indexBits] < free) {
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

// Builds the table of an incomplete set. Accepts only the two sets that buildTable documents. The
// index of the table has one bit. No code leads to slot 1, and without a code none leads to slot 0.
bool buildIncompleteTable(const AlphabetFacts& facts, const LengthCounts& counts, unsigned longest,
                          const std::uint16_t* sorted, Entry* slots, Table& table) {
  if (!facts.mayBeIncomplete || longest > 1) return false;
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
  if (fit == Fit::OverSubscribed) return false;

  const unsigned longest = longestOf(counts);
  std::uint16_t sorted[FIXED_LITLEN_COUNT];
  sortByLength(lengths, count, counts, sorted);
  if (fit == Fit::Incomplete) {
    return buildIncompleteTable(facts, counts, longest, sorted, slots, table);
  }
  const unsigned primaryBits = std::min(longest, facts.primaryBits);
  Filler filler(facts, counts, sorted, slots, primaryBits);
  filler.fillPrimary();
  filler.fillSubtables(longest);
  table = Table{slots, primaryBits};
  return true;
}

FixedTables::FixedTables() {
  std::uint8_t lengths[FIXED_LITLEN_COUNT];
  for (unsigned symbol = 0; symbol < FIXED_LITLEN_COUNT; ++symbol) {
    lengths[symbol] = fixedLitlenBits(symbol);
  }
  buildTable(Alphabet::Litlen, lengths, FIXED_LITLEN_COUNT, litlenSlots_, litlen);
  std::fill_n(lengths, FIXED_DISTANCE_COUNT, FIXED_DISTANCE_BITS);
  buildTable(Alphabet::Distance, lengths, FIXED_DISTANCE_COUNT, distanceSlots_, distance);
}

const FixedTables& fixedTables() {
  static const FixedTables tables;
  return tables;
}

}  // namespace zn::inflate
