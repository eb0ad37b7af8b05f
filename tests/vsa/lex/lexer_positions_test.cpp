// Tests of the positions of tokens in texts with many line feeds.
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "tests/vsa/lex/lexer_rows.h"

namespace zn::korvo_sdk::impl {
namespace {

using namespace lexer_tests;
using Type = Token::Type;

/// Returns each token as "kind line,column,index".
std::vector<std::string> positionsFrom(Lexer& lexer) {
  std::vector<std::string> places;
  while (true) {
    const Token token = lexer.nextToken();
    places.push_back(std::string(vsa_tests::kindName(token.type)) + ' ' +
                     std::to_string(token.line) + ',' + std::to_string(token.column) + ',' +
                     std::to_string(lexer.index));
    if (token.type == Type::Eof || token.type == Type::Invalid) return places;
  }
}

void expectPositions(const std::string& bytes, const std::vector<std::string>& places) {
  SCOPED_TRACE(visible(bytes));
  StringLexer fromString(string(bytes));
  EXPECT_EQ(positionsFrom(fromString), places);
  SingleLexer single(bytes);
  EXPECT_EQ(positionsFrom(single), places);
  for (const std::size_t most : {0UL, 1UL, 2UL, 15UL, 16UL, 17UL, 64UL}) {
    FileLexer fromFile(memoryFile(bytes, most));
    EXPECT_EQ(positionsFrom(fromFile), places) << most << " bytes at a time";
  }
}

TEST(LexerPositions, InsideTokens) {
  expectPositions("a \"b\n\nc\n\" d", {"Id 1,1,1", "Str 4,1,9", "Id 4,3,11", "Eof 4,3,11"});
  expectPositions("\"\n\n\n\";", {"Str 4,1,5", "Semicolon 4,2,6", "Eof 4,2,6"});
  expectPositions("\"\n\\\"\n\n\\\\\";x",
                  {"Str 4,3,9", "Semicolon 4,4,10", "Id 4,5,11", "Eof 4,5,11"});
  expectPositions("(1\n\n2\n,\n 3\n)\n;", {"Parens 6,1,12", "Semicolon 7,1,14", "Eof 7,1,14"});
  expectPositions("{\n\n\n}\n\n;", {"Braces 4,1,5", "Semicolon 6,1,8", "Eof 6,1,8"});
  expectPositions("[\n1\n\n]\n;", {"Brackets 4,1,6", "Semicolon 5,1,8", "Eof 5,1,8"});
  expectPositions("# a\n# b\n\n\n#c\n",
                  {"Comment 1,3,3", "Comment 2,3,7", "Comment 5,2,12", "Eof 5,3,13"});
  expectPositions("\"a\n\n", {"Eof 2,1,4"});
  expectPositions("(1\n\n x", {"Invalid 3,1,5"});
}

/// Returns the bytes for a token that begins with `form`, without its first and last byte. Some
/// of them may be line feeds.
std::string tokenContent(char form, std::size_t length) {
  const std::string bytes = form == '"' ? "ab \t" : form == '[' ? "12 *" : "12 ,";
  std::mt19937 random(static_cast<unsigned>(length));
  std::string filled;
  for (std::size_t i = 0; i < length; ++i) {
    const std::size_t drawn = random();
    filled += drawn % 5 == 0 ? '\n' : bytes[drawn / 5 % bytes.size()];
  }
  return filled;
}

// The test counts the expected line and column one byte at a time.
TEST(LexerPositions, InsideTokensOfEveryLength) {
  const struct {
    char open;
    char close;
    const char* kind;
  } forms[] = {
      {'"', '"', "Str"}, {'(', ')', "Parens"}, {'{', '}', "Braces"}, {'[', ']', "Brackets"}};
  for (const auto& form : forms) {
    for (std::size_t length = 1; length < 140; ++length) {
      const std::string bytes = form.open + tokenContent(form.open, length) + form.close;
      int line = 1;
      int column = 0;
      for (std::size_t i = 0; i < bytes.size(); ++i) {
        const bool isNewLine = i > 0 && bytes[i - 1] == '\n';
        line += isNewLine ? 1 : 0;
        column = isNewLine ? 1 : column + 1;
      }
      const std::string place = ' ' + std::to_string(line) + ',' + std::to_string(column) + ',' +
                                std::to_string(bytes.size());
      expectPositions(bytes, {form.kind + place, "Eof" + place});
    }
  }
}

TEST(LexerPositions, BetweenTokens) {
  for (std::size_t feeds = 1; feeds < 70; ++feeds) {
    const std::string bytes =
        "a" + std::string(feeds, '\n') + "  bc#d" + std::string(feeds, '\n') + "e";
    const std::string first = std::to_string(feeds + 1);
    const std::string second = std::to_string(2 * feeds + 1);
    const std::string end = std::to_string(2 * feeds + 8);
    expectPositions(bytes, {"Id 1,1,1", "Id " + first + ",4," + std::to_string(feeds + 5),
                            "Comment " + first + ",6," + std::to_string(feeds + 7),
                            "Id " + second + ",1," + end, "Eof " + second + ",1," + end});
  }
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
