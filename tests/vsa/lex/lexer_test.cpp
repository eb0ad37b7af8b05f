// Characters to tokens. A row has a text and its tokens with kind, text, line and column. Every row
// is read from each kind of source and by the reference lexer. All results must be equal.
#include "vsa/lex/lexer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/byte_source.h"
#include "tests/support/plain_lexer.h"
#include "tests/support/text.h"
#include "tests/support/token_text.h"
#include "vsa/lex/lexer_source.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::memoryFile;
using vsa_tests::string;
using vsa_tests::text;
using vsa_tests::tokensText;
using vsa_tests::tokenText;
using vsa_tests::visible;
using namespace std::string_literals;
using Type = Token::Type;

std::string fromString(const std::string& bytes) {
  StringLexer lexer(string(bytes));
  return tokensText(lexer);
}

std::string fromFile(const std::string& bytes, std::size_t most) {
  FileLexer lexer(memoryFile(bytes, most));
  return tokensText(lexer);
}

/// A lexer without a window: it buffers only its lookahead and consumes one byte at a time.
class SingleLexer final : public Lexer {
 public:
  explicit SingleLexer(std::string bytes) : bytes_(std::move(bytes)) { lookaheadChar = next(); }
  char consume() override { return step(next()); }

 private:
  char next() {
    if (at_ < bytes_.size()) return bytes_[at_++];
    endSource();
    return END_OF_INPUT;
  }

  std::string bytes_;
  std::size_t at_ = 0;
};

std::string fromSingle(const std::string& bytes) {
  SingleLexer lexer(bytes);
  return tokensText(lexer);
}

std::string fromPlain(const std::string& bytes) {
  vsa_tests::PlainLexer lexer(bytes);
  return tokensText(lexer);
}

void expectTokens(const std::string& bytes, const std::string& tokens) {
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

TEST(LexerTypes, ValuesAreFixed) {
  EXPECT_EQ(static_cast<int>(Type::Eof), 0);
  EXPECT_EQ(static_cast<int>(Type::Invalid), 1);
  EXPECT_EQ(static_cast<int>(Type::Id), 2);
  EXPECT_EQ(static_cast<int>(Type::Int), 3);
  EXPECT_EQ(static_cast<int>(Type::Real), 4);
  EXPECT_EQ(static_cast<int>(Type::Comment), 5);
  EXPECT_EQ(static_cast<int>(Type::Braces), 6);
  EXPECT_EQ(static_cast<int>(Type::Parens), 7);
  EXPECT_EQ(static_cast<int>(Type::Brackets), 8);
  EXPECT_EQ(static_cast<int>(Type::Str), 9);
  EXPECT_EQ(static_cast<int>(Type::Dot), 15);
  EXPECT_EQ(static_cast<int>(Type::Comma), 16);
  EXPECT_EQ(static_cast<int>(Type::Colon), 17);
  EXPECT_EQ(static_cast<int>(Type::Semicolon), 18);
  EXPECT_EQ(static_cast<int>(Type::Quote), 19);
  EXPECT_EQ(static_cast<int>(Type::Slash), 21);
  EXPECT_EQ(static_cast<int>(Type::Backslash), 22);
  EXPECT_EQ(static_cast<int>(Type::Equals), 29);
  EXPECT_EQ(static_cast<int>(Type::Plus), 30);
  EXPECT_EQ(static_cast<int>(Type::Star), 32);
  EXPECT_EQ(static_cast<int>(Type::Pipe), 33);
  EXPECT_EQ(static_cast<int>(Type::True), 35);
  EXPECT_EQ(static_cast<int>(Type::False), 36);
  EXPECT_EQ(static_cast<int>(Type::Null), 37);
  EXPECT_EQ(sizeof(Type), 4U);
}

TEST(Tokens, FieldsAreInOrder) {
  const Token one{Type::Id, "a", 3, 4};
  const auto& [type, characters, line, column, endIndex] = one;
  static_assert(std::is_same_v<decltype(type), const Type>);
  static_assert(std::is_same_v<std::underlying_type_t<Type>, std::int32_t>);
  static_assert(std::is_same_v<decltype(characters), const String>);
  static_assert(std::is_same_v<decltype(line), const std::int32_t>);
  static_assert(std::is_same_v<decltype(column), const std::int32_t>);
  EXPECT_EQ(tokenText(one), "Id<a>3,4");
  EXPECT_EQ(type, Type::Id);
  EXPECT_EQ(text(characters), "a");
  EXPECT_EQ(line, 3);
  EXPECT_EQ(column, 4);
}

TEST(Lexer, Positions) {
  const Row rows[] = {
      {"a = 1;", "Id<a>1,1 Equals<=>1,3 Int<1>1,5 Semicolon<;>1,6 Eof<EOF>1,6"},
      {"lamp", "Id<lamp>1,4 Eof<EOF>1,4"},
      {" a", "Id<a>1,2 Eof<EOF>1,2"},
      {"a\nb", "Id<a>1,1 Id<b>2,1 Eof<EOF>2,1"},
      {"a\n\n\tb\n", "Id<a>1,1 Id<b>3,2 Eof<EOF>3,3"},
      {"a\r\nb", "Id<a>1,1 Id<b>2,1 Eof<EOF>2,1"},
      {"a\rb", "Id<a>1,1 Id<b>1,3 Eof<EOF>1,3"},
      {"\n", "Eof<EOF>1,1"},
      {"\n\n", "Eof<EOF>2,1"},
      {"\n ", "Eof<EOF>2,1"},
      {"a\n}", "Id<a>1,1 Invalid<INVALID TOKEN (1,2): '}'>1,2"},
      {"\"a\nbc\" d", "Str<\"a\\nbc\">2,3 Id<d>2,5 Eof<EOF>2,5"},
      {"(1\n2)", "Parens<(1 2)>2,2 Eof<EOF>2,2"},
      {"[1\n]\n;", "Brackets<[1\\n]>2,1 Semicolon<;>3,1 Eof<EOF>3,1"},
  };
  expectRows(rows);
}

// The lookahead of an empty String is a NUL, which is skipped and counted. An empty file has none.
TEST(Lexer, EmptyTexts) {
  EXPECT_EQ(fromString(""), "Eof<EOF>1,1");
  EXPECT_EQ(fromFile("", 0), "Eof<EOF>1,0");
  EXPECT_EQ(fromPlain(""), "Eof<EOF>1,0");
  vsa_tests::PlainLexer plain("", true);
  EXPECT_EQ(tokensText(plain), fromString(""));
  expectTokens("   ", "Eof<EOF>1,3");
}

TEST(Lexer, SingleCharacters) {
  expectTokens("'*+,./:;=\\|",
               "Quote<'>1,1 Star<*>1,2 Plus<+>1,3 Comma<,>1,4 Dot<.>1,5 Slash</>1,6 Colon<:>1,7 "
               "Semicolon<;>1,8 Equals<=>1,9 Backslash<\\>1,10 Pipe<|>1,11 Eof<EOF>1,11");
}

TEST(Lexer, CharactersThatStartNoToken) {
  for (const char c : ")]}!$%&<>?@^~`"s) {
    const std::string found(1, c);
    expectTokens(found, "Invalid<INVALID TOKEN (1,0): '" + found + "'>1,0");
    expectTokens("a " + found, "Id<a>1,1 Invalid<INVALID TOKEN (1,2): '" + found + "'>1,2");
  }
}

TEST(Lexer, EverySingleByte) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string bytes(1, static_cast<char>(byte));
    EXPECT_EQ(fromString(bytes), fromPlain(bytes)) << byte;
    EXPECT_EQ(fromFile(bytes, 1), fromPlain(bytes)) << byte;
  }
}

TEST(Lexer, UnprintableCharactersAreSkipped) {
  const Row rows[] = {
      {"a\0b"s, "Id<a>1,1 Id<b>1,3 Eof<EOF>1,3"},
      {"\x01\x1f\x7f"
       "a",
       "Id<a>1,4 Eof<EOF>1,4"},
      {"a\v\f\t b", "Id<a>1,1 Id<b>1,6 Eof<EOF>1,6"},
      {"\0"s, "Eof<EOF>1,1"},
  };
  expectRows(rows);
}

TEST(Lexer, Byte0xFFEndsTheInput) {
  const Row rows[] = {
      {"a;\xFF b;", "Id<a>1,1 Semicolon<;>1,2 Eof<EOF>1,2"},
      {"\xFF", "Eof<EOF>1,0"},
      {"ab\xFF"
       "cd",
       "Id<ab>1,2 Eof<EOF>1,2"},
      {"\"a\xFF\"", "Eof<UNEXPECTED EOF while parsing STRING>1,2"},
      {"# a\xFF b", "Comment<# a>1,3 Eof<EOF>1,3"},
      {"(1 \xFF)", "Eof<UNEXPECTED EOF while parsing PARENS>1,3"},
      {"{1\xFF}", "Eof<UNEXPECTED EOF while parsing BRACES>1,2"},
      {"[1\xFF]", "Eof<UNEXPECTED EOF while parsing BRACKETS>1,2"},
      {"1\xFF", "Int<1>1,1 Eof<EOF>1,1"},
  };
  expectRows(rows);
}

TEST(Lexer, DistinguishesTheEndMarkFromTheEndOfTheSource) {
  StringLexer ended(string("ab"));
  tokensText(ended);
  EXPECT_FALSE(ended.endsAtMark());
  StringLexer marked(string("ab\xFF"));
  tokensText(marked);
  EXPECT_TRUE(marked.endsAtMark());
  FileLexer file(memoryFile("ab\xFF", 1));
  tokensText(file);
  EXPECT_TRUE(file.endsAtMark());
  SingleLexer single("ab\xFF");
  tokensText(single);
  EXPECT_TRUE(single.endsAtMark());
}

TEST(Lexer, Identifiers) {
  const Row rows[] = {
      {"sphere1", "Id<sphere1>1,7 Eof<EOF>1,7"},
      {"_a_1", "Id<_a_1>1,4 Eof<EOF>1,4"},
      {"__", "Id<__>1,2 Eof<EOF>1,2"},
      // "b" is a hexadecimal digit, so "-b" is a number.
      {"a-b", "Id<a>1,1 Int<-b>1,3 Eof<EOF>1,3"},
      {"a.b:c[2]", "Id<a>1,1 Dot<.>1,2 Id<b>1,3 Colon<:>1,4 Id<c>1,5 Brackets<[2]>1,8 Eof<EOF>1,8"},
      {"lam\xc3\xa9pe", "Id<lam\\xc3\\xa9pe>1,7 Eof<EOF>1,7"},
      {"\x80\xfe", "Id<\\x80\\xfe>1,2 Eof<EOF>1,2"},
      {"1a_b", "Real<1a>1,2 Id<_b>1,4 Eof<EOF>1,4"},
      {"nan inf", "Id<nan>1,3 Id<inf>1,7 Eof<EOF>1,7"},
      {"e5", "Id<e5>1,2 Eof<EOF>1,2"},
  };
  expectRows(rows);
}

TEST(Lexer, Keywords) {
  const Row rows[] = {
      {"TRUE", "True<true>1,4 Eof<EOF>1,4"},
      {"True_1", "Id<True_1>1,6 Eof<EOF>1,6"},
      {"tRuE false FALSE", "True<true>1,4 False<false>1,10 False<false>1,16 Eof<EOF>1,16"},
      {"null NULL Null", "Null<null>1,4 Null<null>1,9 Null<null>1,14 Eof<EOF>1,14"},
      {"nulls nul _null", "Id<nulls>1,5 Id<nul>1,9 Id<_null>1,15 Eof<EOF>1,15"},
      {"null1 true.false", "Id<null1>1,5 True<true>1,10 Dot<.>1,11 False<false>1,16 Eof<EOF>1,16"},
  };
  expectRows(rows);
}

TEST(Lexer, Numbers) {
  const Row rows[] = {
      {"42", "Int<42>1,2 Eof<EOF>1,2"},
      {"-7", "Int<-7>1,2 Eof<EOF>1,2"},
      {"12u", "Int<12u>1,3 Eof<EOF>1,3"},
      {"12U", "Int<12U>1,3 Eof<EOF>1,3"},
      {"1.5", "Real<1.5>1,3 Eof<EOF>1,3"},
      {"2.", "Real<2.>1,2 Eof<EOF>1,2"},
      {"2f", "Real<2f>1,2 Eof<EOF>1,2"},
      {"2F", "Real<2F>1,2 Eof<EOF>1,2"},
      {"1e5", "Int<1e5>1,3 Eof<EOF>1,3"},
      {"2e-3", "Int<2e-3>1,4 Eof<EOF>1,4"},
      {"1E+5", "Int<1E+5>1,4 Eof<EOF>1,4"},
      {"-inf", "Real<-inf>1,4 Eof<EOF>1,4"},
      {"-NAN", "Real<-NAN>1,4 Eof<EOF>1,4"},
      {"-", "Int<->1,1 Eof<EOF>1,1"},
      {"1-2", "Int<1-2>1,3 Eof<EOF>1,3"},
      {"+1", "Plus<+>1,1 Int<1>1,2 Eof<EOF>1,2"},
      {".5", "Dot<.>1,1 Int<5>1,2 Eof<EOF>1,2"},
      {"-.5", "Real<-.5>1,3 Eof<EOF>1,3"},
      {"0x10", "Int<0>1,1 Id<x10>1,4 Eof<EOF>1,4"},
      {"0b", "Int<0b>1,2 Eof<EOF>1,2"},
      {"1i 1I 1a 1A 1n 1N",
       "Real<1i>1,2 Real<1I>1,5 Real<1a>1,8 Real<1A>1,11 Real<1n>1,14 Real<1N>1,17 Eof<EOF>1,17"},
      {"1cdebu", "Int<1cdebu>1,6 Eof<EOF>1,6"},
      {"1_000", "Int<1>1,1 Id<_000>1,5 Eof<EOF>1,5"},
      {"1\xc3\xa9", "Int<1>1,1 Id<\\xc3\\xa9>1,3 Eof<EOF>1,3"},
      {"1;", "Int<1>1,1 Semicolon<;>1,2 Eof<EOF>1,2"},
  };
  expectRows(rows);
}

TEST(Lexer, Comments) {
  const Row rows[] = {
      {"# exported 2 nodes", "Comment<# exported 2 nodes>1,18 Eof<EOF>1,18"},
      {"#", "Comment<#>1,1 Eof<EOF>1,1"},
      {"#a\nb", "Comment<#a>1,2 Id<b>2,1 Eof<EOF>2,1"},
      {"#a\r\nb", "Comment<#a>1,2 Id<b>2,1 Eof<EOF>2,1"},
      {"#a\rb", "Comment<#a>1,2 Id<b>1,4 Eof<EOF>1,4"},
      {"##\n#", "Comment<##>1,2 Comment<#>2,1 Eof<EOF>2,1"},
      {"a#b;", "Id<a>1,1 Comment<#b;>1,4 Eof<EOF>1,4"},
      {"# \t\"({ \xc3\xa9", "Comment<# \\t\"({ \\xc3\\xa9>1,9 Eof<EOF>1,9"},
      // The text ends at a NUL, the comment does not.
      {"#a\0b c"s, "Comment<#a>1,6 Eof<EOF>1,6"},
  };
  expectRows(rows);
}

TEST(Lexer, Strings) {
  const Row rows[] = {
      {R"("")", R"(Str<"">1,2 Eof<EOF>1,2)"},
      {R"("a")", R"(Str<"a">1,3 Eof<EOF>1,3)"},
      {R"("a\"b")", R"(Str<"a\"b">1,6 Eof<EOF>1,6)"},
      {R"("a\\")", R"(Str<"a\\">1,5 Eof<EOF>1,5)"},
      {R"("a\\"b)", R"(Str<"a\\">1,5 Id<b>1,6 Eof<EOF>1,6)"},
      {R"("\\\"" x)", R"(Str<"\\\"">1,6 Id<x>1,8 Eof<EOF>1,8)"},
      {R"("\"")", R"(Str<"\"">1,4 Eof<EOF>1,4)"},
      {R"("\"" "b")", R"(Str<"\"">1,4 Str<"b">1,8 Eof<EOF>1,8)"},
      {R"("\\\\")", R"(Str<"\\\\">1,6 Eof<EOF>1,6)"},
      {R"("\n\q")", R"(Str<"\n\q">1,6 Eof<EOF>1,6)"},
      {R"("a""b")", R"(Str<"a">1,3 Str<"b">1,6 Eof<EOF>1,6)"},
      {"\"#(;)\"", "Str<\"#(;)\">1,6 Eof<EOF>1,6"},
      {"\"", "Eof<UNEXPECTED EOF while parsing STRING>1,1"},
      {"\"a", "Eof<UNEXPECTED EOF while parsing STRING>1,2"},
      {"\"a\\\"", "Eof<UNEXPECTED EOF while parsing STRING>1,4"},
      {"\"a\\", "Eof<UNEXPECTED EOF while parsing STRING>1,3"},
      {"\"\\\\", "Eof<UNEXPECTED EOF while parsing STRING>1,3"},
      {"a = \"x\n", "Id<a>1,1 Equals<=>1,3 Eof<UNEXPECTED EOF while parsing STRING>1,7"},
      {"\"\xc3\xa9\x01\"", "Str<\"\\xc3\\xa9\\x01\">1,5 Eof<EOF>1,5"},
      // The text ends at a NUL, the string does not.
      {"\"a\0b\" c"s, "Str<\"a>1,5 Id<c>1,7 Eof<EOF>1,7"},
      {"\"\0\""s, "Str<\">1,3 Eof<EOF>1,3"},
  };
  expectRows(rows);
}

TEST(Lexer, ListsAreNormalised) {
  const Row rows[] = {
      {"( 1, 2 ,3 )", "Parens<(1 2 3)>1,11 Eof<EOF>1,11"},
      {"((1,2),(3,4))", "Parens<(1 2 3 4)>1,13 Eof<EOF>1,13"},
      {"{1 [2 3]}", "Braces<{1 2 3}>1,9 Eof<EOF>1,9"},
      {"(-1.5e-3, inf, nan)", "Parens<(-1.5e-3 inf nan)>1,19 Eof<EOF>1,19"},
      {"((1)(2))", "Parens<(12)>1,8 Eof<EOF>1,8"},
      {"(1)(2)", "Parens<(1)>1,3 Parens<(2)>1,6 Eof<EOF>1,6"},
      {"{{1}{2}}", "Braces<{12}>1,8 Eof<EOF>1,8"},
      {"([1][2])", "Parens<(1 2)>1,8 Eof<EOF>1,8"},
      {"((1) (2))", "Parens<(1 2)>1,9 Eof<EOF>1,9"},
      {"()", "Parens<()>1,2 Eof<EOF>1,2"},
      {"{}", "Braces<{}>1,2 Eof<EOF>1,2"},
      {"( )", "Parens<()>1,3 Eof<EOF>1,3"},
      {"(,)", "Parens<()>1,3 Eof<EOF>1,3"},
      {"( , 1 , )", "Parens<(1 )>1,9 Eof<EOF>1,9"},
      {"(1 )", "Parens<(1)>1,4 Eof<EOF>1,4"},
      {"(1,)", "Parens<(1)>1,4 Eof<EOF>1,4"},
      {"(1, )", "Parens<(1 )>1,5 Eof<EOF>1,5"},
      {"(1 ,2)", "Parens<(1 2)>1,6 Eof<EOF>1,6"},
      {"(1,,2)", "Parens<(1 2)>1,6 Eof<EOF>1,6"},
      {"(())", "Parens<()>1,4 Eof<EOF>1,4"},
      {"((1 2)", "Eof<UNEXPECTED EOF while parsing PARENS>1,6"},
      {"(1 2", "Eof<UNEXPECTED EOF while parsing PARENS>1,4"},
      {"(", "Eof<UNEXPECTED EOF while parsing PARENS>1,1"},
      {"{1", "Eof<UNEXPECTED EOF while parsing BRACES>1,2"},
      {"(1}", "Eof<UNEXPECTED EOF while parsing PARENS>1,3"},
      {"(1]2)", "Parens<(1 2)>1,5 Eof<EOF>1,5"},
      {"{1(2)3}", "Braces<{1 2 3}>1,7 Eof<EOF>1,7"},
      {"{((1)(2))}", "Braces<{1 2 }>1,10 Eof<EOF>1,10"},
      {"(1\t\r\n\x01 2)", "Parens<(1 2)>2,4 Eof<EOF>2,4"},
      {"(1\0002)"s, "Parens<(1 2)>1,5 Eof<EOF>1,5"},
      {"(1 x)", "Invalid<INVALID PAREN LIST TOKEN (1,3): 'x'>1,3"},
      {"(x)", "Invalid<INVALID PAREN LIST TOKEN (1,1): 'x'>1,1"},
      {"{1 2 q}", "Invalid<INVALID BRACE LIST TOKEN (1,5): 'q'>1,5"},
      {"{1;}", "Invalid<INVALID BRACE LIST TOKEN (1,2): ';'>1,2"},
      {"(1\n;)", "Invalid<INVALID PAREN LIST TOKEN (1,3): ';'>1,3"},
      {"(\"a\")", "Invalid<INVALID PAREN LIST TOKEN (1,1): '\"'>1,1"},
      {"{1 # two\n}", "Invalid<INVALID BRACE LIST TOKEN (1,3): '#'>1,3"},
      {"(1\xc3\xa9)", "Invalid<INVALID PAREN LIST TOKEN (1,2): '\\xc3'>1,2"},
      {"{.789c 4b}", "Braces<{.789c 4b}>1,10 Eof<EOF>1,10"},
      {"(+1 -U.e)", "Parens<(+1 -U.e)>1,9 Eof<EOF>1,9"},
  };
  expectRows(rows);
}

TEST(Lexer, BracketListsAreKeptAsWritten) {
  const Row rows[] = {
      {"[3]", "Brackets<[3]>1,3 Eof<EOF>1,3"},
      {"[*]", "Brackets<[*]>1,3 Eof<EOF>1,3"},
      {"[]", "Brackets<[]>1,2 Eof<EOF>1,2"},
      {"[ 2 ]", "Brackets<[ 2 ]>1,5 Eof<EOF>1,5"},
      {"[1 2]", "Brackets<[1 2]>1,5 Eof<EOF>1,5"},
      {"[[1]", "Brackets<[[1]>1,4 Eof<EOF>1,4"},
      {"[[1]]", "Brackets<[[1]>1,4 Invalid<INVALID TOKEN (1,4): ']'>1,4"},
      {"[\t1\n]", "Brackets<[\\t1\\n]>2,1 Eof<EOF>2,1"},
      {"[**]", "Brackets<[**]>1,4 Eof<EOF>1,4"},
      {"[x]", "Invalid<INVALID BRACKET LIST TOKEN (1,1): 'x'>1,1"},
      {"[-1]", "Invalid<INVALID BRACKET LIST TOKEN (1,1): '-'>1,1"},
      {"[1.5]", "Invalid<INVALID BRACKET LIST TOKEN (1,2): '.'>1,2"},
      {"[1,2]", "Invalid<INVALID BRACKET LIST TOKEN (1,2): ','>1,2"},
      {"[(1)]", "Invalid<INVALID BRACKET LIST TOKEN (1,1): '('>1,1"},
      {"[\xc3]", "Invalid<INVALID BRACKET LIST TOKEN (1,1): '\\xc3'>1,1"},
      {"[", "Eof<UNEXPECTED EOF while parsing BRACKETS>1,1"},
      {"[1", "Eof<UNEXPECTED EOF while parsing BRACKETS>1,2"},
      // The text ends at a NUL, the list does not.
      {"[1\0]"s, "Brackets<[1>1,4 Eof<EOF>1,4"},
      {"[1\0"s + std::string(2000, ' ') + "]", "Brackets<[1>1,2004 Eof<EOF>1,2004"},
  };
  expectRows(rows);
}

/// The tokens of a text, converted to text after the last one has been read.
std::string keptTokens(Lexer& lexer) {
  std::vector<Token> tokens;
  do {
    tokens.push_back(lexer.nextToken());
  } while (tokens.back().type != Type::Eof && tokens.back().type != Type::Invalid);
  std::string stream;
  for (const Token& token : tokens) stream += (stream.empty() ? "" : " ") + tokenText(token);
  return stream;
}

// Reading more tokens does not change the text of an earlier one.
TEST(Lexer, TokensKeepTheirTexts) {
  std::string bytes;
  for (int i = 0; i < 100; ++i) {
    const std::string number = std::to_string(i);
    bytes += "n" + number + "=" + number + "." + number + " \"s" + number + "\"(" + number + "){" +
             number + ", 5}[" + number + "]-" + number + "#c" + number + "\n";
  }
  for (const std::size_t length : {4094U, 4095U, 4096U, 4097U, 4098U}) {
    for (const char digit : {'1', '2', '3'}) {
      bytes += std::string(length, digit) + ";\"" + std::string(length - 2, digit) + "\";";
    }
  }
  const std::string expected = fromPlain(bytes);
  StringLexer fromText(string(bytes));
  EXPECT_EQ(keptTokens(fromText), expected);
  for (const std::size_t most : {0UL, 1UL, 100UL}) {
    FileLexer fromFile(memoryFile(bytes, most));
    EXPECT_EQ(keptTokens(fromFile), expected) << most;
  }
}

TEST(Lexer, ManyNamesAndLongNames) {
  std::string bytes;
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 3000; ++i) bytes += "n" + std::to_string(i) + ' ';
    for (std::size_t length = 1; length < 130; ++length) {
      bytes += std::string(length, 'x') + ' ' + std::string(length - 1, 'x') + "y ";
    }
  }
  const std::string expected = fromPlain(bytes);
  StringLexer fromText(string(bytes));
  EXPECT_EQ(keptTokens(fromText), expected);
  FileLexer fromFile(memoryFile(bytes, 1));
  EXPECT_EQ(keptTokens(fromFile), expected);
}

// --- positions in texts with many line feeds ---

/// Each token as "kind line,column,index".
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

/// The bytes between the first and the last byte of a token that begins with `form`, with line
/// feeds.
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

// The expected line and column of the last byte are counted one byte at a time.
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

TEST(Lexer, LongTokens) {
  const std::string digits(100000, '7');
  expectTokens("# " + digits + "\na", "Comment<# " + digits + ">1,100002 Id<a>2,1 Eof<EOF>2,1");
  expectTokens('"' + digits + "\\\"" + digits + "\" a",
               "Str<\"" + digits + "\\\"" + digits + "\">1,200004 Id<a>1,200006 Eof<EOF>1,200006");
  expectTokens('#' + digits, "Comment<#" + digits + ">1,100001 Eof<EOF>1,100001");
  expectTokens("x" + digits, "Id<x" + digits + ">1,100001 Eof<EOF>1,100001");
  expectTokens(digits, "Int<" + digits + ">1,100000 Eof<EOF>1,100000");
  std::string list = "{";
  std::string normal = "{";
  for (int i = 0; i < 80000; ++i) {
    list += "1.25 ,\n  -3,";
    normal += i == 0 ? "1.25 -3" : " 1.25 -3";
  }
  expectTokens(list + "4}", "Braces<" + normal + " 4}>80001,7 Eof<EOF>80001,7");
  expectTokens(list + "x" + list + "4}\na",
               "Invalid<INVALID BRACE LIST TOKEN (80001,5): 'x'>80001,5");
}

// The lexer processes runs of bytes, the reference lexer one character at a time.
TEST(Lexer, MatchesTheReferenceLexerOnRandomTexts) {
  const std::string alphabets[] = {
      "a1.;= \n\"\\#(){}[],-+e_|*\t"s,
      "(){}[], 1-.e5\n\t"s,
      "{1234567890 ,-.e\n"s,
      "\"\\\\\\a\n\xFF\0"s,
      "nulltrefas TRUE_1"s,
  };
  std::mt19937 random(20240101);
  for (int round = 0; round < 5000; ++round) {
    const std::string& alphabet = alphabets[static_cast<std::size_t>(round) % std::size(alphabets)];
    std::string bytes = round % 2 == 0 ? "" : "{";
    const std::size_t length = 1 + random() % (round % 10 == 0 ? 300 : 40);
    for (std::size_t i = 0; i < length; ++i) bytes += alphabet[random() % alphabet.size()];
    if (round % 97 == 0) bytes[random() % bytes.size()] = static_cast<char>(random() % 256);
    const std::string expected = fromPlain(bytes);
    ASSERT_EQ(fromString(bytes), expected) << visible(bytes);
    ASSERT_EQ(fromFile(bytes, 1), expected) << visible(bytes);
    ASSERT_EQ(fromSingle(bytes), expected) << visible(bytes);
    ASSERT_EQ(fromFile(bytes, 1 + random() % 40), expected) << visible(bytes);
  }
}

// --- direct calls of members ---

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

// The first character is not checked: only nextToken checks it.
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
  // A text ends at its first NUL.
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

// The name of the list may be empty: the message keeps both blanks.
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
  // At the end, the end mark is consumed.
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
