#include "api/reading/text/text_index.h"

#include <algorithm>
#include <cstring>

namespace vsa {

namespace {

// Returns the 64-bit number that is nearest to `known` and whose low 32 bits are `wrapped`, or 0 if
// that number is negative.
std::uint64_t unwrapped(std::uint64_t known, std::uint32_t wrapped) {
  constexpr std::int64_t TURN = std::int64_t{1} << 32;
  std::int64_t difference = std::int64_t{wrapped} - std::int64_t{static_cast<std::uint32_t>(known)};
  if (difference >= TURN / 2) difference -= TURN;
  if (difference < -TURN / 2) difference += TURN;
  const std::int64_t result = static_cast<std::int64_t>(known) + difference;
  return result < 0 ? 0 : static_cast<std::uint64_t>(result);
}

}  // namespace

TextIndex::TextIndex(TextStore& store) : store_(store) {
}

void TextIndex::addBlock(std::uint64_t offset, const Lexer* lexer) {
  const Mark& last = marks_.back();
  if (lexer == nullptr || offset < last.offset + MIN_MARK_DISTANCE) return;
  Mark mark{offset, unwrapped(last.line, static_cast<std::uint32_t>(lexer->line)), 0};
  // The column of the lexer has only 32 bits. If the line began before the last mark, the column is
  // computed from that mark.
  mark.column = mark.line == last.line ? last.column + (offset - 1 - last.offset)
                                       : static_cast<std::uint32_t>(lexer->column) + 1ULL;
  if (lexer->previous == '\n') mark = {offset, mark.line + 1, 1};
  ++mark.column;  // the column after the lookahead
  if (lexer->lookaheadChar == '\n') mark = {offset, mark.line + 1, 1};
  marks_.push_back(mark);
}

std::uint64_t TextIndex::offsetOf(const Lexer& lexer) const noexcept {
  return std::min(end_, unwrapped(end_, static_cast<std::uint32_t>(lexer.index)));
}

// Finds the line that contains a place, and returns its start. `isReached(line)` returns whether a
// line begins after the place. Counts lines from `from`, or from the result of the last call if
// this result is nearer to the place. If the bytes up to the place are not available any more,
// returns the last line that was found.
template <class IsReached>
TextIndex::LineStart TextIndex::walk(const Mark& from, const IsReached& isReached) {
  LineStart at = lineStartOf(from);
  std::uint64_t offset = from.offset;
  if (last_.offset > offset && !isReached(last_)) {
    at = last_;
    offset = last_.offset;
  }
  while (offset < end_) {
    const auto count =
        static_cast<std::size_t>(std::min<std::uint64_t>(PIECE_BYTES, end_ - offset));
    const std::string_view piece = store_.bytes(offset, count);
    if (piece.empty()) break;
    std::size_t begin = 0;
    for (std::size_t feed = piece.find('\n'); feed != std::string_view::npos;
         feed = piece.find('\n', begin)) {
      begin = feed + 1;
      const LineStart next{at.line + 1, offset + begin};
      if (isReached(next)) return last_ = at;
      at = next;
    }
    offset += piece.size();
    if (isReached({at.line + 1, offset})) break;
  }
  return last_ = at;
}

std::uint64_t TextIndex::offsetOf(TextPlace place) {
  if (place.line == 0) return 0;
  const std::uint64_t line = unwrapped(marks_.back().line, static_cast<std::uint32_t>(place.line));
  const std::uint64_t column = static_cast<std::uint32_t>(place.column);
  const auto isAfter = [&](const Mark& mark) {
    return mark.line > line || (mark.line == line && mark.column > column);
  };
  const auto after = std::partition_point(marks_.begin() + 1, marks_.end(),
                                          [&](const Mark& mark) { return !isAfter(mark); });
  const Mark& mark = *(after - 1);
  const LineStart start = walk(mark, [&](const LineStart& next) { return next.line > line; });
  const std::uint64_t offset = start.offset + std::max<std::uint64_t>(column, 1) - 1;
  return std::min(offset, end_);
}

TextPosition TextIndex::positionOf(std::uint64_t offset) {
  const auto after = std::partition_point(marks_.begin() + 1, marks_.end(),
                                          [&](const Mark& mark) { return mark.offset <= offset; });
  const LineStart start =
      walk(*(after - 1), [&](const LineStart& next) { return next.offset > offset; });
  return {offset, start.line, offset - start.offset + 1};
}

}  // namespace vsa
