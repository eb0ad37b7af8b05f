// The two sources of characters: a String or a File. Internal.
#pragma once

#include <memory>

#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>
#include "foundation/io/open_file.h"
#include "vsa/lex/lexer.h"

namespace zn::korvo_sdk::impl {

/// Reads a String. Shares its characters with the caller's handle.
class StringLexer final : public Lexer {
 public:
  explicit StringLexer(const String& text);
  char consume() override;

  const String source;
};

/// Reads an open file from its read position. The file is shared with other handles: when one of
/// them reads, the file's position is right after the lookahead character, and the lexer continues
/// after the bytes that the handle has read.
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
  // Keeps the bytes of the window in memory when a scene reads from the file during a statement.
  std::shared_ptr<const char[]> block_;
};

}  // namespace zn::korvo_sdk::impl
