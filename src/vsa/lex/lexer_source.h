// The two sources of characters: a String or a File. Internal.
#pragma once

#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>
#include "foundation/io/open_file.h"
#include "vsa/lex/lexer.h"

namespace zn::korvo_sdk::impl {

/// Reads a text in memory; the caller's String shares it.
class StringLexer final : public Lexer {
 public:
  explicit StringLexer(const String& text);
  char consume() override;

  const String source;
};

/// Reads an open file, forward from its read position. The file is shared: whenever another handle
/// reads it, its position is right behind the lookahead character, and the lexer goes on behind
/// what that handle has read.
class FileLexer final : public Lexer {
 public:
  explicit FileLexer(const File& opened);
  ~FileLexer() override;
  FileLexer(const FileLexer&) = delete;
  FileLexer& operator=(const FileLexer&) = delete;
  char consume() override;

  const File file;

 private:
  char fetch();

  const zn::detail::OpenFile::Cursor cursor_{windowBegin, windowEnd};
};

}  // namespace zn::korvo_sdk::impl
