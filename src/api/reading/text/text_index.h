// TextIndex: converts lines and columns to offsets, and offsets to lines and columns. Internal.
//
// A token has a line, a column and an end index of 32 bits each, and no 64-bit offset. When the
// lexer requests a block of the text, the TextIndex stores the position of the block, unless the
// last stored position is less than 64 KiB before it. To find another position, it reads the text
// again from the nearest stored position before it, or from the line that it found last, and counts
// the line feeds. For a text without problems, it only stores positions, at most one for each
// block, and reads no bytes again. There is one exception: with BufferMode::Skip, it finds the
// position of each literal.
#pragma once

#include <cstdint>
#include <vector>

#include <vsa/reading/text_position.h>
#include "api/reading/text/text_store.h"
#include "vsa/apply/read_session.h"
#include "vsa/lex/lexer.h"

namespace vsa {

class TextIndex {
 public:
  using Lexer = zn::korvo_sdk::impl::Lexer;
  using TextPlace = zn::korvo_sdk::impl::TextPlace;

  explicit TextIndex(TextStore& store);

  /// Called before a block is read. `offset` is the offset of its first byte. The lookahead of
  /// `lexer` is the byte before `offset`. `lexer` is null if there is no lexer yet.
  void addBlock(std::uint64_t offset, const Lexer* lexer);
  void setEnd(std::uint64_t end) noexcept { end_ = end; }
  /// The number of bytes that were read.
  std::uint64_t end() const noexcept { return end_; }

  /// Returns the number of characters that the lexer has consumed.
  std::uint64_t offsetOf(const Lexer& lexer) const noexcept;
  /// Returns the offset of the character at `place`, at most `end()`. Returns 0 for the place
  /// before the first token.
  std::uint64_t offsetOf(TextPlace place);
  /// Returns the position of the byte at `offset`, which must not be greater than `end`.
  TextPosition positionOf(std::uint64_t offset);
  TextRange rangeOf(std::uint64_t begin, std::uint64_t end) {
    return {positionOf(begin), positionOf(end)};
  }

 private:
  // The number of bytes per step when line feeds are counted.
  static constexpr std::size_t PIECE_BYTES = 16384;
  // The minimum distance in bytes between two stored positions. Without it, a pipe that returns
  // blocks of a few bytes would cause a stored position every few bytes.
  static constexpr std::uint64_t MIN_MARK_DISTANCE = 65536;

  // A byte with a known position.
  struct Mark {
    std::uint64_t offset;
    std::uint64_t line;
    std::uint64_t column;
  };
  // A line and the offset of its first byte.
  struct LineStart {
    std::uint64_t line;
    std::uint64_t offset;
  };

  static LineStart lineStartOf(const Mark& mark) noexcept {
    return {mark.line, mark.offset - (mark.column - 1)};
  }
  template <class IsReached>
  LineStart walk(const Mark& from, const IsReached& isReached);

  TextStore& store_;
  std::vector<Mark> marks_{{0, 1, 1}};
  LineStart last_{1, 0};  // the result of the last call of `walk`
  std::uint64_t end_ = 0;
};

}  // namespace vsa
