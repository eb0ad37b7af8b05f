// The decoder of zlib streams: RFC 1950 around RFC 1951.
//
// This is an internal header; the service that reads compressed texts is foundation/decompress.h.
//
// The decoder writes straight into the caller's memory, which is at once the window that matches
// are copied from, and pulls its input in runs of any size, so that nobody holds a whole stream in
// a form it did not come in. What it refuses and accepts is what the stream's own definition says,
// with two sets of codes that leave bits over let through (inflate_table.h) and no distance limit
// but the start of the output.
#pragma once

#include <cstddef>

namespace zn {

/// Where the decoder's input comes from, run by run.
class ByteFeed {
 public:
  virtual ~ByteFeed() = default;

  /// Points `bytes` at the next run and returns its size in bytes; 0 at the end, and from then on.
  /// The run holds until the next call.
  virtual std::size_t next(const unsigned char*& bytes) = 0;
};

/// How decoding ended. Of several faults it is the one the decoder meets first, going through the
/// stream in order; bytes after the stream come last, after the checksum.
enum class InflateStatus {
  Done,           // the whole stream, its checksum right, nothing behind it
  EndsEarly,      // the input ended inside the stream
  Corrupt,        // a header, block or code that cannot be, a preset dictionary, or bytes behind
  WrongChecksum,  // the Adler-32 at the end is not that of the output
  TooLarge,       // the stream goes on past `capacity` bytes of output
};

/// Decodes the stream that `feed` gives into the `capacity` bytes at `out` (which may be null when
/// `capacity` is 0) and sets `length` to the bytes decoded, on failure those before the fault.
/// Never writes past `out + capacity`; of the bytes from `out + length` on, up to 32 may have been
/// set to zero and the rest is untouched, so memory that came zeroed is zero there still. Uses
/// about 16 KiB of stack and no heap.
InflateStatus inflateStream(ByteFeed& feed, unsigned char* out, std::size_t capacity,
                            std::size_t& length);

/// The same for a stream that lies in memory as a whole, the `size` bytes at `data`.
InflateStatus inflateStream(const unsigned char* data, std::size_t size, unsigned char* out,
                            std::size_t capacity, std::size_t& length);

}  // namespace zn
