#include "vsa/lex/lexer_source.h"

#include <cstdint>
#include <limits>

namespace zn::korvo_sdk::impl {

using zn::detail::OpenFile;

// The window is the whole text, and its first byte is the lookahead. If the text is empty, the
// lookahead is NUL. The lexer skips NUL like a blank.
StringLexer::StringLexer(const String& text) : source(text) {
  lookaheadChar = source[0];
  windowBegin = source.buf();
  windowEnd = source.buf() + source.len();
  if (source.len() > std::numeric_limits<std::uint32_t>::max()) progress.forgetOffset();
}

char StringLexer::consume() {
  if (windowBegin < windowEnd) ++windowBegin;
  if (windowBegin < windowEnd) return step(*windowBegin);
  progress.end();
  return step(END_OF_INPUT);
}

FileLexer::FileLexer(const File& opened) : file(opened) {
  lookaheadChar = fetch();
}

FileLexer::~FileLexer() {
  if (OpenFile* const shared = OpenFile::of(file)) shared->detach(cursor_);
}

// If another handle has read from the file since the last consumed character, the window is empty,
// and `fetch` reads the next byte.
char FileLexer::consume() {
  if (windowEnd - windowBegin > 1) return step(*++windowBegin);
  return step(fetch());
}

// Reads the next byte of the file and makes it the first byte of the window. If the source throws,
// the window is empty.
char FileLexer::fetch() {
  progress.beginBlock(index);
  block_.reset();
  if (OpenFile* const shared = OpenFile::of(file)) {
    shared->attach(cursor_);
    block_ = shared->block();
  }
  if (windowBegin < windowEnd) return *windowBegin;
  progress.end();
  return END_OF_INPUT;
}

}  // namespace zn::korvo_sdk::impl
