// Tests that call members of the lexer directly.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "tests/vsa/lex/lexer_rows.h"

namespace zn::korvo_sdk::impl {
namespace {

using namespace lexer_tests;
using namespace std::string_literals;
using vsa_tests::text;
using vsa_tests::tokenText;
using Type = Token::Type;

TEST(LexerMembers, FieldsInOrder) {
  const StringLexer lexer("a");
  static_assert(std::is_same_v<decltype(Lexer::previous), char>);
  static_assert(std::is_same_v<decltype(Lexer::lookaheadChar), char>);
  static_assert(std::is_same_v<decltype(Lexer::index), std::int32_t>);
  static_assert(std::is_same_v<decltype(Lexer::line), std::int32_t>);
  static_assert(std::is_same_v<decltype(Lexer::column), std::int32_t>);
  const std::vector<const void*> fields = {&lexer.previous, &lexer.lookaheadChar, &lexer.index,
                                           &lexer.line, &lexer.column};
  EXPECT_TRUE(std::is_sorted(fields.begin(), fields.end(), std::less<>()));
}

TEST(LexerMembers, StateBeforeTheFirstCharacter) {
  const StringLexer lexer("ab");
  EXPECT_EQ(lexer.previous, 0);
  EXPECT_EQ(lexer.lookaheadChar, 'a');
  EXPECT_EQ(lexer.index, 0);
  EXPECT_EQ(lexer.line, 1);
  EXPECT_EQ(lexer.column, 0);
}

TEST(LexerMembers, TokenFunctionsAtTheEnd) {
  FileLexer lexer(memoryFile(""));
  EXPECT_EQ(tokenText(lexer.id()), "Eof<UNEXPECTED EOF while parsing ID>1,0");
  EXPECT_EQ(tokenText(lexer.number()), "Eof<UNEXPECTED EOF while parsing NUMBER>1,0");
  EXPECT_EQ(tokenText(lexer.string()), "Eof<UNEXPECTED EOF while parsing STRING>1,0");
  EXPECT_EQ(tokenText(lexer.parens()), "Eof<UNEXPECTED EOF while parsing PARENS>1,0");
  EXPECT_EQ(tokenText(lexer.braces()), "Eof<UNEXPECTED EOF while parsing BRACES>1,0");
  EXPECT_EQ(tokenText(lexer.brackets()), "Eof<UNEXPECTED EOF while parsing BRACKETS>1,0");
}

TEST(LexerMembers, EachTokenFunction) {
  EXPECT_EQ(tokenText(StringLexer("#a").comment()), "Comment<#a>1,2");
  EXPECT_EQ(tokenText(StringLexer("\"a\"").string()), "Str<\"a\">1,3");
  EXPECT_EQ(tokenText(StringLexer("(1)").parens()), "Parens<(1)>1,3");
  EXPECT_EQ(tokenText(StringLexer("{1}").braces()), "Braces<{1}>1,3");
  EXPECT_EQ(tokenText(StringLexer("[1]").brackets()), "Brackets<[1]>1,3");
  EXPECT_EQ(tokenText(StringLexer("Null").id()), "Null<null>1,4");
  EXPECT_EQ(tokenText(StringLexer("-1f").number()), "Real<-1f>1,3");
  EXPECT_EQ(tokenText(StringLexer(";").token(Type::Semicolon)), "Semicolon<;>1,1");
}

// These members do not check the first character of a token. Only nextToken() does.
TEST(LexerMembers, FirstCharacterIsNotChecked) {
  for (const std::size_t most : {0UL, 1UL}) {
    FileLexer name(memoryFile("\nab;", most));
    EXPECT_EQ(tokenText(name.id()), "Id<\\nab>2,2");
    EXPECT_EQ(name.lookaheadChar, ';');
    EXPECT_EQ(name.index, 3);
    FileLexer number(memoryFile("\n12;", most));
    EXPECT_EQ(tokenText(number.number()), "Int<\\n12>2,2");
    EXPECT_EQ(number.lookaheadChar, ';');
    FileLexer real(memoryFile(";.5;", most));
    EXPECT_EQ(tokenText(real.number()), "Real<;.5>1,3");
  }
  StringLexer name("\nab;");
  EXPECT_EQ(tokenText(name.id()), "Id<\\nab>2,2");
  StringLexer number("\n12;");
  EXPECT_EQ(tokenText(number.number()), "Int<\\n12>2,2");
  StringLexer feeds("\n\nab;");
  EXPECT_EQ(tokenText(feeds.id()), "Id<\\n>1,1");
  EXPECT_EQ(tokenText(StringLexer("]1]2").brackets()), "Brackets<]1]>1,3");
  // The text of a token ends at its first NUL.
  EXPECT_EQ(tokenText(StringLexer(string("\0ab"s)).id()), "Id<>1,3");
  EXPECT_EQ(tokenText(StringLexer(string("\0;"s)).token(Type::Dot)), "Dot<>1,1");
}

TEST(LexerMembers, TokensThatConsumeNothing) {
  StringLexer lexer("ab}");
  lexer.consume();
  lexer.consume();
  EXPECT_EQ(tokenText(lexer.eof()), "Eof<EOF>1,2");
  EXPECT_EQ(tokenText(lexer.invalidToken()), "Invalid<INVALID TOKEN (1,2): '}'>1,2");
  EXPECT_EQ(tokenText(lexer.unexpectedEof("THING")), "Eof<UNEXPECTED EOF while parsing THING>1,2");
  EXPECT_EQ(tokenText(lexer.invalidListToken("THING")),
            "Invalid<INVALID THING LIST TOKEN (1,2): '}'>1,2");
  ds::Vector<char> chars;
  for (const char c : "xy\0z"s) chars.push_back(c);
  EXPECT_EQ(tokenText(lexer.token(Type::Id, chars)), "Id<xy>1,2");
  EXPECT_EQ(tokenText(lexer.token(Type::Str, ds::Vector<char>())), "Str<>1,2");
  EXPECT_EQ(lexer.index, 2);
}

TEST(LexerMembers, InvalidCharacterIsNotConsumed) {
  StringLexer lexer("(1 x)");
  EXPECT_EQ(lexer.nextToken().type, Type::Invalid);
  EXPECT_EQ(lexer.lookaheadChar, 'x');
  EXPECT_EQ(tokenText(lexer.nextToken()), "Id<x>1,4");
  EXPECT_EQ(lexer.nextToken().type, Type::Invalid);
  EXPECT_EQ(lexer.nextToken().type, Type::Invalid);
  EXPECT_EQ(lexer.lookaheadChar, ')');
}

TEST(LexerMembers, LettersOfNoNumberEndATuple) {
  StringLexer vector("vec2(1 x)");
  EXPECT_EQ(tokensText(vector), "Id<vec2>1,4 Invalid<INVALID PAREN LIST TOKEN (1,7): 'x'>1,7");
  StringLexer colour("rgba(1 0 0 x)");
  EXPECT_EQ(tokensText(colour), "Id<rgba>1,4 Invalid<INVALID PAREN LIST TOKEN (1,11): 'x'>1,11");
}

// In the message, the name of the list is between two blanks. Both remain if the name is empty.
TEST(LexerMembers, InvalidListTokenWithoutAName) {
  StringLexer lexer("ab}");
  lexer.consume();
  lexer.consume();
  EXPECT_EQ(tokenText(lexer.invalidListToken("")), "Invalid<INVALID  LIST TOKEN (1,2): '}'>1,2");
  EXPECT_EQ(lexer.problem().id, DiagnosticId::InvalidListToken);
  EXPECT_TRUE(lexer.problem().list.isEmpty());
  EXPECT_EQ(vsa_tests::text(lexer.problem().kind()), "INVALID  LIST TOKEN");
  EXPECT_EQ(vsa_tests::text(lexer.problem().text), "'}'");
}

TEST(LexerMembers, EofIsRepeated) {
  StringLexer lexer("\"a");
  EXPECT_EQ(tokenText(lexer.nextToken()), "Eof<UNEXPECTED EOF while parsing STRING>1,2");
  EXPECT_EQ(tokenText(lexer.nextToken()), "Eof<EOF>1,2");
  EXPECT_EQ(tokenText(lexer.nextToken()), "Eof<EOF>1,2");
}

TEST(LexerMembers, NumberCharacters) {
  const std::string allowed = "+-.AEFINUaefinu0123456789ABCDEFabcdef";
  for (int byte = 1; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    EXPECT_EQ(StringLexer(String(c)).isNumberChar(), allowed.find(c) != std::string::npos) << byte;
  }
}

std::string listed(const std::string& bytes, const std::string& collected, int steps) {
  StringLexer lexer(string(bytes));
  ds::Vector<char> chars;
  for (const char c : collected) chars.push_back(c);
  for (int i = 0; i < steps; ++i) lexer.list(chars, '(', ')');
  return visible(std::string(chars.begin(), chars.end())) + '|' +
         visible({&lexer.lookaheadChar, 1});
}

TEST(LexerMembers, OneStepOfAList) {
  EXPECT_EQ(listed("(1", "", 1), "(|1");
  EXPECT_EQ(listed(" 1", "", 1), "|1");
  EXPECT_EQ(listed(" 1", "(\x01", 1), "(\\x01|1");
  EXPECT_EQ(listed(")1", "(1", 1), "(1)|1");
  EXPECT_EQ(listed("12", "(", 1), "(1|2");
  EXPECT_EQ(listed(" \t\n1", "(1", 1), "(1 |1");
  EXPECT_EQ(listed(" \t1", "(", 1), "(|1");
  EXPECT_EQ(listed("  )", "(1", 1), "(1|)");
  EXPECT_EQ(listed("  1", "(1 ", 1), "(1 |1");
  EXPECT_EQ(listed(",1", "(1", 1), "(1 |1");
  EXPECT_EQ(listed(", 1", "(1", 2), "(1 |1");
  EXPECT_EQ(listed("[1", "(1", 1), "(1 |1");
  EXPECT_EQ(listed("}{1", "(1", 2), "(1 |1");
  EXPECT_EQ(listed(",)", "(1", 1), "(1|)");
  EXPECT_EQ(listed("x", "(1", 1), "(1x|\\xff");
  // At the end of the text, the end mark is consumed.
  EXPECT_EQ(listed("x", "(1", 2), "(1x\\xff|\\xff");
  EXPECT_EQ(listed(" ", "(1", 1), "(1 |\\xff");
}

TEST(LexerMembers, CountsWrapAround) {
  constexpr std::int32_t MAX = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t MIN = std::numeric_limits<std::int32_t>::min();
  StringLexer lexer("aaaa\nb");
  lexer.line = MAX;
  lexer.column = MAX - 1;
  lexer.index = MAX;
  lexer.consume();
  EXPECT_EQ(lexer.index, MIN);
  EXPECT_EQ(lexer.column, MAX);
  lexer.nextToken();
  EXPECT_EQ(lexer.column, MIN + 2);
  lexer.nextToken();
  EXPECT_EQ(lexer.line, MIN);
  EXPECT_EQ(lexer.column, 1);
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
