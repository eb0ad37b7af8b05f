// Compressed texts against zlib: the same bytes, or the message that fits what zlib says. The
// settings choose what the input is: a whole text, a stream that is yet to be spelled out, or bytes
// that zlib is to pack and one bit of which is then turned. And `compress`, whose texts zlib must
// read as well.
#include <vsa/foundation/decompress.h>

#include <zlib.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/support/check.h"
#include "fuzz/support/message_count.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

namespace {

using Bytes = std::string;

const unsigned char* unsignedBytes(std::string_view bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.data());
}

/// Either bytes or a message.
struct Expanded {
  Bytes bytes;
  std::string message;
};

constexpr char CORRUPT[] = "compressed data is corrupt";
constexpr char EARLY[] = "compressed data ends early";
constexpr char EMPTY[] = "compressed data is empty";

/// What zlib says about the end of a stream, in our words; empty when all is well.
std::string verdict(const z_stream& zlib, int status, std::size_t capacity) {
  if (zlib.total_out > capacity) return "compressed data is larger than the buffer";
  if (status == Z_DATA_ERROR) {
    const bool isSum = std::string_view(zlib.msg) == "incorrect data check";
    return isSum ? "compressed data fails its checksum" : CORRUPT;
  }
  if (status != Z_STREAM_END) return EARLY;
  if (zlib.avail_in > 0) return CORRUPT;
  return zlib.total_out == 0 ? EMPTY : "";
}

/// zlib asks for the dictionary's number first; to us a preset dictionary is corrupt at once.
bool wantsDictionary(const Bytes& stream) {
  if (stream.size() < 2) return false;
  const unsigned method = static_cast<unsigned char>(stream[0]);
  const unsigned flags = static_cast<unsigned char>(stream[1]);
  return (flags & 0x20) != 0 && (method * 256 + flags) % 31 == 0;
}

Expanded inflatedByZlib(const Bytes& stream, std::size_t capacity, std::string* reason = nullptr) {
  if (wantsDictionary(stream)) return {"", CORRUPT};
  Expanded result;
  result.bytes.resize(capacity + 1);
  z_stream zlib{};
  if (inflateInit(&zlib) != Z_OK) fail("zlib does not start");
  zlib.next_in = const_cast<unsigned char*>(unsignedBytes(stream));
  zlib.avail_in = static_cast<unsigned>(stream.size());
  zlib.next_out = reinterpret_cast<unsigned char*>(result.bytes.data());
  zlib.avail_out = static_cast<unsigned>(result.bytes.size());
  const int status = inflate(&zlib, Z_FINISH);
  result.message = verdict(zlib, status, capacity);
  if (reason != nullptr && zlib.msg != nullptr) *reason = zlib.msg;
  result.bytes.resize(result.message.empty() ? zlib.total_out : 0);
  inflateEnd(&zlib);
  return result;
}

/// Where a block's lengths have no code at all, zlib takes each bit for a length of 0, and finds
/// the block corrupt when it has them all; to us it is corrupt at once, and so before it ends
/// early. Whether that is what zlib waits for at the end of `stream`: it is, when nothing that
/// could follow makes another difference.
bool waitsForNoLengths(const Bytes& stream) {
  constexpr std::size_t MORE_THAN_ALL_LENGTHS = 64;
  for (const char more : {'\0', '\xFF'}) {
    std::string reason;
    inflatedByZlib(stream + Bytes(MORE_THAN_ALL_LENGTHS, more), 1U << 16, &reason);
    if (reason != "invalid code -- missing end-of-block") return false;
  }
  return true;
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

/// The text by hand as far as the stream, and zlib from there on. `found` decides where there are
/// two answers.
Expanded plainExpand(std::string_view text, std::size_t capacity, std::string_view found) {
  const bool marked = text.starts_with('.');
  if (marked) text.remove_prefix(1);
  std::vector<int> digits;
  for (const char c : text) {
    if (std::string_view(" \t\n\v\f\r").find(c) != std::string_view::npos) continue;
    digits.push_back(hexValue(c));
    if (digits.back() < 0) {
      return {"", "compressed data holds a character that is not a hexadecimal digit"};
    }
  }
  if (digits.empty()) return {"", EMPTY};
  if (!marked) return {"", CORRUPT};
  if (digits.size() % 2 != 0) return {"", EARLY};
  Bytes stream;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    stream += static_cast<char>(static_cast<unsigned char>(digits[i] * 16 + digits[i + 1]));
  }
  const Expanded expanded = inflatedByZlib(stream, capacity);
  if (expanded.message == EARLY && found == CORRUPT && waitsForNoLengths(stream)) {
    return {"", CORRUPT};
  }
  return expanded;
}

/// `decompress` returns the message, not its row.
void countCompressedMessage(std::string_view message) {
  for (const auto& row : zn::korvo_sdk::DIAGNOSTIC_ROWS) {
    if (message == row.format) countMessage(row.id);
  }
}

/// Through both entry points.
void checkText(std::string_view text, std::size_t capacity) {
  zn::String error;
  const auto [bytes, count] = zn::decompress(unsignedBytes(text), text.size(), error, capacity);
  const std::unique_ptr<unsigned char[]> held(bytes);
  const Expanded expected = plainExpand(text, capacity, error.view());
  countCompressedMessage(expected.message);
  checkSame(expected.message, error.view(), "message");
  checkSame(expected.bytes, {reinterpret_cast<const char*>(bytes), count}, "expanded bytes");

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

std::string spelled(std::string_view stream) {
  static constexpr char DIGITS[] = "0123456789abcdef";
  std::string text = ".";
  for (const char c : stream) {
    text += DIGITS[static_cast<unsigned char>(c) / 16];
    text += DIGITS[static_cast<unsigned char>(c) % 16];
  }
  return text;
}

/// Data as zlib packs it, its level and its strategy chosen, and one byte of it changed.
void checkDamaged(std::string_view bytes, unsigned settings) {
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
  checkText(spelled(stream), bytes.size());
  if (bytes.empty()) return;
  const std::size_t at = static_cast<unsigned char>(bytes[0]) % stream.size();
  stream[at] = static_cast<char>(stream[at] ^ (1 << settings % 8));
  checkText(spelled(stream), bytes.size() + settings);
}

}  // namespace

void decompress(std::string_view input) {
  const auto [data, settings] = splitSettings(input);
  const unsigned rest = settings / 16;
  switch (settings % 16) {
    case 1:
    case 2:
      return checkDamaged(data, settings);
    case 3:
    case 4:
    case 5:
      return checkText(data, std::size_t{rest} * rest);
    default:
      return checkText(spelled(data), std::size_t{rest} * rest * rest);
  }
}

// There and back, exactly fitting and one byte short.
void compress(std::string_view bytes) {
  const zn::String text = zn::compress(unsignedBytes(bytes), bytes.size());
  const Expanded back = plainExpand(text.view(), bytes.size(), "");
  checkSame(bytes.empty() ? EMPTY : "", back.message, "message for a compressed text");
  checkSame(bytes, back.bytes, "bytes through compress and zlib");
  checkText(text.view(), bytes.size());
  if (!bytes.empty()) checkText(text.view(), bytes.size() - 1);
}

}  // namespace vsa_fuzz
