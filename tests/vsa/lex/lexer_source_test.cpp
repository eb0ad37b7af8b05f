// Tests of the lexers of Strings and Files: characters with their positions, and files with several
// handles.
#include "vsa/lex/lexer_source.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/support/byte_source.h"
#include "tests/support/text.h"
#include "tests/support/token_text.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::memoryFile;
using vsa_tests::string;
using vsa_tests::tokenText;
using namespace std::string_literals;

/// Returns each consumed character with its position: "a1,1 b1,2".
std::string consumed(Lexer& lexer) {
  std::string all;
  while (lexer.lookaheadChar != END_OF_INPUT) {
    const char c = lexer.consume();
    EXPECT_EQ(c, lexer.previous);
    all += vsa_tests::visible({&c, 1}) + std::to_string(lexer.line) + ',' +
           std::to_string(lexer.column) + ' ';
  }
  return all + std::to_string(lexer.index);
}

TEST(LexerSource, CharactersAndTheirPositions) {
  const std::string bytes = "a\n\tb\r\n\nc";
  const std::string expected = "a1,1 \\n1,2 \\t2,1 b2,2 \\r2,3 \\n2,4 \\n3,1 c4,1 8";
  StringLexer fromString(string(bytes));
  EXPECT_EQ(consumed(fromString), expected);
  for (const std::size_t most : {0UL, 1UL, 3UL}) {
    FileLexer fromFile(memoryFile(bytes, most));
    EXPECT_EQ(consumed(fromFile), expected);
  }
}

TEST(StringLexer, SharesTheText) {
  const String text("lamp");
  const StringLexer lexer(text);
  EXPECT_EQ(lexer.source.buf(), text.buf());
}

TEST(StringLexer, LookaheadOfAnEmptyTextIsNul) {
  StringLexer lexer{String()};
  EXPECT_EQ(lexer.lookaheadChar, '\0');
  EXPECT_EQ(lexer.consume(), '\0');
  EXPECT_EQ(lexer.lookaheadChar, END_OF_INPUT);
  EXPECT_EQ(lexer.index, 1);
}

TEST(StringLexer, ConsumeAtTheEndReturnsTheEndMark) {
  StringLexer lexer("a");
  lexer.consume();
  EXPECT_EQ(lexer.consume(), END_OF_INPUT);
  EXPECT_EQ(lexer.lookaheadChar, END_OF_INPUT);
  EXPECT_EQ(lexer.column, 2);
}

TEST(FileLexer, AnEmptyFileIsAtItsEnd) {
  const FileLexer lexer(memoryFile(""));
  EXPECT_EQ(lexer.lookaheadChar, END_OF_INPUT);
  EXPECT_EQ(lexer.column, 0);
  EXPECT_EQ(FileLexer(File()).lookaheadChar, END_OF_INPUT);
}

TEST(FileLexer, ConsumePassesTheEndMarkOnlyWhenCalledAgain) {
  FileLexer lexer(
      memoryFile("a\xFF"
                 "b"));
  lexer.consume();
  EXPECT_EQ(lexer.lookaheadChar, END_OF_INPUT);
  EXPECT_TRUE(lexer.endsAtMark());
  EXPECT_EQ(lexer.consume(), END_OF_INPUT);
  EXPECT_EQ(lexer.lookaheadChar, 'b');
}

TEST(FileLexer, ReadsFromTheCurrentPosition) {
  for (const std::size_t most : {0UL, 1UL}) {
    File file = memoryFile("abcd", most);
    signed char c = 0;
    file.read(c);
    FileLexer lexer(file);
    EXPECT_EQ(tokenText(lexer.nextToken()), "Id<bcd>1,3");
  }
}

TEST(FileLexer, FilePositionIsAfterTheLookahead) {
  for (const std::size_t most : {0UL, 1UL, 2UL}) {
    File file = memoryFile("ab;cd", most);
    {
      FileLexer lexer(file);
      lexer.nextToken();
      EXPECT_EQ(lexer.lookaheadChar, ';');
    }
    signed char c = 0;
    EXPECT_TRUE(file.read(c));
    EXPECT_EQ(c, 'c');
  }
}

TEST(FileLexer, FilePositionIsWhereTheSourceThrew) {
  for (const std::size_t at : {1UL, 3UL, 5UL}) {
    File file(new vsa_tests::InterruptedSource("abcde", at));
    {
      FileLexer lexer(file);
      EXPECT_THROW(lexer.nextToken(), std::runtime_error) << at;
    }
    std::string rest;
    for (signed char c = 0; file.read(c);) rest += static_cast<char>(c);
    EXPECT_EQ(rest, std::string("abcde").substr(at));
  }
  File file(new vsa_tests::InterruptedSource("abcde", 0));
  EXPECT_THROW(FileLexer{file}, std::runtime_error);
  FileLexer lexer(file);
  EXPECT_EQ(tokenText(lexer.nextToken()), "Id<abcde>1,5");
}

TEST(FileLexer, ContinuesWhereTheSourceThrew) {
  File file(new vsa_tests::InterruptedSource("abc de; f", 4));
  FileLexer lexer(file);
  EXPECT_EQ(tokenText(lexer.nextToken()), "Id<abc>1,3");
  EXPECT_THROW(lexer.nextToken(), std::runtime_error);
  EXPECT_EQ(tokenText(lexer.nextToken()), "Id<de>1,6");
  EXPECT_EQ(tokenText(lexer.nextToken()), "Semicolon<;>1,7");
}

// Each lexer has its own lookahead. When a lexer needs a character, it gets the next character of
// the file.
TEST(FileLexer, TwoLexersShareTheCharactersOfOneFile) {
  for (const std::size_t most : {0UL, 1UL, 2UL, 3UL, 7UL}) {
    const File file = memoryFile("abcdefg", most);
    FileLexer first(file);
    FileLexer second(file);
    std::string ofFirst;
    std::string ofSecond;
    for (int i = 0; i < 3; ++i) {
      ofFirst += first.consume();
      ofSecond += second.consume();
    }
    EXPECT_EQ(ofFirst, "ace") << most;
    EXPECT_EQ(ofSecond, "bdf") << most;
    EXPECT_EQ(first.lookaheadChar, 'g') << most;
    EXPECT_EQ(second.lookaheadChar, END_OF_INPUT) << most;
    EXPECT_EQ(first.column, 3) << most;
    EXPECT_EQ(second.column, 3) << most;
  }
}

TEST(FileLexer, TwoLexersReadTokensAlternately) {
  for (const std::size_t most : {0UL, 1UL, 2UL, 3UL, 7UL}) {
    File file = memoryFile("one two\nthree four; # rest", most);
    FileLexer first(file);
    FileLexer second(file);
    EXPECT_EQ(tokenText(first.nextToken()), "Id<oe>1,2") << most;
    EXPECT_EQ(tokenText(second.nextToken()), "Id<ntwo>1,4") << most;
    EXPECT_EQ(tokenText(first.nextToken()), "Id<three>1,8") << most;
    EXPECT_EQ(tokenText(second.nextToken()), "Id<four>2,4") << most;
    EXPECT_EQ(tokenText(first.nextToken()), "Comment<# rest>1,16") << most;
    EXPECT_EQ(tokenText(second.nextToken()), "Semicolon<;>2,5") << most;
    EXPECT_EQ(tokenText(first.nextToken()), "Eof<EOF>1,16") << most;
    EXPECT_EQ(tokenText(second.nextToken()), "Eof<EOF>2,5") << most;
  }
}

TEST(FileLexer, OneLexerMayEndBeforeTheOther) {
  for (const std::size_t most : {0UL, 1UL, 2UL, 3UL, 7UL}) {
    File file = memoryFile("one two three", most);
    FileLexer first(file);
    {
      FileLexer second(file);
      EXPECT_EQ(tokenText(second.nextToken()), "Id<ne>1,2") << most;
    }
    EXPECT_EQ(tokenText(first.nextToken()), "Id<otwo>1,4") << most;
    EXPECT_EQ(tokenText(first.nextToken()), "Id<three>1,10") << most;
  }
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
