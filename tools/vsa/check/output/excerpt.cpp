#include "tools/vsa/check/output/excerpt.h"

#include <locale.h>
#include <wchar.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

namespace {

constexpr std::size_t TAB_COLUMNS = 8;
constexpr std::string_view CUT = "...";

/// A character in the form that the terminal shows.
struct Cell {
  std::string shown;
  std::size_t width;
  std::uint64_t begin, end;  // the columns of its bytes in the line: `end` is exclusive
};

/// Splits a part of a line into cells.
class CellList {
 public:
  explicit CellList(const LinePart& part) : column_(part.column) {
    forEachCharacter(
        part.text,
        [this](char32_t character, std::string_view bytes) { addCharacter(character, bytes); },
        [this](char byte) { add(escapedByte(byte), 1); });
  }

  std::vector<Cell> cells;

 private:
  void addCharacter(char32_t character, std::string_view bytes) {
    if (character == '\t') {
      add(std::string(TAB_COLUMNS - width_ % TAB_COLUMNS, ' '), bytes.size());
    } else if (isTerminalControl(character)) {
      add(printable(bytes), bytes.size());
    } else {
      addCell(std::string(bytes), bytes.size(), static_cast<std::size_t>(columnsOf(character)));
    }
  }

  void add(std::string shown, std::size_t bytes) {
    const std::size_t width = shown.size();
    addCell(std::move(shown), bytes, width);
  }

  void addCell(std::string shown, std::size_t bytes, std::size_t width) {
    cells.push_back({std::move(shown), width, column_, column_ + bytes});
    column_ += bytes;
    width_ += width;
  }

  std::uint64_t column_;
  std::size_t width_ = 0;
};

std::size_t widthOf(const std::vector<Cell>& cells, std::size_t begin, std::size_t end) {
  std::size_t width = 0;
  for (std::size_t i = begin; i < end; ++i) width += cells[i].width;
  return width;
}

/// A range of cells: `end` is exclusive.
struct Slice {
  std::size_t begin, end;
};

/// Returns the range of cells to show: the cells above the carets, as far as they fit, and then as
/// many cells before and after them as fit.
Slice visibleSlice(const std::vector<Cell>& cells, Slice marked, std::size_t width) {
  Slice visible{marked.begin, marked.begin};
  std::size_t used = 0;
  const auto fits = [&](std::size_t i) { return used + cells[i].width <= width; };
  while (visible.end < marked.end && fits(visible.end)) used += cells[visible.end++].width;
  for (bool isGrowing = true; isGrowing;) {
    isGrowing = false;
    if (visible.begin > 0 && fits(visible.begin - 1)) {
      used += cells[--visible.begin].width;
      isGrowing = true;
    }
    if (visible.end < cells.size() && fits(visible.end)) {
      used += cells[visible.end++].width;
      isGrowing = true;
    }
  }
  return visible;
}

Slice markedSlice(const std::vector<Cell>& cells, const vsa::TextRange& range) {
  const auto isBefore = [](const Cell& cell, std::uint64_t column) { return cell.end <= column; };
  const auto at =
      std::lower_bound(cells.begin(), cells.end(), range.begin.column, isBefore) - cells.begin();
  Slice marked{static_cast<std::size_t>(at), static_cast<std::size_t>(at)};
  const bool isLineLeft = range.end.line > range.begin.line;
  while (marked.end < cells.size() && (isLineLeft || cells[marked.end].begin < range.end.column)) {
    ++marked.end;
  }
  return marked;
}

Excerpt shownSlice(const std::vector<Cell>& cells, Slice visible, Slice marked) {
  Excerpt excerpt;
  for (std::size_t i = visible.begin; i < visible.end; ++i) excerpt.line += cells[i].shown;
  excerpt.carets.assign(widthOf(cells, visible.begin, marked.begin), ' ');
  const std::size_t markedWidth = widthOf(cells, marked.begin, std::min(marked.end, visible.end));
  excerpt.carets.append(std::max<std::size_t>(markedWidth, 1), '^');
  return excerpt;
}

}  // namespace

int columnsOf(char32_t character) {
  // wcwidth() interprets a character in the locale of the thread. In the locale C.UTF-8, the number
  // of a character is its Unicode code point.
  static const locale_t UNICODE = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (character < 0x7F || UNICODE == nullptr) return 1;
  const locale_t before = ::uselocale(UNICODE);
  const int columns = ::wcwidth(static_cast<wchar_t>(character));
  ::uselocale(before);
  return columns < 0 ? 1 : columns;
}

Excerpt excerptOf(const CheckedText& text, const vsa::TextRange& range, std::size_t width) {
  const LinePart part = text.lineAt(range.begin);
  const std::vector<Cell> cells = CellList(part).cells;
  const Slice marked = markedSlice(cells, range);
  const bool isLong =
      part.isCutBefore || part.isCutAfter || widthOf(cells, 0, cells.size()) > width;
  const std::size_t room = isLong && width > 2 * CUT.size() ? width - 2 * CUT.size() : width;
  const Slice visible = isLong ? visibleSlice(cells, marked, room) : Slice{0, cells.size()};
  Excerpt excerpt = shownSlice(cells, visible, marked);
  if (visible.begin > 0 || part.isCutBefore) {
    excerpt.line.insert(0, CUT);
    excerpt.carets.insert(0, CUT.size(), ' ');
  }
  if (visible.end < cells.size() || part.isCutAfter) excerpt.line += CUT;
  return excerpt;
}

}  // namespace vsa_tools
