#include "write/text/list_text.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>

#include "foundation/base/load_word.h"
#include "foundation/numbers/number_print.h"

namespace vsa::impl {

namespace {

using zn::korvo_sdk::DataType;

constexpr std::string_view LINE_START = "\n    ";

/// The rules for line breaks in a list.
struct LineLayout {
  std::uint64_t unit;        // the number of numbers that must be in one line
  std::uint64_t maxColumns;  // the maximum number of characters in a line
  std::uint64_t maxUnits;    // the maximum number of units in a line
};

/// Returns how many numbers must be in one line: the components of an element or, if the element is
/// a matrix, the components of a row.
std::uint64_t unitOf(DataType type) {
  const std::uint64_t count = zn::korvo_sdk::componentCount(type);
  if (count == 9) return 3;
  return std::min<std::uint64_t>(count, 4);
}

LineLayout layoutOf(DataType type, const WriteOptions& options) {
  constexpr std::uint64_t UNLIMITED = std::numeric_limits<std::uint64_t>::max();
  if (options.numbersPerLine != 0) return {1, UNLIMITED, options.numbersPerLine};
  return {unitOf(type), options.lineWidth == 0 ? UNLIMITED : options.lineWidth, UNLIMITED};
}

/// Writes a list, unit by unit. Each unit is first written after a blank in the current line. If it
/// does not fit into the line, a line break replaces that blank, except before the first unit of a
/// line.
template <class Number>
class ListPrinter {
 public:
  ListPrinter(TextBuffer& out, const LineLayout& layout, std::uint64_t column)
      : out_(out), layout_(layout), column_(static_cast<std::int64_t>(column)) {}

  void put(const unsigned char* numbers, std::uint64_t count) {
    const std::uint64_t perChunk = UNITS_IN_CHUNK * layout_.unit;
    for (std::uint64_t i = 0; i < count; i += perChunk) {
      const std::uint64_t inChunk = std::min(perChunk, count - i);
      const bool isLast = inChunk == count - i;
      putChunk(numbers + i * sizeof(Number), inChunk, isLast ? inChunk : 0);
    }
    if (count == 0) out_.put('{');
  }

 private:
  static constexpr std::uint64_t UNITS_IN_CHUNK = 16;
  static constexpr std::uint64_t MAX_UNIT = 4;
  static constexpr std::size_t CHUNK_BYTES =
      UNITS_IN_CHUNK * (MAX_UNIT * (zn::numbers::PRINT_CAPACITY + 1) + LINE_START.size());
  static_assert(CHUNK_BYTES <= TextBuffer::MAX_RESERVED);

  // Writes a chunk of numbers. `end` is their count in the last chunk, and 0 in others. All chunks
  // except the last consist of whole units. To save time, the function reserves memory once for the
  // chunk, and computes columns as differences of pointers. With a loop that did both for each
  // number, a number took 27 ns. Of this time, 5 ns were spent on the reservation and the columns.
  void putChunk(const unsigned char* numbers, std::uint64_t count, std::uint64_t end) {
    char* const chunk = out_.reserve(CHUNK_BYTES);
    std::int64_t lineStart = -column_;  // relative to the start of the chunk
    char* at = chunk;
    for (std::uint64_t i = 0; i < count;) {
      char* const start = at;
      for (const std::uint64_t stop = std::min(count, i + layout_.unit); i < stop; ++i) {
        *at++ = ' ';
        at = zn::numbers::printNumber(at,
                                      zn::detail::loadWord<Number>(numbers + i * sizeof(Number)));
      }
      // In the last line, two columns remain free for the closing brace and the semicolon. In all
      // other lines, one column remains free.
      const std::int64_t column = at - chunk - lineStart;
      const bool fits =
          static_cast<std::uint64_t>(column) + (i == end ? 2 : 1) <= layout_.maxColumns;
      if (fits && units_ < layout_.maxUnits) {
        ++units_;
      } else if (units_ > 0) {
        at = onNewLine(start, at);
        lineStart = start + 1 - chunk;
        units_ = 1;
      }
      if (isFirst_) begin(start);
    }
    column_ = at - chunk - lineStart;
    out_.extendTo(at);
  }

  void begin(char* start) {
    *start = '{';
    isFirst_ = false;
    units_ = 1;
  }

  static char* onNewLine(char* start, char* end) {
    constexpr std::size_t MORE = LINE_START.size() - 1;  // the line break replaces one blank
    std::memmove(start + MORE, start, static_cast<std::size_t>(end - start));
    std::memcpy(start, LINE_START.data(), LINE_START.size());
    return end + MORE;
  }

  TextBuffer& out_;
  const LineLayout layout_;
  std::int64_t column_;
  std::uint64_t units_ = 0;  // the number of units in the current line
  bool isFirst_ = true;
};

}  // namespace

void putTuple(TextBuffer& out, const double* components, unsigned count) {
  for (unsigned i = 0; i < count; ++i) {
    char* const start = out.reserve(zn::numbers::PRINT_CAPACITY + 1);
    char* at = start;
    if (i > 0) *at++ = ' ';
    out.extendTo(zn::numbers::printNumber(at, components[i]));
  }
}

void putNumbers(TextBuffer& out, const zn::korvo_sdk::BufferValue& buffer,
                const WriteOptions& options, std::uint64_t column) {
  const std::uint64_t count = buffer.count * zn::korvo_sdk::componentCount(buffer.type);
  const LineLayout layout = layoutOf(buffer.type, options);
  zn::korvo_sdk::visitComponent(zn::korvo_sdk::componentType(buffer.type), [&](auto zero) {
    ListPrinter<decltype(zero)>(out, layout, column).put(buffer.memory, count);
  });
}

}  // namespace vsa::impl
