// Decompresses and compresses texts.
//
// When a text is decompressed, its digits are converted to bytes in short runs, and the decoder
// writes directly to the memory of the result. So the stream is never in memory as a whole, and the
// output is there only once. The decoder may stop before the end of the text. The characters after
// that point are checked, too, because an error about an invalid character anywhere in the text
// takes precedence over all other errors.
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

// Returns the error for a status of the decoder. Returns nullopt if the stream is complete.
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

constexpr std::size_t MAX_SIZE = std::numeric_limits<std::size_t>::max();

// Returns number * factor, or MAX_SIZE if the product does not fit into size_t.
constexpr std::size_t saturatingProduct(std::size_t number, std::size_t factor) {
  return number > MAX_SIZE / factor ? MAX_SIZE : number * factor;
}

}  // namespace

std::optional<DiagnosticId> expandCompressedText(const unsigned char* data, std::size_t size,
                                                 unsigned char* out, std::size_t capacity,
                                                 std::size_t& length, RunObserver* observer) {
  const bool hasMark = size > 0 && data[0] == MARK;
  const std::size_t markSize = hasMark ? 1 : 0;
  HexFeed feed(data + markSize, size - markSize);
  feed.setObserver(observer);
  length = 0;
  const InflateStatus status =
      hasMark ? inflateStream(feed, out, capacity, length) : InflateStatus::Corrupt;
  feed.skipRest();
  if (feed.hasBadCharacter()) return DiagnosticId::CompressedDataBadCharacter;
  if (!feed.hasDigit()) return DiagnosticId::CompressedDataEmpty;
  if (!hasMark) return DiagnosticId::CompressedDataCorrupt;
  if (feed.hasHalfByte()) return DiagnosticId::CompressedDataEndsEarly;
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

// Allocates memory in steps, because a text may declare a size that is much too large. The first
// capacity is eight times the size of the stream, which is enough for most data, but at least
// MIN_GUESS bytes. No capacity is larger than the declared size. If a capacity is too small, the
// text is decompressed again with eight times the capacity or the declared size, whichever is
// smaller. The output is then larger than the capacity that was too small. So the time and the
// memory depend on the output and not on the declared size. All attempts before the last one
// together decompress at most 8/7 (1 + 1/8 + 1/64 + ...) of the largest of their capacities.
std::pair<unsigned char*, std::size_t> decompress(const unsigned char* data, std::size_t size,
                                                  String& error, std::size_t expectedSize) {
  constexpr std::size_t GROWTH = 8;
  constexpr std::size_t MIN_GUESS = 4096;
  const std::size_t guess = saturatingProduct(size / 2, GROWTH);
  std::size_t capacity = std::min(expectedSize, std::max(guess, MIN_GUESS));
  for (;;) {
    std::unique_ptr<unsigned char[]> bytes(new unsigned char[capacity]);
    std::size_t length;
    const auto problem = expandCompressedText(data, size, bytes.get(), capacity, length);
    if (!problem) return {bytes.release(), length};
    if (problem != DiagnosticId::CompressedDataTooLarge || capacity == expectedSize) {
      error = korvo_sdk::rowOf(*problem).format;
      return {nullptr, 0};
    }
    capacity = std::min(expectedSize, saturatingProduct(capacity, GROWTH));
  }
}

String compress(const unsigned char* data, std::size_t size) {
  const std::vector<unsigned char> stream = deflateStream(data, size);
  ds::Vector<char> text;
  // The text consists of the mark, two digits for each byte, and a NUL, which adopt() adds.
  text.reserve(static_cast<unsigned long>(2 * stream.size() + 2));
  text.push_back(MARK);
  text.size += 2 * stream.size();
  writeHex(stream.data(), stream.size(), text.data + 1);
  return String::adopt(std::move(text));
}

}  // namespace zn
