// Compressed texts: a zlib stream (RFC 1950) in hexadecimal digits. A text scene can contain large
// byte buffers in this form.
//
// A compressed text is a period and then two hexadecimal digits for each byte of the stream. Digits
// may be in upper or lower case. White space (blank, \t \n \v \f \r) after the period is skipped. A
// program in any language with functions for zlib and for hexadecimal digits can write such texts.
// In Python: "." + zlib.compress(data).hex().
//
// If a text cannot be decompressed, the functions report one of the messages below. If a text has
// several faults, they report the message that comes first in this list:
//
//   1. "compressed data holds a character that is not a hexadecimal digit"
//                                          anywhere, except for a period at the beginning
//   2. "compressed data is empty"          the text has no digit
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
// No message contains a '%', so each message can be used as a format string.
#pragma once

#include <cstddef>
#include <utility>

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn {

/// Decompresses the text of `size` characters at `data`, including its period. `data` may be null
/// if `size` is 0. Returns the bytes and their count, at most `expectedSize`. A smaller count is
/// not an error. The caller frees the array with delete[]. On failure, the array is null, the count
/// is 0 and `error` is the message. On success, `error` does not change. The memory needed is
/// proportional to the text and the result. It does not depend on `expectedSize`. Throws
/// std::bad_alloc.
VSA_API std::pair<unsigned char*, std::size_t> decompress(const unsigned char* data,
                                                          std::size_t size, String& error,
                                                          std::size_t expectedSize);

/// Decompresses into the `expectedSize` bytes at `out`, and returns whether this succeeded.
/// Allocates memory only for the message of a failure, which may throw std::bad_alloc, and never
/// writes past `expectedSize`. `data` may be null if `size` is 0, and `out` if `expectedSize` is 0.
/// On success, `length` is the number of bytes of the result. The function may set up to 32 of the
/// bytes after the result to zero. It does not change the others. On failure, `length` is 0,
/// `error` is the message, and the contents of `out` are unspecified.
VSA_API bool decompressInto(const unsigned char* data, std::size_t size, String& error,
                            unsigned char* out, std::size_t expectedSize, std::size_t& length);

/// Compresses the `size` bytes at `data`: the inverse of `decompress`. The text begins with a
/// period and has lower-case digits. `data` may be null if `size` is 0. The text of 0 bytes is an
/// exception: `decompress` rejects it with message 6. Throws std::bad_alloc.
VSA_API String compress(const unsigned char* data, std::size_t size);

}  // namespace zn
