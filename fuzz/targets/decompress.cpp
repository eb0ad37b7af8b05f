// Compares decompression with zlib. The bytes must be equal, or the message must correspond to
// zlib's error. The settings select the type of the input: a compressed text, a binary zlib stream,
// or bytes that are compressed with zlib. The last stream is checked unchanged, and with one bit
// changed. The settings also select the capacity.
//
// Also tests `compress`: zlib and our decoder must be able to decompress its output.
#include <vsa/foundation/decompress.h>

#include <zlib.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/support/check.h"
#include "fuzz/support/message_count.h"
#include "fuzz/targets.h"
#include "tools/scene_text/printable_text.h"

namespace vsa_fuzz {

namespace {

using Bytes = std::string;

const unsigned char* unsignedBytes(std::string_view bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.data());
}

/// The result of a decompression: either bytes or an error message.
struct Decompressed {
  Bytes bytes;
  std::string message;
};

constexpr char CORRUPT[] = "compressed data is corrupt";
constexpr char EARLY[] = "compressed data ends early";
constexpr char EMPTY[] = "compressed data is empty";

/// Returns the message of our decoder that corresponds to the status of zlib. Returns an empty text
/// on success.
std::string messageFor(const z_stream& zlib, int status, std::size_t capacity) {
  if (zlib.total_out > capacity) return "compressed data is larger than the buffer";
  if (status == Z_DATA_ERROR) {
    const bool isSum = std::string_view(zlib.msg) == "incorrect data check";
    return isSum ? "compressed data fails its checksum" : CORRUPT;
  }
  if (status != Z_STREAM_END) return EARLY;
  if (zlib.avail_in > 0) return CORRUPT;
  return zlib.total_out == 0 ? EMPTY : "";
}

/// Whether the header requires a preset dictionary. Our decoder reports such a stream as corrupt at
/// once. zlib asks for the dictionary only after it has read the number of the dictionary, which
/// follows the header.
bool wantsDictionary(const Bytes& stream) {
  if (stream.size() < 2) return false;
  const unsigned method = static_cast<unsigned char>(stream[0]);
  const unsigned flags = static_cast<unsigned char>(stream[1]);
  return (flags & 0x20) != 0 && (method * 256 + flags) % 31 == 0;
}

Decompressed inflatedByZlib(const Bytes& stream, std::size_t capacity,
                            std::string* reason = nullptr) {
  if (wantsDictionary(stream)) return {"", CORRUPT};
  Decompressed result;
  result.bytes.resize(capacity + 1);
  z_stream zlib{};
  if (inflateInit(&zlib) != Z_OK) fail("zlib does not start");
  zlib.next_in = const_cast<unsigned char*>(unsignedBytes(stream));
  zlib.avail_in = static_cast<unsigned>(stream.size());
  zlib.next_out = reinterpret_cast<unsigned char*>(result.bytes.data());
  zlib.avail_out = static_cast<unsigned>(result.bytes.size());
  const int status = inflate(&zlib, Z_FINISH);
  result.message = messageFor(zlib, status, capacity);
  if (reason != nullptr && zlib.msg != nullptr) *reason = zlib.msg;
  result.bytes.resize(result.message.empty() ? zlib.total_out : 0);
  inflateEnd(&zlib);
  return result;
}

/// Whether `stream` ends within code lengths that have no code. If a dynamic block has no code for
/// its code lengths, our decoder reports a corrupt block at once. zlib reads each bit as a length
/// of 0, and reports a corrupt block only after the last length. If the stream ends before that,
/// zlib reports an early end instead. Therefore this function appends bytes to the stream: first
/// zeros, and in a second attempt ones. The block is corrupt if zlib reports a missing end-of-block
/// code in both attempts.
bool endsInUncodedLengths(const Bytes& stream) {
  constexpr std::size_t MAX_LENGTH_BYTES = 64;
  for (const char more : {'\0', '\xFF'}) {
    std::string reason;
    inflatedByZlib(stream + Bytes(MAX_LENGTH_BYTES, more), 1U << 16, &reason);
    if (reason != "invalid code -- missing end-of-block") return false;
  }
  return true;
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

/// Decodes the hexadecimal text without the library, and the stream with zlib. In some cases two
/// messages are right. Then the result is `found`, the message of our decoder.
Decompressed referenceDecompress(std::string_view text, std::size_t capacity,
                                 std::string_view found) {
  const bool hasMark = text.starts_with('.');
  if (hasMark) text.remove_prefix(1);
  std::vector<int> digits;
  for (const char c : text) {
    if (std::string_view(" \t\n\v\f\r").find(c) != std::string_view::npos) continue;
    digits.push_back(hexValue(c));
    if (digits.back() < 0) {
      return {"", "compressed data holds a character that is not a hexadecimal digit"};
    }
  }
  if (digits.empty()) return {"", EMPTY};
  if (!hasMark) return {"", CORRUPT};
  if (digits.size() % 2 != 0) return {"", EARLY};
  Bytes stream;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    stream += static_cast<char>(static_cast<unsigned char>(digits[i] * 16 + digits[i + 1]));
  }
  const Decompressed result = inflatedByZlib(stream, capacity);
  if (result.message == EARLY && found == CORRUPT && endsInUncodedLengths(stream)) {
    return {"", CORRUPT};
  }
  return result;
}

/// Counts a message. Finds its id by its text, because zn::decompress() does not return the id.
void countMessageText(std::string_view message) {
  for (const auto& row : zn::korvo_sdk::DIAGNOSTIC_ROWS) {
    if (message == row.format) countMessage(row.id);
  }
}

/// Checks decompress() and decompressInto() with one text.
void checkText(std::string_view text, std::size_t capacity) {
  zn::String error;
  const auto [bytes, count] = zn::decompress(unsignedBytes(text), text.size(), error, capacity);
  const std::unique_ptr<unsigned char[]> held(bytes);
  const Decompressed expected = referenceDecompress(text, capacity, error.view());
  countMessageText(expected.message);
  checkSame(expected.message, error.view(), "message");
  checkSame(expected.bytes, {reinterpret_cast<const char*>(bytes), count}, "decompressed bytes");

  const auto out = std::make_unique<unsigned char[]>(capacity);
  std::size_t length = 0;
  zn::String second;
  const bool done =
      zn::decompressInto(unsignedBytes(text), text.size(), second, out.get(), capacity, length);
  if (done != expected.message.empty()) fail("decompressInto: wrong result");
  checkSame(expected.message, second.view(), "message of decompressInto");
  checkSame(expected.bytes, {reinterpret_cast<const char*>(out.get()), length},
            "bytes of decompressInto");
}

/// Returns the stream as a compressed text.
std::string textOf(std::string_view stream) {
  std::string text = ".";
  vsa_tools::appendHex(text, stream);
  return text;
}

/// Compresses `bytes` with zlib and checks the stream and, if there are bytes, a copy with one
/// changed bit. The settings select the level and the strategy of zlib.
void checkCorrupted(std::string_view bytes, unsigned settings) {
  std::vector<unsigned char> packed(compressBound(static_cast<uLong>(bytes.size())) + 32);
  z_stream zlib{};
  if (deflateInit2(&zlib, static_cast<int>(settings % 10), Z_DEFLATED, 9, 1,
                   static_cast<int>(settings / 10 % 5)) != Z_OK) {
    fail("zlib does not start");
  }
  zlib.next_in = const_cast<unsigned char*>(unsignedBytes(bytes));
  zlib.avail_in = static_cast<unsigned>(bytes.size());
  zlib.next_out = packed.data();
  zlib.avail_out = static_cast<unsigned>(packed.size());
  if (deflate(&zlib, Z_FINISH) != Z_STREAM_END) fail("zlib does not end");
  std::string stream(reinterpret_cast<const char*>(packed.data()), zlib.total_out);
  deflateEnd(&zlib);
  checkText(textOf(stream), bytes.size());
  if (bytes.empty()) return;
  const std::size_t at = static_cast<unsigned char>(bytes[0]) % stream.size();
  stream[at] = static_cast<char>(stream[at] ^ (1 << settings % 8));
  checkText(textOf(stream), bytes.size() + settings);
}

}  // namespace

void decompress(std::string_view input) {
  const auto [data, settings] = splitSettings(input);
  const unsigned rest = settings / 16;
  switch (settings % 16) {
    case 1:
    case 2:
      return checkCorrupted(data, settings);
    case 3:
    case 4:
    case 5:
      return checkText(data, std::size_t{rest} * rest);
    default:
      return checkText(textOf(data), std::size_t{rest} * rest * rest);
  }
}

// Compresses the bytes. Decompresses the text with the exact capacity and with one byte less.
void compress(std::string_view bytes) {
  const zn::String text = zn::compress(unsignedBytes(bytes), bytes.size());
  const Decompressed back = referenceDecompress(text.view(), bytes.size(), "");
  checkSame(bytes.empty() ? EMPTY : "", back.message, "message for a compressed text");
  checkSame(bytes, back.bytes, "bytes through compress and zlib");
  checkText(text.view(), bytes.size());
  if (!bytes.empty()) checkText(text.view(), bytes.size() - 1);
}

}  // namespace vsa_fuzz
