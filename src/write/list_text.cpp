#include "write/list_text.h"

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

/// Where a list may be broken.
struct LineLayout {
  std::uint64_t unit;        // numbers that stay together
  std::uint64_t maxColumns;  // of a line
  std::uint64_t maxUnits;    // in a line
};

/// An element stays together, a matrix by rows.
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

/// Writes a list unit by unit. The blank before a unit becomes a line break when the unit does not
/// fit the line, which is known once it is printed.
template <class Number>
class ListPrinter {
 public:
  ListPrinter(TextBuffer& out, const LineLayout& layout, std::uint64_t column)
      : out_(out), layout_(layout), column_(column) {}

  void put(const unsigned char* numbers, std::uint64_t count) {
    constexpr std::size_t ROOM = 4 * (zn::numbers::PRINT_CAPACITY + 1) + 2 * LINE_START.size();
    for (std::uint64_t i = 0; i < count;) {
      char* const start = out_.room(ROOM);
      char* end = start;
      for (const std::uint64_t stop = std::min(count, i + layout_.unit); i < stop; ++i) {
        *end = ' ';
        const auto number = zn::detail::loadWord<Number>(numbers + i * sizeof(Number));
        end = zn::numbers::printNumber(end + 1, number);
      }
      out_.extendTo(placed(start, end));
    }
  }

 private:
  // The end of the unit from `start` on, after its separator has become what it must be.
  char* placed(char* start, char* end) {
    const auto width = static_cast<std::uint64_t>(end - start);
    if (isFirst_) return withoutBlank(start, end);
    // One column is left for the closing brace.
    if (units_ < layout_.maxUnits &&
        width < layout_.maxColumns - std::min(column_, layout_.maxColumns)) {
      ++units_;
      column_ += width;
      return end;
    }
    return onNewLine(start, end);
  }

  char* withoutBlank(char* start, char* end) {
    std::memmove(start, start + 1, static_cast<std::size_t>(end - start - 1));
    isFirst_ = false;
    units_ = 1;
    column_ += static_cast<std::uint64_t>(end - start - 1);
    return end - 1;
  }

  char* onNewLine(char* start, char* end) {
    const auto width = static_cast<std::size_t>(end - start - 1);
    std::memmove(start + LINE_START.size(), start + 1, width);
    std::memcpy(start, LINE_START.data(), LINE_START.size());
    units_ = 1;
    column_ = LINE_START.size() - 1 + width;
    return start + LINE_START.size() + width;
  }

  TextBuffer& out_;
  const LineLayout layout_;
  std::uint64_t column_;
  std::uint64_t units_ = 0;
  bool isFirst_ = true;
};

}  // namespace

void putTuple(TextBuffer& out, const double* components, unsigned count) {
  for (unsigned i = 0; i < count; ++i) {
    char* const start = out.room(zn::numbers::PRINT_CAPACITY + 1);
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
