// The digits feed the decoder a run at a time, and the decoder writes where the caller wants the
// bytes, so nothing is held twice. The decoder may stop anywhere in the text; whether a bad
// character stands behind, which counts for more than what stopped it, is looked up afterwards.

#include <vsa/foundation/decompress.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

#include "foundation/compression/deflate.h"
#include "foundation/compression/hex_text.h"
#include "foundation/compression/inflate.h"

namespace zn {

namespace {

constexpr char MARK = '.';

constexpr char EMPTY[] = "compressed data is empty";
constexpr char BAD_CHARACTER[] =
    "compressed data holds a character that is not a hexadecimal digit";
constexpr char ENDS_EARLY[] = "compressed data ends early";
constexpr char CORRUPT[] = "compressed data is corrupt";
constexpr char WRONG_CHECKSUM[] = "compressed data fails its checksum";
constexpr char TOO_LARGE[] = "compressed data is larger than the buffer";

const char* messageOf(InflateStatus status) {
  switch (status) {
    case InflateStatus::Done:
      return nullptr;
    case InflateStatus::EndsEarly:
      return ENDS_EARLY;
    case InflateStatus::WrongChecksum:
      return WRONG_CHECKSUM;
    case InflateStatus::TooLarge:
      return TOO_LARGE;
    case InflateStatus::Corrupt:
      break;
  }
  return CORRUPT;
}

// Expands the text into `capacity` bytes; null, or the message of what is wrong.
const char* expand(const unsigned char* data, std::size_t size, unsigned char* out,
                   std::size_t capacity, std::size_t& length) {
  const bool marked = size > 0 && data[0] == MARK;
  const std::size_t markSize = marked ? 1 : 0;
  HexFeed feed(data + markSize, size - markSize);
  length = 0;
  const InflateStatus status =
      marked ? inflateStream(feed, out, capacity, length) : InflateStatus::Corrupt;
  feed.skipRest();
  if (feed.sawBadCharacter()) return BAD_CHARACTER;
  if (!feed.sawDigit()) return EMPTY;
  if (!marked) return CORRUPT;
  if (feed.halfByte()) return ENDS_EARLY;
  if (status == InflateStatus::Done && length == 0) return EMPTY;
  return messageOf(status);
}

constexpr std::size_t LARGEST = std::numeric_limits<std::size_t>::max();

constexpr std::size_t timesOrLargest(std::size_t number, std::size_t factor) {
  return number > LARGEST / factor ? LARGEST : number * factor;
}

}  // namespace

bool decompressInto(const unsigned char* data, std::size_t size, String& error, unsigned char* out,
                    std::size_t expectedSize, std::size_t& length) {
  const char* const message = expand(data, size, out, expectedSize, length);
  if (message == nullptr) return true;
  error = message;
  length = 0;
  return false;
}

// A first guess at the result's size, eight times the stream's, holds for most data; where it does
// not, eight times as much is tried from the start. All the tries before the last one together cost
// little more than it does, and a small text that claims to be huge costs little.
std::pair<unsigned char*, std::size_t> decompress(const unsigned char* data, std::size_t size,
                                                  String& error, std::size_t expectedSize) {
  constexpr std::size_t GROWTH = 8;
  constexpr std::size_t SMALLEST_GUESS = 4096;
  const std::size_t guess = timesOrLargest(size / 2, GROWTH);
  std::size_t capacity = std::min(expectedSize, std::max(guess, SMALLEST_GUESS));
  for (;;) {
    std::unique_ptr<unsigned char[]> bytes(new unsigned char[capacity]);
    std::size_t length;
    const char* const message = expand(data, size, bytes.get(), capacity, length);
    if (message == nullptr) return {bytes.release(), length};
    if (message != TOO_LARGE || capacity == expectedSize) {
      error = message;
      return {nullptr, 0};
    }
    capacity = std::min(expectedSize, timesOrLargest(capacity, GROWTH));
  }
}

String compress(const unsigned char* data, std::size_t size) {
  const std::vector<unsigned char> stream = deflateStream(data, size);
  ds::Vector<char> text;
  text.reserve(static_cast<unsigned long>(2 * stream.size() + 2));  // and the NUL behind it
  text.push_back(MARK);
  text.size += 2 * stream.size();
  writeHex(stream.data(), stream.size(), text.data + 1);
  return String::adopt(std::move(text));
}

}  // namespace zn
