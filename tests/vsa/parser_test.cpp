// Tests of the ring of three tokens, the statement loop, and the exceptions that propagate from it.
#include "vsa/parser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <vsa/foundation/log.h>
#include "tests/support/byte_source.h"
#include "tests/support/host_scene.h"
#include "tests/support/parser_fixture.h"
#include "vsa/lex/lexer_source.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::HostScene;
using vsa_tests::InterruptedSource;
using vsa_tests::LoggedLines;
using vsa_tests::memoryFile;
using vsa_tests::PrimedParser;
using vsa_tests::string;
using vsa_tests::text;
using vsa_tests::thrownBy;
using vsa_tests::tokenText;
using Type = Token::Type;
using Lines = std::vector<std::string>;

TEST(VsaParser, IsEmptyInitially) {
  const VsaParser parser;
  EXPECT_EQ(parser.lexer, nullptr);
  EXPECT_EQ(parser.lookahead, 3);
  EXPECT_EQ(parser.head, 0);
  EXPECT_EQ(parser.tokens.size, 0U);
  EXPECT_EQ(tokenText(parser.current), "Eof<>0,0");
  EXPECT_EQ(tokenText(parser.lastLexed), "Eof<>0,0");
  EXPECT_TRUE(parser.spare.isEmpty());
  EXPECT_EQ(parser.scene, nullptr);
  EXPECT_EQ(parser.withNode, nullptr);
  EXPECT_EQ(parser.definedNodes.size, 0U);
}

TEST(VsaParser, FieldsAreInOrder) {
  const VsaParser parser;
  static_assert(std::is_same_v<decltype(parser.lookahead), std::int32_t>);
  static_assert(std::is_same_v<decltype(parser.head), std::int32_t>);
  const std::vector<const void*> fields = {
      &parser.lexer,    &parser.lookahead,    &parser.head,        &parser.tokens,
      &parser.current,  &parser.lastLexed,    &parser.spare,       &parser.scene,
      &parser.withNode, &parser.definedNodes, &parser.connections, &parser.references};
  EXPECT_TRUE(std::is_sorted(fields.begin(), fields.end(), std::less<>()));
}

TEST(VsaParser, PrimingFillsTheRingAndConsumesNothing) {
  const PrimedParser primed("a b c d");
  EXPECT_EQ(primed.parser.tokens.size, 3U);
  EXPECT_EQ(primed.parser.head, 0);
  EXPECT_EQ(primed.ahead(), "a b c");
  EXPECT_EQ(tokenText(primed.parser.current), "Eof<>0,0");
  EXPECT_EQ(tokenText(primed.parser.lastLexed), "Id<c>1,5");
}

TEST(VsaParser, ConsumeReturnsTheHeadAndRefillsItsSlot) {
  PrimedParser primed("a b c d");
  EXPECT_EQ(tokenText(primed.parser.consume()), "Id<a>1,1");
  EXPECT_EQ(tokenText(primed.parser.current), "Id<a>1,1");
  EXPECT_EQ(tokenText(primed.parser.lastLexed), "Id<d>1,7");
  EXPECT_EQ(primed.parser.head, 1);
  EXPECT_EQ(primed.ahead(), "b c d");
  primed.parser.consume();
  primed.parser.consume();
  EXPECT_EQ(primed.parser.head, 0);
  EXPECT_EQ(primed.ahead(), "d EOF EOF");
  primed.parser.consume();
  EXPECT_EQ(tokenText(primed.parser.consume()), "Eof<EOF>1,7");
}

TEST(VsaParser, ConsumeThrowsWhenItLexesAnInvalidToken) {
  PrimedParser primed("a b c\n ! d");
  EXPECT_EQ(thrownBy([&] { primed.parser.consume(); }), "INVALID TOKEN (2,1): '!'");
  EXPECT_EQ(tokenText(primed.parser.current), "Id<a>1,1");
  EXPECT_EQ(primed.parser.lastLexed.type, Type::Invalid);
  EXPECT_EQ(primed.parser.head, 0);
  EXPECT_EQ(primed.ahead(), "a b c");
}

// Returns the ring and the token that was consumed last, with positions: "head 1: Id<b>1,3 Id<c>2,1
// ...".
std::string ringText(const VsaParser& parser) {
  std::string shown = "head " + std::to_string(parser.head) + ':';
  for (std::int32_t i = 0; i < parser.lookahead; ++i) {
    const std::int32_t slot = (parser.head + i) % parser.lookahead;
    shown += ' ' + tokenText(parser.tokens[static_cast<std::uint64_t>(slot)]);
  }
  return shown + " | current " + tokenText(parser.current);
}

TEST(VsaParser, InvalidTokenLeavesTheConsumedTokenInItsSlot) {
  PrimedParser primed("a b\nc 4.5\n } e");
  primed.parser.consume();
  EXPECT_EQ(ringText(primed.parser), "head 1: Id<b>1,3 Id<c>2,1 Real<4.5>2,5 | current Id<a>1,1");
  EXPECT_EQ(thrownBy([&] { primed.parser.consume(); }), "INVALID TOKEN (3,1): '}'");
  EXPECT_EQ(ringText(primed.parser), "head 1: Id<b>1,3 Id<c>2,1 Real<4.5>2,5 | current Id<b>1,3");
  EXPECT_EQ(tokenText(primed.parser.lastLexed), "Invalid<INVALID TOKEN (3,1): '}'>3,1");
}

TEST(VsaParser, ThrowingSourceLeavesTheConsumedTokenInItsSlot) {
  FileLexer lexer(File(new InterruptedSource("a b\nc 4.5; \"s\" x", 11)));
  VsaParser parser;
  parser.lexer = &lexer;
  for (int i = 0; i < parser.lookahead; ++i) {
    parser.tokens.push_back(Token());
    parser.consume();
  }
  parser.consume();
  parser.consume();
  EXPECT_EQ(ringText(parser), "head 2: Id<c>2,1 Real<4.5>2,5 Semicolon<;>2,6 | current Id<b>1,3");
  EXPECT_EQ(thrownBy([&] { parser.consume(); }), "gone");
  EXPECT_EQ(ringText(parser), "head 2: Id<c>2,1 Real<4.5>2,5 Semicolon<;>2,6 | current Id<c>2,1");
  EXPECT_EQ(tokenText(parser.lastLexed), "Semicolon<;>2,6");
  // The source continues after the exception, and the parser consumes the same token again.
  EXPECT_EQ(tokenText(parser.consume()), "Id<c>2,1");
  EXPECT_EQ(parser.head, 0);
}

TEST(VsaParser, MatchConsumesOnlyTheGivenType) {
  PrimedParser primed("a = 1;");
  Token out;
  EXPECT_FALSE(primed.parser.match(out, Type::Int));
  EXPECT_EQ(tokenText(out), "Eof<>0,0");
  EXPECT_EQ(primed.ahead(), "a = 1");
  EXPECT_TRUE(primed.parser.match(out, Type::Id));
  EXPECT_EQ(tokenText(out), "Id<a>1,1");
  EXPECT_EQ(tokenText(primed.parser.current), "Id<a>1,1");
  EXPECT_EQ(primed.ahead(), "= 1 ;");
}

// --- the statement loop ---

struct Reading {
  bool result = false;
  std::string thrown;
  Lines log;
  Lines calls;
};

Reading read(const std::string& bytes) {
  Reading reading;
  HostScene scene;
  const LoggedLines log;
  reading.thrown = thrownBy([&] { reading.result = VsaParser().parse(&scene, string(bytes)); });
  reading.log = log.lines();
  reading.calls = scene.options.calls;
  return reading;
}

TEST(VsaParserParse, TextsWithoutAStatement) {
  using namespace std::string_literals;
  for (const std::string& bytes : {""s, " \t\r\n"s, "\0\x01\x7f"s, "\xFF }"s}) {
    const Reading reading = read(bytes);
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.thrown, "");
    EXPECT_EQ(reading.log, Lines{});
    EXPECT_EQ(reading.calls, Lines{});
  }
}

TEST(VsaParserParse, InvalidCharacterInTheFirstThreeTokensThrows) {
  EXPECT_EQ(read("}").thrown, "INVALID TOKEN (1,0): '}'");
  EXPECT_EQ(read("a }").thrown, "INVALID TOKEN (1,2): '}'");
  EXPECT_EQ(read("a b }").thrown, "INVALID TOKEN (1,4): '}'");
  EXPECT_EQ(read("(1 x)").thrown, "INVALID PAREN LIST TOKEN (1,3): 'x'");
  EXPECT_EQ(read("a b }").log, Lines{});
}

TEST(VsaParserParse, InvalidCharacterAfterTheThirdTokenIsLogged) {
  const Reading reading = read("a b; }");
  EXPECT_FALSE(reading.result);
  EXPECT_EQ(reading.thrown, "");
  EXPECT_EQ(reading.log, Lines{"error: INVALID TOKEN (1,5): '}'"});
  EXPECT_EQ(reading.calls, Lines{});
  // The parser has lexed three tokens after a statement before it executes the statement. If one of
  // the three is invalid, the reading ends and the statement is not executed.
  EXPECT_EQ(read("a b; c d }").calls, Lines{});
  EXPECT_EQ(read("a b; c d e }").calls, Lines{"createNode a b <>"});
}

TEST(VsaParserParse, UnrecognizedTokens) {
  const Reading first = read("42;");
  EXPECT_FALSE(first.result);
  EXPECT_EQ(first.log, Lines{"error: PARSE ERROR (0,0): unrecognized token '42'.."});
  const Reading later = read("a b;\n  42;");
  EXPECT_EQ(later.log, Lines{"error: PARSE ERROR (1,4): unrecognized token '42'.."});
  EXPECT_EQ(later.calls, Lines{"createNode a b <>"});
}

TEST(VsaParserParse, UnterminatedTokenBetweenStatementsIsNoError) {
  for (const char* const bytes : {"a b; \"cut", "a b; (1 2", "a b; {", "a b; [1"}) {
    const Reading reading = read(bytes);
    EXPECT_TRUE(reading.result) << bytes;
    EXPECT_EQ(reading.log, Lines{}) << bytes;
  }
}

TEST(VsaParserParse, UnterminatedTokenInsideAStatementIsAnError) {
  EXPECT_EQ(read("a b; b.c = \"cut").log,
            Lines{"error: BAD TOKEN (1,15): expected '(scalar|buffer|reference)', found "
                  "'UNEXPECTED EOF while parsing STRING'."});
  EXPECT_EQ(read("a b; b.c = 1 \"cut").log,
            Lines{"error: BAD TOKEN (1,17): expected ';', found 'UNEXPECTED EOF while parsing "
                  "STRING'."});
}

TEST(VsaParserParse, StatementParsersAreTriedInOrder) {
  // All these texts have the syntax of a declaration, but `remove` and `define` before `;` are
  // directives.
  EXPECT_EQ(read("remove a;").calls, Lines{"removeNode a"});
  EXPECT_EQ(read("define a;").calls, Lines{"defineNode a"});
  EXPECT_EQ(read("with a:").calls, Lines{"createNode with a <>"});
  EXPECT_EQ(read("remove a:").calls, Lines{"createNode remove a <>"});
  EXPECT_EQ(read("define a:").calls, Lines{"createNode define a <>"});
}

TEST(VsaParserParse, FromAFile) {
  HostScene scene;
  VsaParser parser;
  EXPECT_TRUE(parser.parse(&scene, memoryFile("# c\na b;", 1)));
  EXPECT_EQ(scene.options.calls, (Lines{"pushFileComment <# c>", "createNode a b <>"}));
}

TEST(VsaParserParse, FromALexer) {
  HostScene scene;
  StringLexer lexer("# c\na b;");
  VsaParser parser;
  EXPECT_TRUE(parser.parse(&scene, &lexer));
  EXPECT_EQ(parser.lexer, &lexer);
  EXPECT_EQ(parser.scene, &scene);
  EXPECT_EQ(lexer.index, 8);
  EXPECT_EQ(scene.options.calls, (Lines{"pushFileComment <# c>", "createNode a b <>"}));
}

TEST(VsaParserParse, RuntimeErrorsOfTheSceneAreLogged) {
  HostScene scene;
  scene.options.onCall = [](const std::string& line) {
    if (line == "createNode a c <>") throw std::range_error("no more, 100%s");
  };
  const LoggedLines log;
  EXPECT_FALSE(VsaParser().parse(&scene, String("a b; a c; a d;")));
  EXPECT_EQ(log.lines(), Lines{"error: no more, 100%s"});
  EXPECT_EQ(scene.options.calls, Lines{"createNode a b <>"});
}

TEST(VsaParserParse, OtherExceptionsPropagate) {
  HostScene scene;
  scene.options.onCall = [](const std::string&) { throw std::logic_error("mine"); };
  const LoggedLines log;
  EXPECT_THROW(VsaParser().parse(&scene, String("a b;")), std::logic_error);
  scene.options.onCall = [](const std::string&) { throw std::bad_alloc(); };
  EXPECT_THROW(VsaParser().parse(&scene, String("a b;")), std::bad_alloc);
  EXPECT_EQ(log.lines(), Lines{});
}

TEST(VsaParserParse, AnErrorDuringResolutionIsLogged) {
  HostScene scene;
  scene.options.onCall = [](const std::string& line) {
    if (line == "b.c.connect b.out") throw std::runtime_error("unwilling");
  };
  const LoggedLines log;
  EXPECT_FALSE(VsaParser().parse(&scene, String("a b; b.c |= b.out; b.r = b;")));
  EXPECT_EQ(log.lines(), Lines{"error: unwilling"});
  // No reference is set, and no input is released.
  EXPECT_EQ(scene.options.calls, (Lines{"createNode a b <>", "b.createInput c Null", "b.c.retain",
                                        "b.createInput r Null", "b.r.retain"}));
}

// --- sinks that throw ---

/// A sink that accepts the first `taken` messages and throws at the next one. If `throwsOnce` is
/// true, it accepts the messages after that one, and otherwise it throws at each of them.
template <class Error>
class ThrowingSink final : public LogSink {
 public:
  explicit ThrowingSink(std::size_t taken) : accepted_(taken) {}
  void write(LogLevel level, const String& message) override {
    if (lines.size() == accepted_) {
      accepted_ = throwsOnce ? lines.size() + 100 : accepted_;
      throw Error("full");
    }
    lines.push_back((level == LogLevel::Warning ? "warning: " : "error: ") + text(message));
  }
  bool throwsOnce = true;
  Lines lines;

 private:
  std::size_t accepted_;
};

constexpr char TWO_WARNINGS[] = "a b; b.x = byte[2] {1}; b.y = byte[3] {1}; a c;";

TEST(VsaParserParse, RuntimeErrorOfTheSinkStopsTheParseAndIsLogged) {
  HostScene scene;
  ThrowingSink<std::runtime_error> sink(1);
  const ScopedLogSink scope(&sink);
  EXPECT_FALSE(VsaParser().parse(&scene, String(TWO_WARNINGS)));
  EXPECT_EQ(sink.lines,
            (Lines{"warning: Too few elements (1) for byte[2] buffer, remainder set to zero.",
                   "error: full"}));
  EXPECT_EQ(scene.options.calls,
            (Lines{"createNode a b <>", "b.createInput x Buffer", "b.x.assign Buffer Byte 2"}));
}

TEST(VsaParserParse, RuntimeErrorOfTheSinkWhileLoggingAnErrorPropagates) {
  HostScene scene;
  ThrowingSink<std::runtime_error> sink(0);
  sink.throwsOnce = false;
  const ScopedLogSink scope(&sink);
  EXPECT_EQ(thrownBy([&] { VsaParser().parse(&scene, String("a b; 42;")); }), "full");
  EXPECT_EQ(sink.lines, Lines{});
}

TEST(VsaParserParse, OtherExceptionOfTheSinkPropagates) {
  HostScene scene;
  ThrowingSink<std::logic_error> sink(1);
  const ScopedLogSink scope(&sink);
  EXPECT_THROW(VsaParser().parse(&scene, String(TWO_WARNINGS)), std::logic_error);
  EXPECT_EQ(sink.lines,
            Lines{"warning: Too few elements (1) for byte[2] buffer, remainder set to zero."});
}

// --- sources that throw ---

Reading readUntilTheSourceThrows(const std::string& bytes) {
  Reading reading;
  HostScene scene;
  const LoggedLines log;
  reading.thrown = thrownBy([&] {
    const File file(new InterruptedSource(bytes, bytes.size()));
    reading.result = VsaParser().parse(&scene, file);
  });
  reading.log = log.lines();
  reading.calls = scene.options.calls;
  return reading;
}

// The lexer reads one character ahead. To lex the third token, it also reads the character after
// it.
TEST(VsaParserParse, SourceExceptionInTheFirstThreeTokensPropagates) {
  for (const char* const bytes : {"", "a", "a ", "a b", "a b;"}) {
    const Reading reading = readUntilTheSourceThrows(bytes);
    EXPECT_FALSE(reading.result) << bytes;
    EXPECT_EQ(reading.thrown, "gone") << bytes;
    EXPECT_EQ(reading.log, Lines{}) << bytes;
    EXPECT_EQ(reading.calls, Lines{}) << bytes;
  }
}

TEST(VsaParserParse, SourceExceptionAfterTheThirdTokenIsLogged) {
  for (const char* const bytes : {"a b; ", "a b; c", "a b; c ", "a b; c d"}) {
    const Reading reading = readUntilTheSourceThrows(bytes);
    EXPECT_FALSE(reading.result) << bytes;
    EXPECT_EQ(reading.thrown, "") << bytes;
    EXPECT_EQ(reading.log, Lines{"error: gone"}) << bytes;
    EXPECT_EQ(reading.calls, Lines{}) << bytes;
  }
  // The position of the file is where the source threw, and another read continues there.
  HostScene scene;
  const LoggedLines log;
  File file(new InterruptedSource("a b; c d;", 5));
  EXPECT_FALSE(VsaParser().parse(&scene, file));
  EXPECT_EQ(scene.options.calls, Lines{});
  EXPECT_TRUE(VsaParser().parse(&scene, file));
  EXPECT_EQ(scene.options.calls, Lines{"createNode c d <>"});
  EXPECT_EQ(log.lines(), Lines{"error: gone"});
  const Reading later = readUntilTheSourceThrows("a b; c d; ");
  EXPECT_FALSE(later.result);
  EXPECT_EQ(later.log, Lines{"error: gone"});
  EXPECT_EQ(later.calls, Lines{"createNode a b <>"});
}

// The parser consumes the token at the head before it calls the lexer. If the source throws,
// `current` is the consumed token, and the slot of that token still contains it.
TEST(Ring, SlotKeepsTheConsumedTokenWhenTheSourceThrows) {
  FileLexer lexer(File(new vsa_tests::InterruptedSource("a b c d", 6)));
  VsaParser parser;
  parser.lexer = &lexer;
  for (int i = 0; i < parser.lookahead; ++i) {
    parser.tokens.push_back(Token());
    parser.consume();
  }
  EXPECT_THROW(parser.consume(), std::runtime_error);
  EXPECT_EQ(vsa_tests::text(parser.current.text), "a");
  EXPECT_EQ(vsa_tests::text(parser.tokens[0].text), "a");
  EXPECT_EQ(parser.head, 0);
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
