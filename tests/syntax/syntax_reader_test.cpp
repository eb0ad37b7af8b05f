// Tests of SyntaxReader, ListReader and StatementReader: kinds, ranges, pieces, and invalid texts.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <vsa/syntax.h>
#include "tests/syntax/syntax_source.h"

namespace {

using vsa::StatementKind;
using vsa::SyntaxKind;
using vsa_tests::StepSource;

std::string kindsOf(std::string_view text) {
  vsa::SyntaxReader reader(text);
  std::string kinds;
  while (true) {
    const vsa::SyntaxToken token = reader.next();
    if (token.kind == SyntaxKind::EndOfText) return kinds;
    kinds += (kinds.empty() ? "" : " ") + std::string(name(token.kind));
  }
}

TEST(SyntaxReaderTest, Kinds) {
  EXPECT_EQ(kindsOf("name TRUE false Null 1 1.5 \"s\" # c"),
            "word true false null integer real string comment");
  EXPECT_EQ(kindsOf("(1) {2} [3] ; :"), "parens braces brackets punctuation punctuation");
  EXPECT_EQ(kindsOf(""), "");
}

TEST(SyntaxReaderTest, GoesOnAfterAnInvalidToken) {
  EXPECT_EQ(kindsOf("a ! b"), "word invalid word");
  EXPECT_EQ(kindsOf("(1 x y) ;"), "invalid word invalid punctuation");
  EXPECT_EQ(kindsOf("[x] ;"), "invalid invalid punctuation");
}

TEST(SyntaxReaderTest, NamesWhatTheEndCutsOff) {
  for (const char* text : {"\"abc", "\"abc\\", "(1 2", "{", "[3"}) {
    EXPECT_EQ(kindsOf(text), "unterminated") << text;
  }
}

TEST(SyntaxReaderTest, ATokenIsWholeByDefault) {
  const vsa::SyntaxToken token;
  EXPECT_EQ(token.kind, SyntaxKind::EndOfText);
  EXPECT_TRUE(token.isFirst);
  EXPECT_TRUE(token.isLast);
}

TEST(SyntaxReaderTest, EndsAtTheEndMark) {
  vsa::SyntaxReader reader("a\xFF b");
  EXPECT_EQ(reader.next().text, "a");
  EXPECT_EQ(reader.next().kind, SyntaxKind::EndOfText);
  EXPECT_EQ(reader.next().kind, SyntaxKind::EndOfText);
  EXPECT_TRUE(reader.endedAtMark());
  vsa::SyntaxReader plain("a");
  plain.next();
  plain.next();
  EXPECT_FALSE(plain.endedAtMark());
}

// Whether a reader of `text` skips its first token if that is the first token of `other`. If not,
// the reader must return its first token afterwards.
bool skips(std::string_view text, std::string_view other) {
  vsa::SyntaxReader reader(text), again(text), otherReader(other);
  if (reader.skipIf(otherReader.next())) return true;
  const vsa::SyntaxToken found = reader.next(), expected = again.next();
  EXPECT_EQ(found.text, expected.text);
  EXPECT_EQ(found.range, expected.range);
  EXPECT_EQ(found.lineFeedsBefore, expected.lineFeedsBefore);
  return false;
}

TEST(SyntaxReaderTest, SkipsTheSameToken) {
  for (const std::string token : {"name", "nul\xE9", "true", "12", "-1.5e3", "\"a\nb\"", "(1 2)",
                                  "{1\n2}", "[3]", ";", "."}) {
    EXPECT_TRUE(skips("\n " + token + " b", token)) << token;
    EXPECT_TRUE(skips(token + "=", token)) << token;
    EXPECT_TRUE(skips(token + "#", token)) << token;
  }
  EXPECT_TRUE(skips("# a\nb", "# a"));
  EXPECT_TRUE(skips("# a\rb", "# a"));
}

TEST(SyntaxReaderTest, SkipsNoLongerToken) {
  EXPECT_FALSE(skips("\nname", "nam"));
  EXPECT_FALSE(skips("name_ ", "name"));
  EXPECT_FALSE(skips("name\xE9 ", "name"));
  EXPECT_FALSE(skips("true1 ", "true"));
  EXPECT_FALSE(skips("12 ", "1"));
  EXPECT_FALSE(skips("1f ", "1"));
  EXPECT_FALSE(skips("1.5- ", "1.5"));
  EXPECT_FALSE(skips("# a \n", "# a"));
  EXPECT_TRUE(skips("1x", "1"));
  EXPECT_TRUE(skips("a-", "a"));
}

TEST(SyntaxReaderTest, SkipsNoOtherToken) {
  EXPECT_FALSE(skips("\n\n b ", "a"));
  EXPECT_FALSE(skips("(1 2) ", "(1  2)"));
  EXPECT_FALSE(skips("\"a\" ", "\"b\""));
  EXPECT_FALSE(skips("", "a"));
  EXPECT_FALSE(skips("a", ""));
}

TEST(SyntaxReaderTest, DoesNotSkipWhatMayContinue) {
  EXPECT_FALSE(skips("a", "a"));  // the end of the text
  EXPECT_FALSE(skips("(1 2) ", "(1"));
  EXPECT_FALSE(skips("\"a\" ", "\"a"));
  EXPECT_FALSE(skips("! a", "!"));
}

// A token in pieces is neither skipped, nor is a part of it.
TEST(SyntaxReaderTest, SkipsNoPieces) {
  const std::string longList = "(" + std::string(1 << 20, '1') + ") ";
  StepSource source(longList, 1 << 16), other(longList, 1 << 16);
  vsa::SyntaxReader reader(source), otherReader(other);
  for (vsa::SyntaxToken token = otherReader.next(); !token.isLast; token = otherReader.next()) {
    EXPECT_FALSE(reader.skipIf(token));
    EXPECT_EQ(reader.next().text, token.text);
  }
  EXPECT_FALSE(reader.skipIf(vsa::SyntaxReader("1 ").next()));
}

// A reader that skips all tokens it can has the same tokens and positions as one that skips none.
TEST(SyntaxReaderTest, SkipsWithTheSamePositions) {
  const std::string text =
      "# c\n\nt  a:\n  .b = \"x\ny\";\n\n  .c = vec3(1\n2 3); # d\r.e |= f.g;\n t h; "
      "i[2] = null;\n";
  for (std::size_t step = 1; step <= text.size(); ++step) {
    StepSource source(text, step), other(text, step);
    vsa::SyntaxReader reader(source), otherReader(other);
    std::size_t read = 0;
    while (true) {
      const vsa::SyntaxToken token = otherReader.next();
      if (reader.skipIf(token)) continue;
      const vsa::SyntaxToken found = reader.next();
      EXPECT_EQ(found.text, token.text) << step;
      EXPECT_EQ(found.range, token.range) << step;
      EXPECT_EQ(found.lineFeedsBefore, token.lineFeedsBefore) << step;
      ++read;
      if (token.kind == SyntaxKind::EndOfText) break;
    }
    if (step == text.size()) {
      EXPECT_EQ(read, 2U) << "the first token, which is not in the buffer yet, and EndOfText";
    }
  }
}

TEST(SyntaxReaderTest, Positions) {
  vsa::SyntaxReader reader("ab\n\n  \"x\ny\" z");
  EXPECT_EQ(reader.next().lineFeedsBefore, 0U);
  const vsa::SyntaxToken string = reader.next();
  EXPECT_EQ(string.lineFeedsBefore, 2U);
  EXPECT_EQ(string.range.begin, (vsa::TextPosition{6, 3, 3}));
  EXPECT_EQ(string.range.end, (vsa::TextPosition{11, 4, 3}));
  EXPECT_EQ(reader.next().range.begin, (vsa::TextPosition{12, 4, 4}));
}

TEST(SyntaxReaderTest, DeliversALongTokenInPieces) {
  const std::string digits(1000000, '1');
  const std::string text = "{" + digits + "} ;";
  StepSource source(text, 4096);
  vsa::SyntaxReader reader(source);
  std::string joined;
  int pieces = 0;
  for (vsa::SyntaxToken piece = reader.next();; piece = reader.next()) {
    EXPECT_EQ(piece.isFirst, pieces == 0);
    EXPECT_EQ(piece.range.begin.offset, joined.size());
    joined += piece.text;
    ++pieces;
    if (piece.isLast) break;
  }
  EXPECT_EQ(joined, "{" + digits + "}");
  EXPECT_GT(pieces, 3);
  EXPECT_TRUE(reader.next().is(';'));
}

TEST(SyntaxReaderTest, PassesOnWhatTheSourceThrows) {
  struct Broken final : vsa::Source {
    std::size_t read(std::span<char>) override { throw 7; }
  } source;
  vsa::SyntaxReader reader(source);
  EXPECT_THROW(reader.next(), int);
}

// A reader that was moved continues where the other one stopped.
TEST(SyntaxReaderTest, ContinuesAfterAMove) {
  vsa::SyntaxReader first("a b c");
  EXPECT_EQ(first.next().text, "a");
  vsa::SyntaxReader second(std::move(first));
  EXPECT_EQ(second.next().text, "b");
  vsa::SyntaxReader third("x");
  third = std::move(second);
  const vsa::SyntaxToken last = third.next();
  EXPECT_EQ(last.text, "c");
  EXPECT_EQ(last.range.begin.offset, 4U);
}

std::vector<std::string> elementsOf(std::string_view text) {
  std::vector<std::string> elements;
  vsa::ListReader list(text);
  for (vsa::ListPart part; list.next(part);) {
    if (part.continues) {
      elements.back() += part.text;
    } else {
      elements.emplace_back(part.text);
    }
  }
  if (list.endsInBlank()) elements.emplace_back();
  return elements;
}

TEST(ListReaderTest, Elements) {
  using Texts = std::vector<std::string>;
  EXPECT_EQ(elementsOf("(1 2,3)"), (Texts{"1", "2", "3"}));
  EXPECT_EQ(elementsOf("((1)(2))"), (Texts{"12"}));
  EXPECT_EQ(elementsOf("{1 [2 3]}"), (Texts{"1", "2", "3"}));
  EXPECT_EQ(elementsOf("(1 )"), (Texts{"1"}));
  EXPECT_EQ(elementsOf("(1 , )"), (Texts{"1", ""}));
  EXPECT_EQ(elementsOf("()"), Texts{});
  EXPECT_EQ(elementsOf(""), Texts{});
}

// A statement of more than 65536 tokens is delivered in parts, and so is one whose tokens have more
// than 16 MiB. A source and a text in memory have the same parts of so many tokens.
TEST(StatementReaderTest, DeliversALongStatementInParts) {
  std::string text;
  for (int i = 0; i < 70000; ++i) text += "a ";
  text += "; b c;";
  StepSource source(text, 4096);
  vsa::StatementReader ofSource(source);
  vsa::StatementReader ofText{std::string_view(text)};
  vsa::SyntaxStatement fromSource, fromText;
  for (const std::size_t tokens : {65536U, 4465U, 3U}) {
    ASSERT_TRUE(ofSource.next(fromSource));
    ASSERT_TRUE(ofText.next(fromText));
    EXPECT_EQ(fromSource.tokens.size(), tokens);
    EXPECT_EQ(fromText.tokens.size(), tokens);
    EXPECT_EQ(fromSource.kind, fromText.kind);
  }
  EXPECT_FALSE(ofSource.next(fromSource));
}

TEST(StatementReaderTest, DeliversAStatementOfManyBytesInParts) {
  const std::string name(100'000, 'a');
  std::string text;
  for (int i = 0; i < 200; ++i) text += name + ' ';
  text += ';';
  StepSource source(text, 65536);
  vsa::StatementReader reader(source);
  vsa::SyntaxStatement statement;
  std::size_t tokens = 0;
  int parts = 0;
  for (; reader.next(statement); ++parts) tokens += statement.tokens.size();
  EXPECT_EQ(parts, 2);
  EXPECT_EQ(tokens, 201U);
}

StatementKind kindOf(std::string_view text) {
  vsa::StatementReader reader(text);
  vsa::SyntaxStatement statement;
  EXPECT_TRUE(reader.next(statement)) << text;
  return statement.kind;
}

TEST(StatementReaderTest, Kinds) {
  EXPECT_EQ(kindOf("# c"), StatementKind::Comment);
  EXPECT_EQ(kindOf("sphere ball;"), StatementKind::Declaration);
  EXPECT_EQ(kindOf("sphere ball:"), StatementKind::Block);
  EXPECT_EQ(kindOf("REMOVE ball;"), StatementKind::Remove);
  EXPECT_EQ(kindOf("Define x;"), StatementKind::Define);
  for (const char* text :
       {"a.b = 1;", ".b = null;", "a.b[0].c = vec3(1 2 3);", "a.b = float[1] {1};", "a.b = c;",
        ".b = \"s\";", "a.b = TRUE;", "a.b = [];", "a.b[*] = {};"}) {
    EXPECT_EQ(kindOf(text), StatementKind::Assignment) << text;
  }
  for (const char* text : {"a.b |= null;", "a.b | = .c;", ".b |= c.d[1].e;"}) {
    EXPECT_EQ(kindOf(text), StatementKind::Connection) << text;
  }
  for (const char* text : {"a;", "a.b = ;", "a.b = 1", "a.b |= c;", "1;", "a.b = 1 2;", "a b c;",
                           "a.b # c\n = 1;", "a.b = vec3(;", "a.b := 1;", "true b;"}) {
    EXPECT_EQ(kindOf(text), StatementKind::Malformed) << text;
  }
}

TEST(StatementReaderTest, SameStatementsFromASource) {
  const std::string text = "# c\nsphere ball: .radius = 1.0;\nball.at = vec3( 1, 2 3 ); rest";
  for (const std::size_t step : {1U, 3U, 1000U}) {
    StepSource source(text, step);
    vsa::StatementReader stream(source), memory(text);
    vsa::SyntaxStatement a, b;
    while (memory.next(a)) {
      ASSERT_TRUE(stream.next(b));
      EXPECT_EQ(a.kind, b.kind);
      EXPECT_EQ(a.range, b.range);
      EXPECT_EQ(a.valueIndex, b.valueIndex);
      ASSERT_EQ(a.tokens.size(), b.tokens.size());
      for (std::size_t i = 0; i < a.tokens.size(); ++i) {
        EXPECT_EQ(a.tokens[i].text, b.tokens[i].text);
      }
    }
    EXPECT_FALSE(stream.next(b));
  }
}

TEST(StatementReaderTest, KeepsTheFirstPieceOfALongToken) {
  const std::string text = "a.b = float[1] {" + std::string(2000000, '1') + "};";
  StepSource source(text, 65536);
  vsa::StatementReader reader(source);
  vsa::SyntaxStatement statement;
  ASSERT_TRUE(reader.next(statement));
  EXPECT_EQ(statement.kind, StatementKind::Assignment);
  EXPECT_EQ(statement.valueIndex, 4U);
  const vsa::SyntaxToken& list = statement.tokens[6];
  EXPECT_FALSE(list.isLast);
  EXPECT_LE(list.text.size(), 262144U);
  EXPECT_EQ(list.text.front(), '{');
  EXPECT_EQ(list.range.end.offset, text.size() - 1);
}

TEST(StatementReaderTest, DeliversAnEndlessStatementInParts) {
  std::string text = "n.a";
  for (int i = 0; i < 65533; ++i) text += "[0]";
  text += ".x = 1; t m;";
  vsa::StatementReader reader(text);
  vsa::SyntaxStatement statement;
  std::size_t tokens = 0;
  int statements = 0;
  while (reader.next(statement)) {
    EXPECT_LE(statement.tokens.size(), 65536U);
    EXPECT_EQ(statement.kind == StatementKind::Malformed, statements < 2);
    tokens += statement.tokens.size();
    ++statements;
  }
  EXPECT_EQ(statements, 3);
  EXPECT_EQ(tokens, 65536U + 5U + 3U);
  EXPECT_EQ(statement.kind, StatementKind::Declaration);
}

TEST(StatementReaderTest, KeepsALimitedAmountOfText) {
  std::string text;
  for (int i = 0; i < 40; ++i) text += std::string(1 << 20, 'n') + ' ';
  StepSource source(text, 1 << 20);
  vsa::StatementReader reader(source);
  vsa::SyntaxStatement statement;
  std::size_t tokens = 0;
  while (reader.next(statement)) {
    EXPECT_EQ(statement.kind, StatementKind::Malformed);
    tokens += statement.tokens.size();
  }
  EXPECT_EQ(tokens, 40U);
}

TEST(NamesTest, EachKindHasAName) {
  for (int i = 0; i <= static_cast<int>(SyntaxKind::Punctuation); ++i) {
    EXPECT_STRNE(name(static_cast<SyntaxKind>(i)), "unknown");
  }
  for (int i = 0; i <= static_cast<int>(StatementKind::Malformed); ++i) {
    EXPECT_STRNE(name(static_cast<StatementKind>(i)), "unknown");
  }
  EXPECT_STREQ(name(static_cast<SyntaxKind>(99)), "unknown");
  EXPECT_STREQ(name(static_cast<StatementKind>(99)), "unknown");
}

}  // namespace
