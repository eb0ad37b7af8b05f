// Tests that SyntaxReader and the reader's lexer read the same tokens, up to the first token that
// the lexer rejects. The texts are all cases, regressions, examples and shared scenes, short random
// texts of the characters that have a meaning in the format, and long tokens. Some sources deliver
// only a few bytes at a time.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include <vsa/syntax.h>
#include "tests/support/text.h"
#include "tests/support/text_files.h"
#include "tests/syntax/syntax_source.h"

namespace {

using vsa_tests::differenceFromLexer;
using vsa_tests::StepSource;

void expectAgreement(const std::string& text) {
  vsa::SyntaxReader memory(text);
  EXPECT_EQ(differenceFromLexer(text, memory), "") << text.substr(0, 200);
  StepSource source(text, 7);
  vsa::SyntaxReader stream(source);
  EXPECT_EQ(differenceFromLexer(text, stream), "") << text.substr(0, 200);
}

TEST(LexerAgreementTest, Files) {
  const auto texts =
      vsa_tests::textFiles({"tests/cases", "tests/regressions", "examples", "../shared/scenes"});
  for (const auto& text : texts) {
    SCOPED_TRACE(text.string());
    expectAgreement(vsa_tests::contentOf(text));
  }
  EXPECT_GT(texts.size(), 200);
}

TEST(LexerAgreementTest, RandomTexts) {
  constexpr std::string_view PIECES[] = {
      "(", ")", "{",  "}",  "[", "]",    ",", " ",        "\n",  "1",    "2.",   "-",
      "+", "e", "\"", "\\", "#", ";",    ":", ".",        "=",   "|",    "true", "nUlL",
      "x", "_", "\t", "\r", "*", "\x7F", "!", "\xC3\xA4", "(((", "1 2 ", ")) "};
  std::mt19937 random(15);
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (auto length = random() % 30; length > 0; --length) {
      text += PIECES[random() % std::size(PIECES)];
    }
    if (i % 2 == 0) text.insert(0, i % 4 == 0 ? "(" : "{");
    expectAgreement(text);
    if (HasFailure()) return;
  }
}

TEST(LexerAgreementTest, LongTokensInPieces) {
  std::string numbers, digits(700000, '7'), quoted(600000, '\\');
  for (int i = 0; i < 200000; ++i) numbers += std::to_string(i) + (i % 5 == 0 ? " , " : " ");
  for (const std::string& text :
       {"a.b = float[3] {" + numbers + "};", "a.b = " + digits + ".5;", "a.b = \"" + quoted + "\";",
        "# " + digits + "\nn m;", digits + "x;", "(" + numbers + "!", "{((" + digits + ")(1)) }",
        "\"" + quoted, "(" + numbers, "n" + digits + ":"}) {
    StepSource source(text, 100000);
    vsa::SyntaxReader stream(source);
    EXPECT_EQ(differenceFromLexer(text, stream), "");
    vsa::SyntaxReader memory(text);
    EXPECT_EQ(differenceFromLexer(text, memory), "");
  }
}

}  // namespace
