// Tests of input paths as tokens: path(), its suffixes, and collapse().
#include <gtest/gtest.h>

#include <string>

#include "tests/support/parser_fixture.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::PrimedParser;
using vsa_tests::text;

/// Returns the tokens of the path and then the remaining tokens, with blanks between them. Returns
/// "-" instead of a path if there is none.
std::string pathOf(const std::string& bytes) {
  PrimedParser primed(bytes);
  const std::string before = primed.ahead();
  ds::Vector<Token> path;
  if (!primed.parser.path(path)) {
    EXPECT_EQ(primed.ahead(), before) << bytes;
    EXPECT_EQ(path.size, 0U) << bytes;
    return "-";
  }
  std::string texts;
  for (const Token& token : path) texts += text(token.text) + ' ';
  return texts + "then " + primed.ahead();
}

struct PathRow {
  const char* text;
  const char* path;
};

TEST(Path, Heads) {
  constexpr PathRow ROWS[] = {
      {"sphere1.radius = 2", "sphere1 . radius then = 2 EOF"},
      {".radius = 2", ". radius then = 2 EOF"},
      {"a . b;", "a . b then ; EOF EOF"},
      {"a.b", "a . b then EOF EOF EOF"},
      {"true_.b", "true_ . b then EOF EOF EOF"},
      {"a", "-"},
      {"a.", "-"},
      {"a.[1]", "-"},
      {"a[1].b", "-"},
      {".", "-"},
      {"..a", "-"},
      {".1", "-"},
      {"a.1", "-"},
      {"a.null", "-"},
      {"null.a", "-"},
      {"\"a\".b", "-"},
      {"", "-"},
  };
  for (const PathRow& row : ROWS) EXPECT_EQ(pathOf(row.text), row.path) << row.text;
}

TEST(Path, Suffixes) {
  constexpr PathRow ROWS[] = {
      {"n.in[2] = 1", "n . in [2] then = 1 EOF"},
      {"n.in.x = 1", "n . in . x then = 1 EOF"},
      {"n.in[0].x[1];", "n . in [0] . x [1] then ; EOF EOF"},
      {".in[*][]", ". in [*] [] then EOF EOF EOF"},
      {"n.a.b.c.d[1][2][3].e", "n . a . b . c . d [1] [2] [3] . e then EOF EOF EOF"},
      {"n.in. = 1", "n . in then . = 1"},
      {"n.in.5", "n . in then . 5 EOF"},
      {"n.in[ 2 ] x", "n . in [ 2 ] then x EOF EOF"},
      {"n.in(1)", "n . in then (1) EOF EOF"},
  };
  for (const PathRow& row : ROWS) EXPECT_EQ(pathOf(row.text), row.path) << row.text;
}

TEST(Path, TokensKeepTheirPositions) {
  PrimedParser primed("ab.\n cd[1]");
  ds::Vector<Token> path;
  ASSERT_TRUE(primed.parser.path(path));
  EXPECT_EQ(vsa_tests::tokenText(path[2]), "Id<cd>2,3");
  EXPECT_EQ(vsa_tests::tokenText(primed.parser.current), "Brackets<[1]>2,6");
}

TEST(Path, AppendsToTheVector) {
  PrimedParser primed("a.b");
  ds::Vector<Token> path;
  path.push_back(Token());
  ASSERT_TRUE(primed.parser.path(path));
  EXPECT_EQ(path.size, 4U);
}

TEST(Path, Arrayattr) {
  ds::Vector<Token> path;
  EXPECT_TRUE(PrimedParser("[1]").parser.arrayattr(path));
  EXPECT_EQ(text(path[0].text), "[1]");
  for (const char* const bytes : {".a", "a", "(1)", "{1}", ""}) {
    PrimedParser other(bytes);
    EXPECT_FALSE(other.parser.arrayattr(path)) << bytes;
    EXPECT_EQ(path.size, 1U);
  }
}

TEST(Path, Scalarattr) {
  ds::Vector<Token> path;
  EXPECT_TRUE(PrimedParser(".a").parser.scalarattr(path));
  ASSERT_EQ(path.size, 2U);
  EXPECT_EQ(text(path[0].text) + text(path[1].text), ".a");
  for (const char* const bytes : {".", ". =", ".1", ".[1]", ".null", "a", "..a"}) {
    PrimedParser other(bytes);
    const std::string before = other.ahead();
    EXPECT_FALSE(other.parser.scalarattr(path)) << bytes;
    EXPECT_EQ(other.ahead(), before);
    EXPECT_EQ(path.size, 2U);
  }
}

TEST(Collapse, JoinsTheTexts) {
  for (const char* const bytes : {"sphere1.radius[2]", ".a[*].b", "a.b"}) {
    PrimedParser primed(bytes);
    ds::Vector<Token> path;
    ASSERT_TRUE(primed.parser.path(path));
    EXPECT_EQ(text(primed.parser.collapse(path)), bytes);
  }
  EXPECT_EQ(text(VsaParser().collapse(ds::Vector<Token>())), "");
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
