// Rows for tests of lexers: a text and its tokens. The text is read from each kind of source, and
// by the reference lexer.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>

#include "tests/support/byte_source.h"
#include "tests/support/text.h"
#include "tests/support/token_text.h"
#include "tests/vsa/lex/plain_lexer.h"
#include "vsa/lex/lexer_source.h"

namespace zn::korvo_sdk::impl::lexer_tests {

using vsa_tests::memoryFile;
using vsa_tests::string;
using vsa_tests::tokensText;
using vsa_tests::visible;

inline std::string fromString(const std::string& bytes) {
  StringLexer lexer(string(bytes));
  return tokensText(lexer);
}

inline std::string fromFile(const std::string& bytes, std::size_t most) {
  FileLexer lexer(memoryFile(bytes, most));
  return tokensText(lexer);
}

/// A lexer without a window. It buffers only its lookahead and consumes one byte at a time.
class SingleLexer final : public Lexer {
 public:
  explicit SingleLexer(std::string bytes) : bytes_(std::move(bytes)) { lookaheadChar = next(); }
  char consume() override { return step(next()); }

 private:
  char next() {
    if (at_ < bytes_.size()) return bytes_[at_++];
    progress.end();
    return END_OF_INPUT;
  }

  std::string bytes_;
  std::size_t at_ = 0;
};

inline std::string fromSingle(const std::string& bytes) {
  SingleLexer lexer(bytes);
  return tokensText(lexer);
}

inline std::string fromPlain(const std::string& bytes) {
  vsa_tests::PlainLexer lexer(bytes);
  return tokensText(lexer);
}

inline void expectTokens(const std::string& bytes, const std::string& tokens) {
  SCOPED_TRACE(visible(bytes));
  EXPECT_EQ(fromString(bytes), tokens);
  EXPECT_EQ(fromFile(bytes, 0), tokens);
  EXPECT_EQ(fromFile(bytes, 1), tokens);
  EXPECT_EQ(fromFile(bytes, 7), tokens);
  EXPECT_EQ(fromSingle(bytes), tokens);
  EXPECT_EQ(fromPlain(bytes), tokens);
}

struct Row {
  std::string text;
  std::string tokens;
};

template <std::size_t N>
void expectRows(const Row (&rows)[N]) {
  for (const Row& row : rows) expectTokens(row.text, row.tokens);
}

}  // namespace zn::korvo_sdk::impl::lexer_tests
