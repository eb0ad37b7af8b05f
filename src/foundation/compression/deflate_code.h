// Prefix codes for the encoder: the lengths of the codes, and their bits. Internal.
#pragma once

#include <cstdint>
#include <vector>

namespace zn::deflate {

/// The codes of the symbols of an alphabet. A symbol of length 0 has no code. Bits are in the order
/// of the stream: the first bit of a code is its lowest.
struct Code {
  std::vector<std::uint8_t> lengths;
  std::vector<std::uint16_t> bits;
};

/// The canonical code of the given lengths, which must not be over-subscribed.
Code codeOfLengths(std::vector<std::uint8_t> lengths);

/// A complete code of at most `maxBits` bits. Symbols with a high frequency get short codes.
/// Symbols of frequency 0 get no code, except that at least two symbols get one: some decoders do
/// not accept fewer. An alphabet has 2 to 288 symbols. `maxBits` is at least 7 for up to 19 symbols
/// and 15 otherwise. The frequencies add up to less than 2^32.
Code codeOfFrequencies(std::vector<std::uint32_t> frequencies, unsigned maxBits);

}  // namespace zn::deflate
