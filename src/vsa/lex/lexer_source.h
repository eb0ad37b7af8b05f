// Where characters come from: a String or a File. Internal.
#pragma once

#include <cstddef>

#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>
#include "vsa/lex/lexer.h"

namespace zn::korvo_sdk::impl {

/// Reads a text in memory, which it shares with its caller.
class StringLexer final : public Lexer {
 public:
  explicit StringLexer(const String& text);
  char consume() override;

  String source;
};

/// Reads an open file, from wherever it stands. It shares the file: once the lexer is gone, the
/// file stands behind the lexer's lookahead.
class FileLexer final : public Lexer {
 public:
  explicit FileLexer(const File& opened);
  ~FileLexer() override;
  FileLexer(const FileLexer&) = delete;
  FileLexer& operator=(const FileLexer&) = delete;
  char consume() override;

  File file;

 private:
  char fetch();

  const char* filled_ = nullptr;  // where the file's bytes at hand begin
};

}  // namespace zn::korvo_sdk::impl
