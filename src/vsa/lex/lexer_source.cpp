#include "vsa/lex/lexer_source.h"

namespace zn::korvo_sdk::impl {

// The window is the rest of the text, its first byte the lookahead. An empty text has NUL for its
// lookahead, which is skipped like a blank.
StringLexer::StringLexer(const String& text) : source(text) {
  lookaheadChar = source[0];
  windowBegin = source.buf();
  windowEnd = source.buf() + source.len();
}

char StringLexer::consume() {
  if (windowBegin < windowEnd) ++windowBegin;
  if (windowBegin < windowEnd) return step(*windowBegin);
  endSource();
  return step(END_OF_INPUT);
}

FileLexer::FileLexer(const File& opened) : file(opened) {
  lookaheadChar = fetch();
}

// The lookahead has been read, what follows it in the window has not.
FileLexer::~FileLexer() {
  if (windowBegin < windowEnd) file.skip(static_cast<std::size_t>(windowBegin + 1 - filled_));
}

char FileLexer::consume() {
  if (windowBegin < windowEnd) ++windowBegin;
  return step(windowBegin < windowEnd ? *windowBegin : fetch());
}

// The first byte of the next bytes at hand. The source may throw: what is left then is no window.
char FileLexer::fetch() {
  file.skip(static_cast<std::size_t>(windowEnd - filled_));
  filled_ = windowBegin = windowEnd = nullptr;
  const File::Window window = file.fill();
  filled_ = windowBegin = window.begin;
  windowEnd = window.end;
  if (windowBegin < windowEnd) return *windowBegin;
  endSource();
  return END_OF_INPUT;
}

}  // namespace zn::korvo_sdk::impl
