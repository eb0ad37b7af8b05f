// The digits feed the decoder a run at a time, and the decoder writes where the caller wants the
// bytes, so nothing is held twice. The decoder may stop anywhere in the text; whether a bad
// character stands behind, which counts for more than what stopped it, is looked up afterwards.

#include <vsa/foundation/decompress.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

#include "foundation/compression/compressed_text.h"
#include "foundation/compression/deflate.h"
#include "foundation/compression/hex_text.h"
#include "foundation/compression/inflate.h"

namespace zn {

using korvo_sdk::DiagnosticId;

namespace {

constexpr char MARK = '.';

// What is wrong with a text whose stream ended like this; nothing when it is complete.
std::optional<DiagnosticId> problemOf(InflateStatus status) {
  switch (status) {
    case InflateStatus::Done:
      return std::nullopt;
    case InflateStatus::EndsEarly:
      return DiagnosticId::CompressedDataEndsEarly;
    case InflateStatus::WrongChecksum:
      return DiagnosticId::CompressedDataWrongChecksum;
    case InflateStatus::TooLarge:
      return DiagnosticId::CompressedDataTooLarge;
    case InflateStatus::Corrupt:
      break;
  }
  return DiagnosticId::CompressedDataCorrupt;
}

constexpr std::size_t LARGEST = std::numeric_limits<std::size_t>::max();

constexpr std::size_t timesOrLargest(std::size_t number, std::size_t factor) {
  return number > LARGEST / factor ? LARGEST : number * factor;
}

}  // namespace

std::optional<DiagnosticId> expandCompressedText(const unsigned char* data, std::size_t size,
                                                 unsigned char* out, std::size_t capacity,
                                                 std::size_t& length) {
  const bool marked = size > 0 && data[0] == MARK;
  const std::size_t markSize = marked ? 1 : 0;
  HexFeed feed(data + markSize, size - markSize);
  length = 0;
  const InflateStatus status =
      marked ? inflateStream(feed, out, capacity, length) : InflateStatus::Corrupt;
  feed.skipRest();
  if (feed.sawBadCharacter()) return DiagnosticId::CompressedDataBadCharacter;
  if (!feed.sawDigit()) return DiagnosticId::CompressedDataEmpty;
  if (!marked) return DiagnosticId::CompressedDataCorrupt;
  if (feed.halfByte()) return DiagnosticId::CompressedDataEndsEarly;
  if (status == InflateStatus::Done && length == 0) return DiagnosticId::CompressedDataEmpty;
  return problemOf(status);
}

bool decompressInto(const unsigned char* data, std::size_t size, String& error, unsigned char* out,
                    std::size_t expectedSize, std::size_t& length) {
  const auto problem = expandCompressedText(data, size, out, expectedSize, length);
  if (!problem) return true;
  error = korvo_sdk::rowOf(*problem).format;
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
    const auto problem = expandCompressedText(data, size, bytes.get(), capacity, length);
    if (!problem) return {bytes.release(), length};
    if (problem != DiagnosticId::CompressedDataTooLarge || capacity == expectedSize) {
      error = korvo_sdk::rowOf(*problem).format;
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
