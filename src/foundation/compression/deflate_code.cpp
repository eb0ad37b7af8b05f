// Lengths come from Huffman's construction (1952) over the sorted frequencies, with two queues in
// place of a heap: trees are made in the order of their weight, so the lightest one is always at
// the head of the leaves or of the trees. Lengths beyond the limit are cut to it, and room for them
// is made by lengthening the codes next to the limit until the set fits again.

#include "foundation/compression/deflate_code.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace zn::deflate {

namespace {

constexpr unsigned LONGEST_CODE = 15;

using LengthCounts = std::array<std::uint32_t, LONGEST_CODE + 1>;
using Symbols = std::vector<std::uint16_t>;

// The symbols that get a code, from the rarest on.
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

// How many symbols get each length; lengths beyond `longest` count as `longest`. Node i < n is the
// leaf of symbol i, node n + k the tree made k-th; a tree is made after its parts, so that parents
// stand behind their children and depths follow from the root, the last node, backwards.
LengthCounts huffmanLengths(const Symbols& used, const std::vector<std::uint32_t>& frequencies,
                            unsigned longest) {
  const std::size_t leafCount = used.size();
  const std::size_t nodeCount = 2 * leafCount - 1;
  std::vector<std::uint64_t> weights(nodeCount);
  std::vector<std::size_t> parents(nodeCount);
  for (std::size_t i = 0; i < leafCount; ++i) weights[i] = frequencies[used[i]];

  std::size_t nextLeaf = 0;
  std::size_t nextTree = leafCount;
  for (std::size_t made = leafCount; made < nodeCount; ++made) {
    for (int part = 0; part < 2; ++part) {
      const bool leaf =
          nextLeaf < leafCount && (nextTree == made || weights[nextLeaf] <= weights[nextTree]);
      const std::size_t lightest = leaf ? nextLeaf++ : nextTree++;
      weights[made] += weights[lightest];
      parents[lightest] = made;
    }
  }

  LengthCounts counts{};
  std::vector<unsigned> depths(nodeCount);
  for (std::size_t node = nodeCount - 1; node > 0;) {
    --node;
    depths[node] = depths[parents[node]] + 1;
    if (node < leafCount) ++counts[std::min(depths[node], longest)];
  }
  return counts;
}

// Counted in codes of `longest` bits, a set may take 2^longest. One code of that length moves up to
// share the place of a shorter one, which saves one such code each time.
void fitWithin(LengthCounts& counts, unsigned longest) {
  std::uint32_t taken = 0;
  for (unsigned bits = 1; bits <= longest; ++bits) taken += counts[bits] << (longest - bits);
  for (; taken > 1U << longest; --taken) {
    unsigned bits = longest - 1;
    while (counts[bits] == 0) --bits;
    --counts[bits];
    counts[bits + 1] += 2;
    --counts[longest];
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
  for (unsigned bits = 1; bits <= LONGEST_CODE; ++bits) {
    next[bits] = (next[bits - 1] + counts[bits - 1]) << 1;
  }
  Code code;
  for (const std::uint8_t length : lengths) {
    code.bits.push_back(length == 0 ? std::uint16_t{0} : reversed(next[length]++, length));
  }
  code.lengths = std::move(lengths);
  return code;
}

Code codeOfFrequencies(std::vector<std::uint32_t> frequencies, unsigned longest) {
  const Symbols used = usedSymbols(frequencies);
  LengthCounts counts = huffmanLengths(used, frequencies, longest);
  fitWithin(counts, longest);
  std::vector<std::uint8_t> lengths(frequencies.size());
  auto symbol = used.begin();
  for (unsigned bits = longest; bits > 0; --bits) {
    for (std::uint32_t i = 0; i < counts[bits]; ++i) {
      lengths[*symbol++] = static_cast<std::uint8_t>(bits);
    }
  }
  return codeOfLengths(std::move(lengths));
}

}  // namespace zn::deflate
