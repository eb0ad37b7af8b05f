// Compares the lexer for a String or a File with PlainLexer, token by token: type, text and
// position. Also compares the public vsa::SyntaxReader with the lexer.
#include <string>

#include "fuzz/support/check.h"
#include "fuzz/support/message_count.h"
#include "fuzz/targets.h"
#include "tests/support/byte_source.h"
#include "tests/support/token_text.h"
#include "tests/syntax/syntax_source.h"
#include "tests/vsa/lex/plain_lexer.h"
#include "vsa/lex/lexer_source.h"

namespace vsa_fuzz {

namespace {

using zn::korvo_sdk::impl::Token;

void compare(zn::korvo_sdk::impl::Lexer& lexer, vsa_tests::PlainLexer plain, const char* source) {
  while (true) {
    const Token expected = plain.nextToken();
    const Token found = lexer.nextToken();
    if (found.type != expected.type || !(found.text == expected.text) ||
        found.line != expected.line || found.column != expected.column) {
      checkSame(vsa_tests::tokenText(expected), vsa_tests::tokenText(found), source);
    }
    if (expected.type == Token::Type::Invalid) return countMessage(lexer.problem().id);
    if (expected.type == Token::Type::Eof) {
      if (!(found.text == "EOF")) countMessage(zn::korvo_sdk::DiagnosticId::UnexpectedEof);
      return;
    }
  }
}

void compareSyntax(std::string_view text, std::size_t bytesPerRead) {
  vsa::SyntaxReader memory(text);
  checkSame("", vsa_tests::differenceFromLexer(text, memory), "SyntaxReader of a string");
  vsa_tests::StepSource source(text, bytesPerRead + 1);
  vsa::SyntaxReader stream(source);
  checkSame("", vsa_tests::differenceFromLexer(text, stream), "SyntaxReader of a source");
}

}  // namespace

void lexerAgainstPlain(std::string_view input) {
  const auto [text, settings] = splitSettings(input);
  const std::string copy(text);
  compareSyntax(text, settings / 4);
  if (settings % 4 != 0) {
    zn::korvo_sdk::impl::StringLexer fromString(vsa_tests::string(text));
    compare(fromString, vsa_tests::PlainLexer(copy, true), "token of a string");
  } else {
    // 0 means that there is no limit.
    const std::size_t bytesPerRead = settings / 4;
    zn::korvo_sdk::impl::FileLexer fromFile(vsa_tests::memoryFile(copy, bytesPerRead));
    compare(fromFile, vsa_tests::PlainLexer(copy), "token of a file");
  }
}

}  // namespace vsa_fuzz
