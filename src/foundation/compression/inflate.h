// The decoder of zlib streams: deflate blocks (RFC 1951) in a zlib stream (RFC 1950). Internal.
//
// It decodes into the caller's memory, which is also the window for matches. It reads its input in
// runs of any size, so there is no second copy of the stream. It accepts and rejects streams as the
// RFCs require, with two differences: two incomplete sets of codes are accepted (inflate_table.h),
// and a match may reach back to the start of the output, whatever window size the header states.
#pragma once

#include <cstddef>

namespace zn {

/// The source of the decoder's input.
class ByteFeed {
 public:
  virtual ~ByteFeed() = default;

  /// Points `bytes` at the next run and returns its size in bytes; 0 at the end and in every call
  /// after that. The run is valid until the next call.
  virtual std::size_t next(const unsigned char*& bytes) = 0;
};

/// The result of decoding. If a stream has several faults, this is the first one in the order of
/// the stream: a wrong checksum precedes bytes after the stream.
enum class InflateStatus {
  Done,       // the whole stream, with the right checksum and no bytes after it
  EndsEarly,  // the input ended inside the stream
  Corrupt,    // an invalid header, block or code, a preset dictionary, or bytes after the stream
  WrongChecksum,  // the Adler-32 at the end is not that of the output
  TooLarge,       // the stream continues after `capacity` bytes of output
};

/// Decodes the stream that `feed` delivers into the `capacity` bytes at `out` (which may be null
/// when `capacity` is 0) and sets `length` to the number of decoded bytes; on failure, to the
/// number of bytes decoded before the fault. Never writes past `out + capacity`. May set up to 32
/// bytes from `out + length` on to zero and changes no other byte after the output, so memory that
/// was zero stays zero there. Uses about 16 KiB of stack and no heap.
InflateStatus inflateStream(ByteFeed& feed, unsigned char* out, std::size_t capacity,
                            std::size_t& length);

/// The same function for a stream that is completely in memory: the `size` bytes at `data`.
InflateStatus inflateStream(const unsigned char* data, std::size_t size, unsigned char* out,
                            std::size_t capacity, std::size_t& length);

}  // namespace zn
