// The two sources of characters: a String or a File. Internal.
#pragma once

#include <memory>

#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>
#include "foundation/io/open_file.h"
#include "vsa/lex/lexer.h"

namespace zn::korvo_sdk::impl {

/// A lexer whose source is a String. It shares the characters with the caller's String.
class StringLexer final : public Lexer {
 public:
  explicit StringLexer(const String& text);
  char consume() override;

  const String source;
};

/// A lexer whose source is an open file. It begins at the read position of the file.
///
/// Other handles may read from the same file between two tokens. Such a handle reads from the byte
/// after the lookahead on. Afterwards the lexer continues after the bytes that the handle has read.
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
  // Keeps the bytes of the window in memory while a scene reads from the file during a statement.
  std::shared_ptr<const char[]> block_;
};

}  // namespace zn::korvo_sdk::impl
