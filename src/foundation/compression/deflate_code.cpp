// Computes prefix codes.
//
// The code lengths are those of Huffman's construction (1952). The construction sorts the
// frequencies and uses two queues instead of a heap. Trees are created in ascending order of
// weight, so the lightest tree is always the first of the leaves or the first of the created trees.
//
// Lengths above the limit are reduced to the limit, which makes the set of codes over-subscribed.
// Codes just below the limit are then lengthened until the set is complete.
#include "foundation/compression/deflate_code.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "foundation/compression/deflate_format.h"

namespace zn::deflate {

namespace {

using deflate_format::MAX_CODE_BITS;

// The number of codes of each length. The index is the length.
using LengthCounts = std::array<std::uint32_t, MAX_CODE_BITS + 1>;
using Symbols = std::vector<std::uint16_t>;

// Returns the symbols that get a code, in ascending order of frequency. Sets the frequency of
// unused symbols to 1 until at least two symbols are used.
Symbols usedSymbols(std::vector<std::uint32_t>& frequencies) {
  Symbols used;
  for (std::size_t symbol = 0; symbol < frequencies.size(); ++symbol) {
    if (frequencies[symbol] > 0) used.push_back(static_cast<std::uint16_t>(symbol));
  }
  for (std::uint16_t symbol = 0; used.size() < 2; ++symbol) {
    if (frequencies[symbol] > 0) continue;
    frequencies[symbol] = 1;
    used.push_back(symbol);
  }
  std::sort(used.begin(), used.end(), [&](std::uint16_t left, std::uint16_t right) {
    return frequencies[left] != frequencies[right] ? frequencies[left] < frequencies[right]
                                                   : left < right;
  });
  return used;
}

// Returns the number of codes of each length. A length above `maxBits` counts as `maxBits`. The
// first nodes are the leaves, in the order of `used`. The other nodes are the trees, in the order
// of their creation. A tree is created after its children, so the depths are computed backwards
// from the last node, the root.
LengthCounts huffmanLengths(const Symbols& used, const std::vector<std::uint32_t>& frequencies,
                            unsigned maxBits) {
  const std::size_t leafCount = used.size();
  const std::size_t nodeCount = 2 * leafCount - 1;
  std::vector<std::uint64_t> weights(nodeCount);
  std::vector<std::size_t> parents(nodeCount);
  for (std::size_t i = 0; i < leafCount; ++i) weights[i] = frequencies[used[i]];

  std::size_t nextLeaf = 0;
  std::size_t nextTree = leafCount;
  for (std::size_t made = leafCount; made < nodeCount; ++made) {
    for (int child = 0; child < 2; ++child) {
      const bool isLeaf =
          nextLeaf < leafCount && (nextTree == made || weights[nextLeaf] <= weights[nextTree]);
      const std::size_t lightest = isLeaf ? nextLeaf++ : nextTree++;
      weights[made] += weights[lightest];
      parents[lightest] = made;
    }
  }

  LengthCounts counts{};
  std::vector<unsigned> depths(nodeCount);
  for (std::size_t node = nodeCount - 1; node > 0;) {
    --node;
    depths[node] = depths[parents[node]] + 1;
    if (node < leafCount) ++counts[std::min(depths[node], maxBits)];
  }
  return counts;
}

// Lengthens codes until the set is complete. The unit of the code space is a code of `maxBits`
// bits, so a shorter code of n bits uses 2^(maxBits - n). A complete set uses 2^maxBits. Each step
// replaces a shorter code and a code of `maxBits` bits by two codes that are one bit longer than
// the shorter code. This reduces the used code space by one.
void limitLengths(LengthCounts& counts, unsigned maxBits) {
  std::uint32_t taken = 0;
  for (unsigned bits = 1; bits <= maxBits; ++bits) taken += counts[bits] << (maxBits - bits);
  for (; taken > 1U << maxBits; --taken) {
    unsigned bits = maxBits - 1;
    while (counts[bits] == 0) --bits;
    --counts[bits];
    counts[bits + 1] += 2;
    --counts[maxBits];
  }
}

std::uint16_t reversed(unsigned code, unsigned length) {
  unsigned result = 0;
  for (unsigned i = 0; i < length; ++i) result |= (code >> i & 1) << (length - 1 - i);
  return static_cast<std::uint16_t>(result);
}

}  // namespace

Code codeOfLengths(std::vector<std::uint8_t> lengths) {
  LengthCounts counts{};
  for (const std::uint8_t length : lengths) ++counts[length];
  counts[0] = 0;
  LengthCounts next{};
  for (unsigned bits = 1; bits <= MAX_CODE_BITS; ++bits) {
    next[bits] = (next[bits - 1] + counts[bits - 1]) << 1;
  }
  Code code;
  for (const std::uint8_t length : lengths) {
    code.bits.push_back(length == 0 ? std::uint16_t{0} : reversed(next[length]++, length));
  }
  code.lengths = std::move(lengths);
  return code;
}

Code codeOfFrequencies(std::vector<std::uint32_t> frequencies, unsigned maxBits) {
  const Symbols used = usedSymbols(frequencies);
  LengthCounts counts = huffmanLengths(used, frequencies, maxBits);
  limitLengths(counts, maxBits);
  std::vector<std::uint8_t> lengths(frequencies.size());
  auto symbol = used.begin();
  for (unsigned bits = maxBits; bits > 0; --bits) {
    for (std::uint32_t i = 0; i < counts[bits]; ++i) {
      lengths[*symbol++] = static_cast<std::uint8_t>(bits);
    }
  }
  return codeOfLengths(std::move(lengths));
}

}  // namespace zn::deflate
