// Prefix codes for the encoder: the lengths of the codes, and their bits. Internal.
#pragma once

#include <cstdint>
#include <vector>

namespace zn::deflate {

/// A code for each symbol of an alphabet; a symbol of length 0 has none. Bits are in the order of
/// the stream, the code's first bit lowest.
struct Code {
  std::vector<std::uint8_t> lengths;
  std::vector<std::uint16_t> bits;
};

/// The canonical code of the given lengths, which must not be over-subscribed.
Code codeOfLengths(std::vector<std::uint8_t> lengths);

/// A complete code of at most `maxBits` bits, short where `frequencies` are high. Symbols of
/// frequency 0 get no code, except that at least two symbols get one: not every decoder accepts
/// fewer. An alphabet has 2 to 288 symbols. `maxBits` is at least 7 for up to 19 symbols and 15
/// otherwise. The frequencies add up to less than 2^32.
Code codeOfFrequencies(std::vector<std::uint32_t> frequencies, unsigned maxBits);

}  // namespace zn::deflate
