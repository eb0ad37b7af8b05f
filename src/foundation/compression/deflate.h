// The encoder of zlib streams: deflate blocks (RFC 1951) in a zlib stream (RFC 1950). Internal.
#pragma once

#include <cstddef>
#include <vector>

namespace zn {

/// The zlib stream of the `size` bytes at `data`, which may be null if `size` is 0. Takes time
/// proportional to `size`. The stream is longer than the data by at most 5 bytes for each block and
/// for each 65535 bytes, and by 6 bytes of header and checksum. Throws std::bad_alloc.
std::vector<unsigned char> deflateStream(const unsigned char* data, std::size_t size);

}  // namespace zn
