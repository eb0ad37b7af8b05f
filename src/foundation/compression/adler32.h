// Computes Adler-32, the checksum at the end of a zlib stream (RFC 1950, section 8.2). Internal.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zn {

/// The checksum of an empty stream. It is the `adler` argument for the first part of a stream.
inline constexpr std::uint32_t ADLER32_START = 1;

/// Returns the checksum after the `size` bytes at `data` are appended to a stream with the checksum
/// `adler`. A stream can be passed in parts: adler32(adler32(ADLER32_START, a), b) is the checksum
/// of a followed by b. `data` may be null if `size` is 0.
std::uint32_t adler32(std::uint32_t adler, const unsigned char* data, std::size_t size);

/// Like adler32, but never with its SSE2 kernel. For tests.
std::uint32_t adler32Portable(std::uint32_t adler, const unsigned char* data, std::size_t size);

}  // namespace zn
