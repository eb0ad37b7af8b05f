// Prefix codes for the encoder. Internal.
#pragma once

#include <cstdint>
#include <vector>

namespace zn::deflate {

/// The codes of the symbols of an alphabet. The index is the symbol. A symbol whose length is 0 has
/// no code. The bits are in the order of the stream: the first bit of a code is its lowest bit.
struct Code {
  std::vector<std::uint8_t> lengths;
  std::vector<std::uint16_t> bits;
};

/// Returns the canonical code of the given lengths of at most 15 bits. The lengths must not be
/// over-subscribed: the sum of 2^-length over all codes must be at most 1.
Code codeOfLengths(std::vector<std::uint8_t> lengths);

/// Returns a complete code of at most `maxBits` bits. Symbols with a high frequency get short
/// codes. Symbols of frequency 0 get no code. Exception: at least two symbols get a code, because
/// some decoders do not accept fewer. The alphabet must have 2 to 288 symbols. `maxBits` must be
/// 15, or 7 to 15 for up to 19 symbols: 7 and 15 are the limits of the format.
Code codeOfFrequencies(std::vector<std::uint32_t> frequencies, unsigned maxBits);

}  // namespace zn::deflate
