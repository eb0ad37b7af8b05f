// Prefix codes for the encoder: which lengths they get, and their bits.
//
// This is an internal header of the encoder, foundation/deflate.h.
#pragma once

#include <cstdint>
#include <vector>

namespace zn::deflate {

/// A code for each symbol of an alphabet. Bits are stored as the stream wants them, the code's
/// first bit lowest. A symbol of length 0 has no code.
struct Code {
  std::vector<std::uint8_t> lengths;
  std::vector<std::uint16_t> bits;
};

/// The canonical code of the given lengths, which must be those of a set of codes.
Code codeOfLengths(std::vector<std::uint8_t> lengths);

/// A complete code of at most `longest` bits, short where `frequencies` are high. Symbols of
/// frequency 0 get none, but that two symbols always get one, since not every decoder takes less.
/// An alphabet holds 2 to 288 symbols, `longest` is at least 7 for up to 19 of them, else 15, and
/// the frequencies add up to less than 2^32.
Code codeOfFrequencies(std::vector<std::uint32_t> frequencies, unsigned longest);

}  // namespace zn::deflate
