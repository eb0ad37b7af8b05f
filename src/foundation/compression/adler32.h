// The checksum at the end of a zlib stream: Adler-32 (RFC 1950, section 8.2). Internal.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zn {

/// The checksum of an empty stream. Pass it as `adler` for the first piece of a stream.
inline constexpr std::uint32_t ADLER32_START = 1;

/// Updates the checksum `adler` with the `size` bytes at `data`. A stream can be passed in pieces:
/// adler32(adler32(ADLER32_START, a), b) is the checksum of a followed by b. `data` may be null
/// when `size` is 0.
std::uint32_t adler32(std::uint32_t adler, const unsigned char* data, std::size_t size);

/// The same function without the SSE2 kernel. Both functions always return the same checksum.
std::uint32_t adler32Portable(std::uint32_t adler, const unsigned char* data, std::size_t size);

}  // namespace zn
