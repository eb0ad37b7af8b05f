// Compressed texts: a zlib stream (RFC 1950) in hexadecimal, the form in which a text scene holds
// large byte buffers.
//
// A compressed text is a point, and behind it the bytes of the stream, two hexadecimal digits each,
// in either case. White space (blank, \t \n \v \f \r) may stand between any two digits and is
// skipped. So any program can write one with its language's zlib and hexadecimal functions: in
// Python, "." + zlib.compress(data).hex().
//
// The messages for texts that cannot be expanded. When there are several faults, the first one in
// this order is reported:
//
//   1. "compressed data holds a character that is not a hexadecimal digit"
//                                          anywhere behind the point
//   2. "compressed data is empty"          no digit behind the point, or no character at all
//   3. "compressed data is corrupt"        the point is missing
//   4. "compressed data ends early"        the last byte lacks its second digit
//   5. the first fault in the order of the stream:
//      "compressed data is corrupt"        an invalid header, block or code, or a preset dictionary
//      "compressed data ends early"        the stream is cut short
//      "compressed data is larger than the buffer"
//                                          there is output past the expected size
//      "compressed data fails its checksum"
//                                          the Adler-32 is not that of the output
//      "compressed data is corrupt"        there are bytes behind the stream
//   6. "compressed data is empty"          a valid stream that expands to no bytes
//
// No message contains a '%', so each can serve as a format string.
#pragma once

#include <cstddef>
#include <utility>

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn {

/// Expands the compressed text of `size` characters at `data`, point included. Returns the bytes
/// and their count, at most `expectedSize`; fewer are not an error. The caller frees the array with
/// delete[]. On failure the array is null, the count 0 and `error` holds the message; on success
/// `error` is unchanged. Uses memory in proportion to the text and the result, however large
/// `expectedSize` is. Throws std::bad_alloc.
VSA_API std::pair<unsigned char*, std::size_t> decompress(const unsigned char* data,
                                                          std::size_t size, String& error,
                                                          std::size_t expectedSize);

/// The same into the `expectedSize` bytes at `out`, without allocating; `out` may be null when
/// `expectedSize` is 0. On success sets `length` to the count of bytes written; up to 32 bytes
/// behind them may have been set to zero, the others are unchanged. On failure `length` is 0,
/// `error` holds the message, and the contents of `out` are unspecified. Never writes past
/// `expectedSize`.
VSA_API bool decompressInto(const unsigned char* data, std::size_t size, String& error,
                            unsigned char* out, std::size_t expectedSize, std::size_t& length);

/// The reverse: the compressed text, point included and digits in lower case, of the `size` bytes
/// at `data` (which may be null when `size` is 0). The text of no bytes cannot be expanded: buffers
/// are never empty. Throws std::bad_alloc.
VSA_API String compress(const unsigned char* data, std::size_t size);

}  // namespace zn
