// Tests of the arguments of the diagnostics, which are the values in their messages. Every id is
// tested except TooManyArrayElements, which would need too much memory.
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/parse.h>
#include <vsa/read.h>
#include "diagnostics/emitter.h"
#include "tests/support/declared_lamp.h"
#include "tests/support/host_scene.h"
#include "tools/scene_text/read_outcome.h"

namespace vsa_tests {

namespace {

using vsa::DiagnosticId;
using vsa::Limit;
using Arguments = std::vector<std::string>;

/// A text, and the id and the arguments of its last diagnostic.
struct ArgumentRow {
  DiagnosticId id;
  std::string_view text;
  Arguments arguments;
};

using enum DiagnosticId;

const ArgumentRow ARGUMENT_ROWS[] = {
    {InvalidToken, "a x; x.n = 5%;", {"%"}},
    {InvalidListToken, "a x; x.v = vec3(1 y 2);", {"y"}},
    {InvalidListToken, "a x; x.v = vec3(1 \x80 2);", {"\x80"}},
    {UnexpectedEof, "a x; \"never closed", {"STRING"}},
    {UnexpectedEof, "a x; (1 2", {"PARENS"}},
    {UnexpectedEof, "a x; {1 2", {"BRACES"}},
    {UnexpectedEof, "a x; [1", {"BRACKETS"}},
    {EndMark, "a x; \xFF", {}},
    {BadToken, "a x; x.n = 1 2;", {";", "2"}},
    {BadToken, "a x; x.n = ;", {"(scalar|buffer|reference)", ";"}},
    {BadToken, "a x; x.n | y.out;", {"=", "y"}},
    {BadToken, "a x; x.n |= y;", {"(null|path)", "y"}},
    {BadToken, "a x; x.n = 1", {";", "EOF"}},
    {BadToken,
     "a x; x.n = \"1",
     {"(scalar|buffer|reference)", "UNEXPECTED EOF while parsing STRING"}},
    {UnrecognizedToken, "a x; 42;", {"42"}},
    {BadVersion, "# version: beta\n", {"# version: beta"}},
    {WithNodeNotSet, "a x; .n = 1;", {".n"}},
    {NodeNotFound, "a x; y.n.m = 1;", {"y.n.m"}},
    {InputNotFound, "a x; x.v |= y.out; x.v[0] = 1;", {"x.v[0]"}},
    {InvalidArrayIndex, "a x; x.v[] = 1;", {"[]"}},
    {CannotAssignType, "a x; x.v[0] = 1; x.v[1] = 2.5;", {"Real", "", "Array", "x.v"}},
    {CannotAssignType, "a x; x.v[0] = 1; x.v[1] = byte[1] {1};", {"Buffer", "", "Array", "x.v"}},
    {CannotAssignType, "a x; x.v = 1; x.v.w = 2.5;", {"Object", "", "Int", "x.v"}},
    {Narrowing, "a x; x.n = 1; x.n = 2.7;", {"Real", "Int", "x.n"}},
    {WrongType, "a x; x.n = 1; x.n = vec3(1 2 3);", {"Int", "x.n", "Vec3"}},
    {BadEnumValue, "declaredLamp x: .shape = \" @ a\";", {" @ a", "x.shape"}},
    {InvalidElementCount, "a x; x.b = byte[] {1};", {"[]"}},
    {CannotAllocate,
     "a x; x.b = float[18446744073709551615] {1};",
     {"float", "[18446744073709551615]"}},
    {TooManyElements, "a x; x.b = vec3f[1] {0 0 0 1.5};", {"1.5", "3", "vec3f", "1"}},
    {TooFewElements, "a x; x.b = vec3f[2] {1 2 3};", {"1", "vec3f", "2"}},
    {UnreadableBuffer, "a x; x.b = byte[1] {256};", {"byte"}},
    {CompressedDataEmpty, "a x; x.b = byte[3] {.};", {}},
    {CompressedDataBadCharacter, "a x; x.b = byte[3] {.--};", {}},
    {CompressedDataEndsEarly, "a x; x.b = byte[3] {.78};", {}},
    {CompressedDataCorrupt, "a x; x.b = byte[4] {.78da070018000b0000};", {}},
    {CompressedDataWrongChecksum, "a x; x.b = byte[4] {.78da636462660100001800ff};", {}},
    {CompressedDataTooLarge, "a x; x.b = byte[3] {.78da6364626601000018000b};", {}},
    {InvalidOutput, "a x; x.i |= b.c.d;", {"b.c.d"}},
    {NoNodeToConnect, "a x; x.i |= gone.out;", {"gone", "x.i"}},
    {NoOutputToConnect, "declaredLamp d; a x; x.i |= d.gone;", {"d.gone", "x.i"}},
    {NoNodeToAssign, "a x; x.i[0].k = gone;", {"gone", "x.i[0].k"}},
    {CannotAssignNode, "a x; x.i = 1; x.i = x;", {"x", "x.i", "Int"}},
    {TooManyEmptyElements, "a x; x.v[90000000] = 1;", {"x.v", "524288"}},
    {OverLimit, "a x; x.b = byte[90000000000] {1};", {"67108864"}},
};

// Returns the message: its format in the table, with the arguments inserted.
std::string formatted(const vsa::Diagnostic& found) {
  std::string_view format = zn::korvo_sdk::DIAGNOSTIC_ROWS[static_cast<int>(found.id)].format;
  std::string message;
  for (const std::string& argument : found.arguments) {
    const std::size_t conversion = format.find('%');
    message += format.substr(0, conversion);
    message += argument;
    format.remove_prefix(format.find_first_of("scu", conversion) + 1);
  }
  return message += format;
}

void expectArguments(const vsa::Diagnostic& found, DiagnosticId id, const Arguments& expected) {
  EXPECT_STREQ(vsa::name(found.id), vsa::name(id)) << found.message;
  EXPECT_EQ(found.arguments, expected) << found.message;
  EXPECT_EQ(found.limit.has_value(), id == OverLimit) << found.message;
  const bool isInTable = id < EndMark;
  EXPECT_EQ(isInTable ? formatted(found) : found.message, found.message);
}

vsa::ReadOptions withMemory(std::uint64_t bytes) {
  vsa::ReadOptions options;
  options.limits.memory = bytes;
  return options;
}

TEST(DiagnosticArguments, AreTheValuesInTheMessage) {
  declareLamp();
  for (const ArgumentRow& row : ARGUMENT_ROWS) {
    const bool isLarge = row.id == CannotAllocate;
    const vsa::ReadResult result =
        vsa::readText(row.text, withMemory(isLarge ? vsa::UNLIMITED : std::uint64_t{64} << 20));
    ASSERT_FALSE(result.diagnostics.empty()) << row.text;
    expectArguments(result.diagnostics.back(), row.id, row.arguments);
  }
}

TEST(DiagnosticArguments, AreCheckedForEveryId) {
  std::set<DiagnosticId> checked = {
      NestedTooDeeply,      // has its own test below
      HostError,            // has its own test below
      HostMessage,          // has its own test below
      TooManyArrayElements  // would take 200 GB
  };
  for (const ArgumentRow& row : ARGUMENT_ROWS) checked.insert(row.id);
  for (int i = 0; i < vsa::DIAGNOSTIC_ID_COUNT; ++i) {
    const auto id = static_cast<DiagnosticId>(i);
    EXPECT_EQ(checked.count(id), 1U) << vsa::name(id);
  }
}

TEST(DiagnosticArguments, OfASceneThatIsTooDeep) {
  vsa::Scene scene;
  scene.plain().setDepthLimit(2);
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "a x; x.a.b.c = 1;");
  ASSERT_EQ(outcome.diagnostics.size(), 1U);
  expectArguments(outcome.diagnostics[0], NestedTooDeeply, {"x.a.b.c", "2"});
}

TEST(DiagnosticArguments, OfWhatAHostThrowsOrLogs) {
  const std::function<void()> acts[] = {[] { throw std::runtime_error("no moon"); },
                                        [] { throw std::logic_error("no moon"); },
                                        [] { zn::logWarning("%s", "no moon"); }};
  for (const auto& act : acts) {
    HostScene scene;
    scene.options.onCall = [&](const std::string& call) {
      if (call.starts_with("createNode")) act();
    };
    const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp moon;");
    ASSERT_EQ(outcome.diagnostics.size(), 1U);
    expectArguments(outcome.diagnostics[0], &act == &acts[2] ? HostMessage : HostError,
                    {"no moon"});
  }
}

// A diagnostic with the id OverLimit has one argument, the value of the exceeded limit.
TEST(DiagnosticArguments, OfALimitAreItsValue) {
  const std::string text = "a x; a y; x.v[2].w = 1; x.n = 2.5; x.b = float[3] {1 2 3};";
  const std::pair<Limit, std::uint64_t vsa::ReadLimits::*> rows[] = {
      {Limit::TextBytes, &vsa::ReadLimits::textBytes},
      {Limit::BufferBytes, &vsa::ReadLimits::bufferBytes},
      {Limit::Nodes, &vsa::ReadLimits::nodes},
      {Limit::Elements, &vsa::ReadLimits::elements},
      {Limit::Depth, &vsa::ReadLimits::depth},
  };
  for (const auto& [limit, member] : rows) {
    vsa::ReadOptions options;
    options.limits.*member = 1;
    const vsa::ReadResult result = vsa::readText(text, options);
    EXPECT_EQ(result.limit, limit);
    ASSERT_FALSE(result.diagnostics.empty()) << vsa::name(limit);
    expectArguments(result.diagnostics.back(), OverLimit, {"1"});
    EXPECT_EQ(result.diagnostics.back().limit, limit);
  }
}

TEST(DiagnosticArguments, OfTheLimitsOfMemoryAndDiagnostics) {
  const vsa::ReadResult small = vsa::readText("a x; a y;", withMemory(1));
  ASSERT_FALSE(small.diagnostics.empty());
  expectArguments(small.diagnostics.back(), OverLimit, {"1"});
  EXPECT_EQ(small.diagnostics.back().limit, Limit::Memory);
  vsa::ReadOptions options;
  options.limits.diagnostics = 0;
  const vsa::ReadResult many = vsa::readText("# version: x\n", options);
  ASSERT_EQ(many.diagnostics.size(), 2U);
  expectArguments(many.diagnostics.back(), OverLimit, {"0"});
  EXPECT_EQ(many.diagnostics.back().limit, Limit::Diagnostics);
}

TEST(DiagnosticArguments, AreFoundByTheirNames) {
  const vsa::ReadResult result = vsa::readText("a x; x.n = 1 2;");
  ASSERT_EQ(result.diagnostics.size(), 1U);
  const vsa::Diagnostic& found = result.diagnostics[0];
  EXPECT_STREQ(vsa::argumentNames(found.id), "expected, found");
  EXPECT_EQ(found.argument("expected"), ";");
  EXPECT_EQ(found.argument("found"), "2");
  EXPECT_EQ(found.argument("foun"), "");
  EXPECT_EQ(found.argument("expected, found"), "");
  EXPECT_EQ(found.argument(""), "");
  vsa::Diagnostic none = found;
  none.arguments.clear();
  EXPECT_EQ(none.argument("found"), "");
  EXPECT_STREQ(vsa::argumentNames(static_cast<DiagnosticId>(200)), "");
  EXPECT_STREQ(vsa::argumentNames(EndMark), "");
}

TEST(DiagnosticArguments, EndAtTheFirstNulAsTheMessageDoes) {
  const zn::String index = zn::String::copyOf(std::string_view("[1\0]", 4));
  try {
    zn::korvo_sdk::Emitter().fatal(zn::korvo_sdk::DiagnosticId::InvalidArrayIndex, index);
  } catch (const zn::korvo_sdk::DiagnosticError& error) {
    EXPECT_EQ(error.diagnostic().text.view(), "invalid input array index: [1");
    EXPECT_EQ(error.diagnostic().argument("index").view(), "[1");
  }
}

TEST(DiagnosticArguments, OfAMessageWithoutArgumentsAreEmpty) {
  zn::korvo_sdk::Diagnostic record;
  record.id = zn::korvo_sdk::DiagnosticId::CompressedDataEmpty;
  record.arguments.emplace_back("b");
  EXPECT_TRUE(record.argument("").isEmpty());
}

// The records that the plain entry points give to a sink have arguments, too.
TEST(DiagnosticArguments, AreInTheRecordsOfASink) {
  zn::korvo_sdk::Scene scene;
  const vsa_tools::ReadOutcome outcome = vsa_tools::captureRead([&] {
    return zn::korvo_sdk::impl::parseString(&scene, zn::String("a x; x.n = 1; x.n = 2.7; 42;"));
  });
  ASSERT_EQ(outcome.diagnostics.size(), 2U);
  const zn::korvo_sdk::Diagnostic& narrowing = outcome.diagnostics[0];
  ASSERT_EQ(narrowing.arguments.size(), 3U);
  EXPECT_TRUE(narrowing.argument("input") == "x.n");
  EXPECT_TRUE(narrowing.argument("output").isEmpty());
  EXPECT_TRUE(outcome.diagnostics[1].argument("token") == "42");
}

}  // namespace

}  // namespace vsa_tests
