// Tests of the lexer. A row has a text and its tokens with kind, text, line and column. Each text
// is read from each kind of source and by the reference lexer. All results must be equal.
#include "vsa/lex/lexer.h"

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/vsa/lex/lexer_rows.h"

namespace zn::korvo_sdk::impl {
namespace {

using namespace lexer_tests;
using namespace std::string_literals;
using vsa_tests::text;
using vsa_tests::tokenText;
using Type = Token::Type;

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

// The lookahead of an empty String is a NUL, which is skipped but counts as a column. An empty file
// has no such NUL.
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
      // "-b" is a number, because "b" is a hexadecimal digit.
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
      // The text of the token ends at a NUL, but the comment continues.
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
      // The text of the token ends at a NUL, but the string continues.
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
      // The text of the token ends at a NUL, but the list continues.
      {"[1\0]"s, "Brackets<[1>1,4 Eof<EOF>1,4"},
      {"[1\0"s + std::string(2000, ' ') + "]", "Brackets<[1>1,2004 Eof<EOF>1,2004"},
  };
  expectRows(rows);
}

/// Reads all tokens of a text, and then returns them as text.
std::string keptTokens(Lexer& lexer) {
  std::vector<Token> tokens;
  do {
    tokens.push_back(lexer.nextToken());
  } while (tokens.back().type != Type::Eof && tokens.back().type != Type::Invalid);
  std::string stream;
  for (const Token& token : tokens) stream += (stream.empty() ? "" : " ") + tokenText(token);
  return stream;
}

// The text of a token does not change when further tokens are read.
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
    bytes += "begin_of1the_last begin_of2the_last ";
  }
  const std::string expected = fromPlain(bytes);
  StringLexer fromText(string(bytes));
  EXPECT_EQ(keptTokens(fromText), expected);
  FileLexer fromFile(memoryFile(bytes, 1));
  EXPECT_EQ(keptTokens(fromFile), expected);
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
