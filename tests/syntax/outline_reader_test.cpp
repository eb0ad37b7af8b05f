// Tests of OutlineReader: it finds the same statements as StatementReader in every case and example
// and in random texts, and finds the parts of a statement.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include <vsa/outline.h>
#include <vsa/syntax.h>
#include "tests/support/text.h"
#include "tests/support/text_files.h"

namespace {

using vsa::StatementKind;
using vsa::StatementOutline;
using vsa::SyntaxKind;
using vsa::SyntaxStatement;
using Text = std::string_view;

Text between(Text first, Text last) {
  return {first.data(), static_cast<std::size_t>(last.data() + last.size() - first.data())};
}

// Computes the outline of a statement from its tokens.
StatementOutline outlineOf(const SyntaxStatement& statement) {
  const auto& tokens = statement.tokens;
  StatementOutline out;
  out.kind = statement.kind;
  out.text = between(tokens.front().text, tokens.back().text);
  if (out.kind == StatementKind::Malformed || out.kind == StatementKind::Comment) return out;
  if (statement.valueIndex == 0) {
    out.type = tokens[0].text;
    out.node = tokens[1].text;
    return out;
  }
  const bool isConnection = out.kind == StatementKind::Connection;
  const std::size_t first = tokens[0].is('.') ? 1 : 2;
  const std::size_t last = statement.valueIndex - (isConnection ? 3 : 2);
  if (first == 2) out.node = tokens[0].text;
  out.path = between(tokens[first].text, tokens[last].text);
  out.isPlainPath = first == last;
  const std::size_t value = statement.valueIndex, end = tokens.size() - 2;
  out.valueKind = tokens[value].kind;
  out.word = tokens[value].text;
  out.value = between(tokens[value].text, tokens[end].text);
  if (!isConnection && end > value) out.list = tokens[end].text;
  if (!isConnection && end == value + 2) out.brackets = tokens[value + 1].text;
  return out;
}

void expectSame(const StatementOutline& found, const StatementOutline& expected) {
  EXPECT_STREQ(name(found.kind), name(expected.kind));
  EXPECT_EQ(found.text.data(), expected.text.data());
  EXPECT_EQ(found.text, expected.text);
  EXPECT_EQ(found.type, expected.type);
  EXPECT_EQ(found.node, expected.node);
  EXPECT_EQ(found.path, expected.path);
  EXPECT_EQ(found.isPlainPath, expected.isPlainPath);
  EXPECT_EQ(found.valueKind, expected.valueKind);
  EXPECT_EQ(found.value, expected.value);
  EXPECT_EQ(found.word, expected.word);
  EXPECT_EQ(found.brackets, expected.brackets);
  EXPECT_EQ(found.list, expected.list);
}

void expectElements(const StatementOutline& found) {
  if (found.plainElements == 0) return;
  EXPECT_EQ(found.list.find_first_of(",\n\t", 1), Text::npos);
  vsa::ListReader list(found.list);
  std::size_t count = 0;
  for (vsa::ListPart part; list.next(part); ++count) EXPECT_FALSE(part.continues);
  EXPECT_EQ(found.plainElements, count);
}

// Expects that both readers find the same statements, and returns their number.
int expectSameStatements(const std::string& content) {
  const std::string text(content);  // no spare capacity, so that ASan detects a read past the end
  vsa::StatementReader statements{Text(text)};
  vsa::OutlineReader outlines(text);
  SyntaxStatement statement;
  StatementOutline outline;
  int count = 0;
  for (; statements.next(statement); ++count) {
    EXPECT_TRUE(outlines.next(outline));
    expectSame(outline, outlineOf(statement));
    expectElements(outline);
    if (testing::Test::HasFailure()) return count;
  }
  EXPECT_FALSE(outlines.next(outline));
  EXPECT_FALSE(outlines.next(outline));
  return count;
}

TEST(OutlineReaderTest, AgreesOnFiles) {
  int count = 0;
  for (const auto& text : vsa_tests::textFiles({"tests/cases", "tests/regressions", "examples"})) {
    SCOPED_TRACE(text.string());
    count += expectSameStatements(vsa_tests::contentOf(text));
    if (HasFailure()) return;
  }
  EXPECT_GT(count, 1000);
}

// Returns a random statement of any kind. Its pieces may be in any order.
std::string randomStatement(std::mt19937& random) {
  constexpr Text PIECES[] = {
      "node",  ".",    "input",    " = ",     "[*]",    "[0]",    "1",      "-2.5e3", "\"a\\\"b\"",
      "true",  "null", "vec3",     "(1 2 3)", "(1, 2)", "(1 2 )", "{1 2}",  "{}",     "float",
      "[2]",   ";",    ":",        "|",       "=",      " ",      "\n",     "\t",     "# c\n",
      "!",     "\x7F", "\xC3\xA4", "remove",  "define", "with",   "\"\n\"", "()",     "'",
      "{1 x}", "[12]", "[]",       "[1 ]",    "[**]"};
  constexpr Text STARTS[] = {"n.i = ", ".i = ",     "n.i[*].m = ", "n.i |= ",   "t n",
                             "",       "n . i =",   "null.i = ",   "n.true = ", "n.i = rgba",
                             "n.i",    "n.i[*] = ", ".i[0] = ",    "n.i[] = 1", "n.i[7"};
  std::string text(STARTS[random() % std::size(STARTS)]);
  for (auto length = random() % 6; length > 0; --length) {
    text += PIECES[random() % std::size(PIECES)];
  }
  return random() % 4 == 0 ? text : text + ';';
}

TEST(OutlineReaderTest, AgreesOnRandomTexts) {
  std::mt19937 random(14);
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (auto count = 1 + random() % 4; count > 0; --count) text += randomStatement(random);
    if (i % 50 == 0) text.insert(random() % (text.size() + 1), 1, '\xFF');
    if (i % 7 == 0) text.resize(random() % (text.size() + 1));
    SCOPED_TRACE(text);
    expectSameStatements(text);
    if (HasFailure()) return;
  }
}

TEST(OutlineReaderTest, AgreesOnEveryWayToWriteTheEqualsSign) {
  constexpr Text CHARACTERS = " =|.;1";
  for (const char a : CHARACTERS) {
    for (const char b : CHARACTERS) {
      for (const char c : CHARACTERS) {
        for (const Text path : {"n.i", "n.i[*]", ".i", ".i[0]"}) {
          const std::string text = std::string(path) + a + b + c + "1; t n;";
          SCOPED_TRACE(text);
          expectSameStatements(text);
        }
      }
    }
  }
}

// Both readers deliver a long statement in the same parts. A path may be longer than a part.
TEST(OutlineReaderTest, AgreesOnLongStatements) {
  constexpr int MANY = 40000;
  std::string path = "n.i", words, numbers;
  for (int i = 0; i < MANY; ++i) {
    path += ".i";
    words += "w ";
    numbers += i % 9 == 0 ? "1  " : "1 ";
  }
  for (const std::string& text :
       {path + " = 1; n.i = 2;", path + path + words, words + words + words + "; # c\nt n;",
        words + words + "# c\n" + words + "; t n;", "n.i |= " + path + ';',
        "n.i = int32[9] {" + numbers + "};"}) {
    EXPECT_GT(expectSameStatements(text), 0);
  }
}

// A comment at the start of a further part is the whole part.
TEST(OutlineReaderTest, AgreesOnAPartThatBeginsWithAComment) {
  std::string text;
  for (int i = 0; i < 65536; ++i) text += "w ";
  EXPECT_EQ(expectSameStatements(text + "# c\nt n; u o;"), 4);
}

TEST(OutlineReaderTest, Parts) {
  vsa::OutlineReader statements("box.keys[0].time=vec3 (1 2 3); .image = rgba8[2] {.4A};");
  StatementOutline statement;
  EXPECT_EQ(statement.plainElements, 0U);
  ASSERT_TRUE(statements.next(statement));
  EXPECT_EQ(statement.kind, StatementKind::Assignment);
  EXPECT_EQ(statement.node, "box");
  EXPECT_EQ(statement.path, "keys[0].time");
  EXPECT_FALSE(statement.isPlainPath);
  EXPECT_EQ(statement.valueKind, SyntaxKind::Word);
  EXPECT_EQ(statement.value, "vec3 (1 2 3)");
  EXPECT_EQ(statement.word, "vec3");
  EXPECT_EQ(statement.list, "(1 2 3)");
  EXPECT_EQ(statement.plainElements, 3U);
  ASSERT_TRUE(statements.next(statement));
  EXPECT_EQ(statement.node, "");
  EXPECT_EQ(statement.path, "image");
  EXPECT_TRUE(statement.isPlainPath);
  EXPECT_EQ(statement.brackets, "[2]");
  EXPECT_EQ(statement.list, "{.4A}");
}

TEST(OutlineReaderTest, EndsAtTheEndMark) {
  StatementOutline statement;
  EXPECT_FALSE(vsa::OutlineReader("").next(statement));
  EXPECT_FALSE(vsa::OutlineReader({}).next(statement));
  vsa::OutlineReader statements("t n;\xFF t m;");
  EXPECT_TRUE(statements.next(statement));
  EXPECT_FALSE(statements.next(statement));
}

}  // namespace
