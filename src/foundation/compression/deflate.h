// The encoder of zlib streams: deflate blocks (RFC 1951) in a zlib stream (RFC 1950). Internal.
#pragma once

#include <cstddef>
#include <vector>

namespace zn {

/// Receives the bytes of a stream.
class StreamSink {
 public:
  virtual ~StreamSink() = default;
  /// Receives the next `count` bytes, 0 or more. An exception from it ends the compression.
  virtual void put(const unsigned char* bytes, std::size_t count) = 0;
};

/// Writes the zlib stream of the `size` bytes at `data` (null when `size` is 0) to `out`, block by
/// block. Uses about 2 MB of memory, independent of `size`. Throws std::bad_alloc, and what `out`
/// throws.
void deflateTo(const unsigned char* data, std::size_t size, StreamSink& out);

/// The zlib stream of the `size` bytes at `data`, which may be null if `size` is 0. Takes time
/// proportional to `size`. The stream is longer than the data by at most 5 bytes for each block and
/// for each 65535 bytes, and by 6 bytes of header and checksum. Throws std::bad_alloc.
std::vector<unsigned char> deflateStream(const unsigned char* data, std::size_t size);

}  // namespace zn
