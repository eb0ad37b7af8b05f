#include "api/reading/text/text_lexer.h"

namespace vsa {

TextLexer::TextLexer(std::string_view text, BlockObserver& observer)
    : rest_(text), observer_(observer) {
  if (nextBlock()) {
    lookaheadChar = *windowBegin;
  } else {
    lookaheadChar = zn::korvo_sdk::impl::END_OF_INPUT;
  }
}

char TextLexer::consume() {
  if (windowEnd - windowBegin > 1) return step(*++windowBegin);
  if (nextBlock()) return step(*windowBegin);
  return step(zn::korvo_sdk::impl::END_OF_INPUT);
}

bool TextLexer::nextBlock() {
  progress.beginBlock(index);
  if (rest_.empty()) {
    windowBegin = windowEnd;
    progress.end();
    return false;
  }
  const std::string_view block = rest_.substr(0, BLOCK_BYTES);
  observer_.beforeBlock();
  rest_.remove_prefix(block.size());
  observer_.afterBlock(block);
  windowBegin = block.data();
  windowEnd = block.data() + block.size();
  return true;
}

}  // namespace vsa
