// The decoder of zlib streams: deflate blocks (RFC 1951) in a zlib stream (RFC 1950). Internal.
//
// The decoder writes into the caller's memory, which is also the window for matches. It reads its
// input in runs of any size, so that the stream is never copied as a whole. It accepts and rejects
// streams as the RFCs require, with three exceptions:
// - It accepts a literal/length alphabet whose only code is an end-of-block code of one bit.
// - It rejects a dynamic block that states 31 or 32 distance code lengths.
// - It accepts every distance of up to 32 KiB inside the previous output, even if the header states
//   a smaller window.
#pragma once

#include <cstddef>

namespace zn {

/// The source of the decoder's input.
class ByteFeed {
 public:
  virtual ~ByteFeed() = default;

  /// Sets `bytes` to the next run and returns its size in bytes. Returns 0 at the end, and in every
  /// call after the end. The run is valid until the next call.
  virtual std::size_t next(const unsigned char*& bytes) = 0;
};

/// The result of decoding. If a stream has several errors, the result is the first error in the
/// order of the stream. If the checksum is wrong and bytes follow the stream, the result is
/// WrongChecksum.
enum class InflateStatus {
  // The stream is complete and has the right checksum. No bytes follow it.
  Done,
  // The input ends inside the stream.
  EndsEarly,
  // A header, block or code is invalid, the stream has a preset dictionary, or bytes follow the
  // stream.
  Corrupt,
  // The Adler-32 at the end of the stream differs from the checksum of the output.
  WrongChecksum,
  // The stream has more than `capacity` bytes of output.
  TooLarge,
};

/// Decodes the stream of `feed` into `out`, which has `capacity` bytes. `out` may be null if
/// `capacity` is 0. Sets `length` to the number of decoded bytes. After an error, `length` is the
/// number of bytes decoded before the error. An exception of `feed` ends the decoding and is passed
/// on. `length` then does not change, and any byte of `out` may have changed.
///
/// Never writes at or after `out + capacity`. Sets the 32 bytes from `out + length` on to zero, or
/// fewer if `capacity` ends before. Changes no other byte after the decoded bytes. If `out` is
/// zeroed memory, all bytes after the decoded bytes are therefore zero. Uses about 16 KiB of stack
/// and no heap.
InflateStatus inflateStream(ByteFeed& feed, unsigned char* out, std::size_t capacity,
                            std::size_t& length);

/// Like the function above, for a stream of `size` bytes at `data`.
InflateStatus inflateStream(const unsigned char* data, std::size_t size, unsigned char* out,
                            std::size_t capacity, std::size_t& length);

}  // namespace zn
