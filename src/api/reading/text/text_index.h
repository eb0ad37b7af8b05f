// TextIndex: offsets from lines and columns, and back. Internal.
//
// Tokens have a 32-bit line and column and no offset. Each time the lexer asks for a block of the
// text, the index stores its position. For any other position, the index reads the text from the
// previous stored position again, and counts the line feeds. A text without problems costs one
// entry per block.
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

  /// Called when a block is about to be read whose first byte is at `offset`. The lookahead of
  /// `lexer` is the byte before `offset`. `lexer` is null before a lexer exists.
  void addBlock(std::uint64_t offset, const Lexer* lexer);
  /// The number of bytes read so far.
  void setEnd(std::uint64_t end) noexcept { end_ = end; }
  std::uint64_t end() const noexcept { return end_; }

  /// The number of characters that the lexer has consumed.
  std::uint64_t offsetOf(const Lexer& lexer) const noexcept;
  /// The offset of the character at a position, at most `end`. 0 for the place before the first
  /// token.
  std::uint64_t offsetOf(TextPlace place);
  /// Line and column of the byte at `offset`, which is at most `end`.
  TextPosition positionOf(std::uint64_t offset);
  TextRange rangeOf(std::uint64_t begin, std::uint64_t end) {
    return {positionOf(begin), positionOf(end)};
  }

 private:
  // Line feeds are counted in pieces of this size.
  static constexpr std::size_t PIECE_BYTES = 16384;
  // The minimum distance of two stored positions. A pipe may deliver blocks of a few bytes.
  static constexpr std::uint64_t MIN_BLOCK_BYTES = 65536;

  // A byte whose position is known.
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
  LineStart last_{1, 0};  // the result of the last count of lines
  std::uint64_t end_ = 0;
};

}  // namespace vsa
