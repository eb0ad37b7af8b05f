// Tests of long tokens and of random texts.
#include <cstddef>
#include <iterator>
#include <random>
#include <string>

#include "tests/vsa/lex/lexer_rows.h"

namespace zn::korvo_sdk::impl {
namespace {

using namespace lexer_tests;
using namespace std::string_literals;

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

// The lexer processes many bytes at a time, and the reference lexer one character at a time.
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

}  // namespace
}  // namespace zn::korvo_sdk::impl
