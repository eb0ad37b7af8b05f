// The encoder of zlib streams (RFC 1950 around RFC 1951), for `compress`.
//
// This is an internal header; the service is foundation/decompress.h.
#pragma once

#include <cstddef>
#include <vector>

namespace zn {

/// The zlib stream of the `size` bytes at `data` (null when `size` is 0). Works through the data
/// once, in time proportional to it; the stream is never longer than the data by more than 5 bytes
/// for each 65535 and each block, and a few. Throws std::bad_alloc.
std::vector<unsigned char> deflateStream(const unsigned char* data, std::size_t size);

}  // namespace zn
