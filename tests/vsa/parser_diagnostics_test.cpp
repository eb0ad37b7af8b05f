// Tests of thrown and logged messages, and of their records. A message has the position of the
// token that was consumed last, or that of the token it is about.
#include <gtest/gtest.h>

#include <cstdarg>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/parser_fixture.h"
#include "vsa/apply/no_scene.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::HostInput;
using vsa_tests::HostOptions;
using vsa_tests::LoggedLines;
using vsa_tests::PrimedParser;
using vsa_tests::thrownBy;
using Lines = std::vector<std::string>;

/// A fixture with a parser that has consumed a token at line 4, column 9, and an input for the
/// messages.
class Diagnostics : public testing::Test {
 protected:
  Diagnostics() : input_(options_, "lamp1.count", AttrType::Int) {
    parser_.current.line = 4;
    parser_.current.column = 9;
  }

  HostOptions options_;
  HostInput input_;
  VsaParser parser_;
};

TEST_F(Diagnostics, ParseError) {
  EXPECT_EQ(thrownBy([&] { parser_.parseError("unrecognized token '%s'.", "42"); }),
            "PARSE ERROR (4,9): unrecognized token '42'..");
  EXPECT_EQ(thrownBy([&] { parser_.parseError("%s", "100%d"); }), "PARSE ERROR (4,9): 100%d.");
}

TEST_F(Diagnostics, BufferError) {
  EXPECT_EQ(thrownBy([&] { parser_.bufferError("Cannot add %s @ index %d.", "4", 3); }),
            "BUFFER ERROR (4,9): Cannot add 4 @ index 3..");
}

TEST_F(Diagnostics, BeforeTheFirstToken) {
  VsaParser fresh;
  EXPECT_EQ(thrownBy([&] { fresh.parseError("x"); }), "PARSE ERROR (0,0): x.");
}

void raise(VsaParser& parser, const String& kind, const char* format, ...) VSA_PRINTF(3, 4);
void raise(VsaParser& parser, const String& kind, const char* format, ...) {
  va_list args;
  va_start(args, format);
  parser.internalError(kind, format, args);
}

TEST_F(Diagnostics, InternalError) {
  EXPECT_EQ(thrownBy([&] { raise(parser_, "SOME ERROR", "%s %d", "a", 1); }),
            "SOME ERROR (4,9): a 1.");
}

TEST_F(Diagnostics, TokenErrorOfAnInvalidTokenIsItsText) {
  const Token token{Token::Type::Invalid, "INVALID TOKEN (2,6): '%s'", 2, 6};
  EXPECT_EQ(thrownBy([&] { parser_.tokenError(token); }), "INVALID TOKEN (2,6): '%s'");
}

TEST_F(Diagnostics, TokenErrorReportsTheFoundTokensPosition) {
  const Token token{Token::Type::Str, "\"a %s\"", 5, 20};
  EXPECT_EQ(thrownBy([&] { parser_.tokenError("(null|path)", token); }),
            "BAD TOKEN (5,20): expected '(null|path)', found '\"a %s\"'.");
}

TEST_F(Diagnostics, TypeError) {
  EXPECT_EQ(thrownBy([&] { parser_.typeError("Real", &input_, false); }),
            "TYPE ERROR (4,9): cannot assign Real to Int @ lamp1.count.");
  EXPECT_EQ(thrownBy([&] { parser_.typeError("Float", &input_, true); }),
            "TYPE ERROR (4,9): cannot assign Float[] to Int @ lamp1.count.");
}

TEST_F(Diagnostics, Warnings) {
  const LoggedLines log;
  parser_.narrowTypeWarning("Real", &input_);
  parser_.wrongTypeWarning("\"100%s\"", &input_);
  parser_.badEnumValueWarning("mauve", &input_);
  EXPECT_EQ(log.lines(),
            (Lines{"warning: TYPE WARNING (4,9): narrowing Real to Int @ lamp1.count.",
                   "error: TYPE ERROR (4,9): expected Int @ lamp1.count but found \"100%s\".",
                   "warning: ENUM WARNING (4,9): setting non-existent enum value 'mauve' @ "
                   "lamp1.count."}));
}

TEST_F(Diagnostics, LongMessages) {
  const std::string longText(100000, 'x');
  EXPECT_EQ(thrownBy([&] { parser_.parseError("%s", longText.c_str()); }),
            "PARSE ERROR (4,9): " + longText + ".");
}

TEST(DiagnosticPositions, AreOfTheTokenConsumedLast) {
  PrimedParser primed("abc def\n  ghi");
  primed.parser.consume();
  EXPECT_EQ(thrownBy([&] { primed.parser.parseError("x"); }), "PARSE ERROR (1,3): x.");
  primed.parser.consume();
  primed.parser.consume();
  EXPECT_EQ(thrownBy([&] { primed.parser.parseError("x"); }), "PARSE ERROR (2,5): x.");
}

/// A sink that stores the diagnostics.
class Records final : public DiagnosticSink {
 public:
  void report(const Diagnostic& diagnostic) override { all.push_back(diagnostic); }
  std::vector<Diagnostic> all;
};

/// A scene whose findNode() throws an exception.
class ThrowingScene final : public NoScene {
 public:
  interfaces::INode* findNode(const String&) override { throw std::runtime_error("no index"); }
};

TEST(Records, EachLineOfTheLogHasItsRecord) {
  Records records;
  const ScopedDiagnosticSink scope(&records);
  const LoggedLines log;
  vsa_tests::HostScene scene;
  EXPECT_FALSE(VsaParser().parse(&scene, String("t n; n.a = 1; n.a = 2.5; n.b = vec2(1 x);")));
  ASSERT_EQ(records.all.size(), 2U);
  EXPECT_EQ(records.all[0].id, DiagnosticId::Narrowing);
  EXPECT_EQ(records.all[0].severity(), Severity::Warning);
  EXPECT_EQ(records.all[0].offset, Diagnostic::UNKNOWN_OFFSET);
  EXPECT_EQ(records.all[1].id, DiagnosticId::InvalidListToken);
  EXPECT_EQ(vsa_tests::text(records.all[1].kind()), "INVALID PAREN LIST TOKEN");
  EXPECT_EQ(vsa_tests::text(records.all[1].text), "'x'");
  EXPECT_EQ(records.all[1].offset, 38);
  EXPECT_EQ(log.lines(), (Lines{"warning: " + vsa_tests::text(records.all[0].logLine()),
                                "error: " + vsa_tests::text(records.all[1].logLine())}));
}

TEST(Records, AnErrorOfTheHostIsAHostError) {
  Records records;
  const ScopedDiagnosticSink scope(&records);
  const LoggedLines log;
  ThrowingScene scene;
  EXPECT_FALSE(VsaParser().parse(&scene, String("t n;")));
  ASSERT_EQ(records.all.size(), 1U);
  EXPECT_EQ(records.all[0].id, DiagnosticId::HostError);
  EXPECT_EQ(vsa_tests::text(records.all[0].text), "no index");
  EXPECT_EQ(log.lines(), Lines{"error: no index"});
}

TEST(Records, TheFirstTokensThrowTheirRecord) {
  vsa_tests::HostScene scene;
  try {
    VsaParser().parse(&scene, String(" }"));
    FAIL() << "nothing was thrown";
  } catch (const DiagnosticError& error) {
    EXPECT_STREQ(error.what(), "INVALID TOKEN (1,1): '}'");
    EXPECT_EQ(error.diagnostic().id, DiagnosticId::InvalidToken);
    EXPECT_EQ(error.diagnostic().offset, 1);
  }
}

TEST(Records, ScopesNestAndNullSilences) {
  Records outer;
  Records inner;
  const LoggedLines log;
  vsa_tests::HostScene scene;
  const ScopedDiagnosticSink first(&outer);
  {
    const ScopedDiagnosticSink second(&inner);
    VsaParser().parse(&scene, String("t n; 42;"));
    const ScopedDiagnosticSink third(nullptr);
    VsaParser().parse(&scene, String("t m; 42;"));
  }
  VsaParser().parse(&scene, String("t o; 42;"));
  EXPECT_EQ(inner.all.size(), 1U);
  EXPECT_EQ(outer.all.size(), 1U);
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
