// Compressed texts: a zlib stream (RFC 1950) in hexadecimal digits. A text scene stores large byte
// buffers in this form.
//
// A compressed text is a period followed by the bytes of the stream, with two hexadecimal digits
// for each byte, in either case. White space (blank, \t \n \v \f \r) is allowed between any two
// digits and is skipped. Every language that has functions for zlib and for hexadecimal digits can
// write such texts. In Python: "." + zlib.compress(data).hex().
//
// A text that cannot be decompressed causes one of the messages below. If a text has several
// faults, the first message of this list is reported:
//
//   1. "compressed data holds a character that is not a hexadecimal digit"
//                                          anywhere after the period
//   2. "compressed data is empty"          the text is empty or has no digit after the period
//   3. "compressed data is corrupt"        the period is missing
//   4. "compressed data ends early"        the last byte has only one digit
//   5. the first fault in the order of the stream:
//      "compressed data is corrupt"        an invalid header, block or code, or a preset dictionary
//      "compressed data ends early"        the stream is truncated
//      "compressed data is larger than the buffer"
//                                          the stream has more bytes than expected
//      "compressed data fails its checksum"
//                                          the Adler-32 does not match the output
//      "compressed data is corrupt"        there are bytes after the stream
//   6. "compressed data is empty"          the stream is valid and has no bytes
//
// No message contains a '%', so each can be used as a format string.
#pragma once

#include <cstddef>
#include <utility>

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn {

/// Decompresses the text of `size` characters at `data`, including the period. Returns the bytes
/// and their count, which is at most `expectedSize`. Fewer bytes are not an error. The caller frees
/// the array with delete[]. On failure the array is null, the count is 0 and `error` is the
/// message. On success `error` is unchanged. The memory used is proportional to the text and the
/// result, not to `expectedSize`. Throws std::bad_alloc.
VSA_API std::pair<unsigned char*, std::size_t> decompress(const unsigned char* data,
                                                          std::size_t size, String& error,
                                                          std::size_t expectedSize);

/// Decompresses into the `expectedSize` bytes at `out` and allocates nothing. `out` may be null if
/// `expectedSize` is 0. On success sets `length` to the number of bytes written. Up to 32 bytes
/// after the written ones may be set to zero; all other bytes are unchanged. On failure `length` is
/// 0, `error` is the message, and the contents of `out` are unspecified. Never writes past
/// `expectedSize`.
VSA_API bool decompressInto(const unsigned char* data, std::size_t size, String& error,
                            unsigned char* out, std::size_t expectedSize, std::size_t& length);

/// The inverse of `decompress`. Returns the compressed text of the `size` bytes at `data`, with the
/// period and lower-case digits. `data` may be null if `size` is 0. The text of 0 bytes cannot be
/// decompressed, because buffers are never empty. Throws std::bad_alloc.
VSA_API String compress(const unsigned char* data, std::size_t size);

}  // namespace zn
