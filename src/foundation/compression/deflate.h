// The encoder of zlib streams. It writes deflate blocks (RFC 1951) in a zlib stream (RFC 1950).
// Internal.
#pragma once

#include <cstddef>
#include <vector>

namespace zn {

/// Receives the bytes of a stream.
class StreamSink {
 public:
  virtual ~StreamSink() = default;
  /// Receives the next `count` bytes. `count` may be 0. An exception ends the compression.
  virtual void put(const unsigned char* bytes, std::size_t count) = 0;
};

/// Compresses the `size` bytes at `data` and writes the zlib stream to `out`, block by block.
/// `data` may be null if `size` is 0. Uses less than 2 MB of memory, independent of `size`. Throws
/// std::bad_alloc and the exceptions of `out`.
void deflateTo(const unsigned char* data, std::size_t size, StreamSink& out);

/// Returns the zlib stream of the `size` bytes at `data`. `data` may be null if `size` is 0. Takes
/// time proportional to `size`. The stream is longer than the data by at most 11 bytes, and 5 bytes
/// more for each full 32 KiB of data. Throws std::bad_alloc.
std::vector<unsigned char> deflateStream(const unsigned char* data, std::size_t size);

}  // namespace zn
