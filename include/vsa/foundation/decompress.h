// Compressed texts: bytes as a zlib stream (RFC 1950) in hexadecimal, the form in which a text
// scene holds large byte buffers.
//
// The text is a point, and after it the bytes of the stream, two hexadecimal digits each, in either
// case; white space (blank, \t \n \v \f \r) may stand between any two digits and is skipped. So any
// program writes one with its language's zlib and hexadecimal routines: in Python,
// "." + zlib.compress(data).hex().
//
// What can be wrong with a text, the message for it, and which one it is when there are several:
//
//   1. "compressed data holds a character that is not a hexadecimal digit"
//                                          anywhere behind the point, before everything else
//   2. "compressed data is empty"          no digit behind the point, or no character at all
//   3. "compressed data is corrupt"        the point is missing
//   4. "compressed data ends early"        the last byte lacks its second digit
//   5. going through the stream in order, whichever the decoder meets first:
//      "compressed data is corrupt"        a header, block or code that cannot be, or a preset
//                                          dictionary
//      "compressed data ends early"        the stream is cut short
//      "compressed data is larger than the buffer"
//                                          there is output past the expected size
//      "compressed data fails its checksum"
//                                          the Adler-32 is not that of the output
//      "compressed data is corrupt"        there are bytes behind the stream
//   6. "compressed data is empty"          a sound stream that inflates to no bytes
//
// No message holds a '%', so that each may serve as a format text.
#pragma once

#include <cstddef>
#include <utility>

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn {

/// Expands the compressed text of `size` characters at `data`, point included, and returns the
/// bytes with their count, at most `expectedSize`. Fewer are no error. The caller releases the
/// array with delete[]. On failure the array is null, the length 0 and `error` holds the message;
/// on success `error` is left alone. Memory follows the text and the result, whatever
/// `expectedSize` says. Throws std::bad_alloc where it cannot be had.
VSA_API std::pair<unsigned char*, std::size_t> decompress(const unsigned char* data,
                                                          std::size_t size, String& error,
                                                          std::size_t expectedSize);

/// The same straight into the `expectedSize` bytes at `out`, with no memory of its own; `out` may
/// be null when `expectedSize` is 0. On success sets `length` to the count of bytes written; those
/// behind them are as they were, but that up to 32 of them may have been set to zero. On failure
/// `length` is 0, `error` holds the message, and `out` may hold anything. Never writes past
/// `expectedSize`.
VSA_API bool decompressInto(const unsigned char* data, std::size_t size, String& error,
                            unsigned char* out, std::size_t expectedSize, std::size_t& length);

/// The counterpart: the compressed text, point included and digits in lower case, that expands to
/// the `size` bytes at `data` (which may be null when `size` is 0). No bytes give a text too, which
/// no buffer accepts, since it expands to nothing. Throws std::bad_alloc.
VSA_API String compress(const unsigned char* data, std::size_t size);

}  // namespace zn
