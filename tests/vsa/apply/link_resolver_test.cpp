// Tests of the link resolution after the last statement: the calls of the scene and their order.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <string>
#include <vector>

#include <vsa/scene/node_type.h>
#include "tests/support/parser_fixture.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::HostInput;
using vsa_tests::HostNode;
using vsa_tests::HostOptions;
using vsa_tests::HostScene;
using vsa_tests::LoggedLines;
using vsa_tests::string;
using vsa_tests::thrownBy;
using Lines = std::vector<std::string>;

Token name(const std::string& characters) {
  return {Token::Type::Id, string(characters), 1, 1};
}

AssignInfo connection(const Lines& source) {
  AssignInfo info;
  info.isConnection = true;
  for (const std::string& part : source) info.sourcePath.push_back(name(part));
  return info;
}

AssignInfo reference(const Token& node) {
  AssignInfo info;
  info.isReference = true;
  info.referenceToken = node;
  return info;
}

/// A fixture with a parser, an input to link, and a node to link to.
class Resolve : public testing::Test {
 protected:
  Resolve() : input_(scene_.options, "a.color", AttrType::Null) {
    scene_.add("lamp", "b");
    parser_.scene = &scene_;
  }

  Lines connected(const Lines& source) {
    parser_.connections.setLink(&input_, connection(source));
    scene_.options.calls.clear();
    parser_.resolveConnections();
    return scene_.options.calls;
  }

  Lines referred(const Token& node) {
    parser_.references.setLink(&input_, reference(node));
    scene_.options.calls.clear();
    parser_.resolveReferences();
    return scene_.options.calls;
  }

  HostScene scene_;
  HostInput input_;
  VsaParser parser_;
  LoggedLines log_;
};

TEST_F(Resolve, EmptyTablesDoNothing) {
  parser_.resolveConnections();
  parser_.resolveReferences();
  EXPECT_EQ(scene_.options.calls, Lines{});
}

TEST_F(Resolve, ConnectsAndReleasesTheInput) {
  EXPECT_EQ(connected({"b", ".", "out"}), (Lines{"a.color.connect b.out", "a.color.release"}));
  EXPECT_EQ(log_.lines(), Lines{});
}

TEST_F(Resolve, TableKeepsItsEntries) {
  connected({"b", ".", "out"});
  EXPECT_NE(parser_.connections.findNode(&input_), nullptr);
}

TEST_F(Resolve, NullInAnyLetterCaseDisconnects) {
  EXPECT_EQ(connected({"null"}), (Lines{"a.color.disconnect", "a.color.release"}));
  scene_.options.calls.clear();
  EXPECT_EQ(connected({" NU", "ll\n"}), (Lines{"a.color.disconnect", "a.color.release"}));
}

struct WarningRow {
  Lines source;
  std::string warning;
};

TEST_F(Resolve, ConnectionsThatFail) {
  const WarningRow rows[] = {
      {{"b", ".", "out", ".", "r"}, "Invalid output: b.out.r."},
      {{".", "out"}, "Invalid output: .out."},
      {{}, "Invalid output: ."},
      {{"b"}, "Invalid output: b."},
      {{"nosuch", ".", "out"}, "Cannot connect nonexistent node nosuch to a.color."},
      {{"B", ".", "out"}, "Cannot connect nonexistent node B to a.color."},
      {{".", "b"}, "Invalid output: .b."},
      {{".", "nosuch", ".", "out"}, "Cannot connect nonexistent node nosuch to a.color."},
      {{".", "b", ".", "out", ".", "r"}, "Invalid output: .b.out.r."},
      {{"b", "[2]", ".", "out"}, "Cannot connect nonexistent node b[2] to a.color."},
  };
  for (const WarningRow& row : rows) {
    const LoggedLines log;
    scene_.options.calls.clear();
    EXPECT_EQ(connected(row.source), Lines{"a.color.release"});
    EXPECT_EQ(log.lines(), Lines{"warning: " + row.warning});
  }
}

TEST_F(Resolve, EmptyPartsOfASourceAreIgnored) {
  EXPECT_EQ(connected({"b", ".", ".", "out", "."})[0], "a.color.connect b.out");
}

TEST_F(Resolve, LeadingDotOfASourceIsIgnored) {
  EXPECT_EQ(connected({".", "b", ".", "out"}), (Lines{"a.color.connect b.out", "a.color.release"}));
  EXPECT_EQ(log_.lines(), Lines{});
}

TEST_F(Resolve, IndexIsPartOfTheOutputName) {
  EXPECT_EQ(connected({"b", ".", "out", "[2]"})[0], "a.color.connect b.out[2]");
}

TEST_F(Resolve, MissingOutputIsQuotedAsWritten) {
  scene_.options.refusesOutputs = true;
  EXPECT_EQ(connected({"b", ".", "out"}), Lines{"a.color.release"});
  EXPECT_EQ(log_.lines(), Lines{"warning: Cannot connect nonexistent output b.out to a.color."});
  for (const Lines& source : {Lines{".", "b", ".", "out"}, Lines{"b", ".", "out", "[2]"}}) {
    const LoggedLines log;
    connected(source);
    std::string written;
    for (const std::string& part : source) written += part;
    EXPECT_EQ(log.lines(),
              Lines{"warning: Cannot connect nonexistent output " + written + " to a.color."});
  }
}

TEST_F(Resolve, FormerOutputNames) {
  NodeType type;
  type.name = "resolveTestLamp";
  type.formerOutputs = {{"old", "new"}, {"gone", "nowhere"}};
  registerNodeType(type);
  scene_.add("resolveTestLamp", "l");
  EXPECT_EQ(connected({"l", ".", "old"})[0], "a.color.connect l.new");
  EXPECT_EQ(connected({"l", ".", "other"})[0], "a.color.connect l.other");
  scene_.options.refusesOutputs = true;
  connected({"l", ".", "gone"});
  EXPECT_EQ(log_.lines(), Lines{"warning: Cannot connect nonexistent output l.gone to a.color."});
  unregisterNodeType("resolveTestLamp");
}

TEST_F(Resolve, References) {
  EXPECT_EQ(referred(name("b")), (Lines{"a.color.setNode b", "a.color.release"}));
  scene_.options.calls.clear();
  EXPECT_EQ(referred({Token::Type::Null, "null", 1, 1}),
            (Lines{"a.color.setNode null", "a.color.release"}));
  EXPECT_EQ(log_.lines(), Lines{});
}

TEST_F(Resolve, ReferencesThatFail) {
  for (const char* const node : {"nosuch", "B", "b "}) {
    const LoggedLines log;
    scene_.options.calls.clear();
    EXPECT_EQ(referred(name(node)), Lines{"a.color.release"});
    EXPECT_EQ(log.lines(), Lines{"warning: Cannot assign nonexistent node " + std::string(node) +
                                 " to a.color."});
  }
}

// The low 8 bits of the addresses determine the order. Inputs with equal low bits are in the order
// of the text.
TEST_F(Resolve, OrderDependsOnTheAddresses) {
  constexpr std::size_t STEP = 64;
  constexpr std::size_t PLACES = 64;
  std::vector<unsigned char> memory(PLACES * STEP * 8 + 256);
  auto start = reinterpret_cast<std::uintptr_t>(memory.data());
  start += 256 - start % 256;
  static_assert(sizeof(HostInput) <= 6 * STEP);  // between the closest positions, 3 and 9
  std::vector<HostInput*> inputs;
  // Each row of 256 bytes has four positions. These inputs are at the fourth (two inputs), third,
  // second, first and second position of their rows.
  for (const std::size_t place : {35UL, 3UL, 26UL, 9UL, 16UL, 41UL}) {
    void* const at = reinterpret_cast<void*>(start + place * STEP);
    inputs.push_back(new (at)
                         HostInput(scene_.options, "n.i" + std::to_string(place), AttrType::Null));
    parser_.connections.setLink(inputs.back(), connection({"b", ".", "out"}));
  }
  scene_.options.calls.clear();
  parser_.resolveConnections();
  Lines order;
  for (const std::size_t place : {16UL, 9UL, 41UL, 26UL, 35UL, 3UL})
    order.push_back("n.i" + std::to_string(place));
  Lines expected;
  for (const std::string& input : order) expected.push_back(input + ".connect b.out");
  for (const std::string& input : order) expected.push_back(input + ".release");
  EXPECT_EQ(scene_.options.calls, expected);
  for (HostInput* const input : inputs) input->~HostInput();
}

// --- with whole texts ---

Lines callsOf(const std::string& bytes, bool expectedResult = true) {
  HostScene scene;
  scene.add("lamp", "a");
  const LoggedLines log;
  EXPECT_EQ(VsaParser().parse(&scene, string(bytes)), expectedResult);
  return scene.options.calls;
}

TEST(ResolveText, ConnectionsBeforeReferences) {
  EXPECT_EQ(callsOf("a.color = a; a.color |= b.outColor; lamp b;"),
            (Lines{"a.createInput color Null", "a.color.retain", "a.color.retain",
                   "createNode lamp b <>", "a.color.connect b.outColor", "a.color.release",
                   "a.color.setNode a", "a.color.release"}));
}

TEST(ResolveText, LaterLinkReplacesTheEarlierWithoutRetaining) {
  EXPECT_EQ(callsOf("a.color |= a.one; a.color |= a.two; a.color |= null;"),
            (Lines{"a.createInput color Null", "a.color.retain", "a.color.disconnect",
                   "a.color.release"}));
  EXPECT_EQ(callsOf("a.color = nosuch; a.color = a;"),
            (Lines{"a.createInput color Null", "a.color.retain", "a.color.setNode a",
                   "a.color.release"}));
}

TEST(ResolveText, PlainValueDoesNotCancelAConnection) {
  EXPECT_EQ(callsOf("a.x = 1; a.x |= a.out; a.x = 2;"),
            (Lines{"a.createInput x Int", "a.x.assign Int 1", "a.x.retain", "a.x.assign Int 2",
                   "a.x.connect a.out", "a.x.release"}));
}

// A parse that fails does not resolve links. Therefore the inputs are retained but never released.
TEST(ResolveText, FailedParseResolvesNoLinks) {
  EXPECT_EQ(callsOf("a.x |= a.out; a.y = a; 42;", false),
            (Lines{"a.createInput x Null", "a.x.retain", "a.createInput y Null", "a.y.retain"}));
}

TEST(ResolveText, FailedLinkDoesNotStopOthers) {
  HostScene scene;
  scene.add("lamp", "a");
  const LoggedLines log;
  EXPECT_TRUE(VsaParser().parse(&scene, String("a.x |= no.out; a.y = no; a.z = a;")));
  Lines lines = log.lines();
  EXPECT_EQ(lines, (Lines{"warning: Cannot connect nonexistent node no to a.x.",
                          "warning: Cannot assign nonexistent node no to a.y."}));
  const Lines& calls = scene.options.calls;
  EXPECT_NE(std::find(calls.begin(), calls.end(), "a.z.setNode a"), calls.end());
}

// There are two tables, one of connections and one of references. Each has at most one pending link
// for each input: that of the last such statement that assigns to the input.
TEST(ResolveText, TablesContainTheLastStatementOfAnInput) {
  vsa_tests::PrimedParser primed("a.x |= a.one; a.x |= a.two; a.y = a;");
  HostNode* const node = primed.scene.add("lamp", "a");
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(primed.parser.parseAssign());
  const auto* const filed = primed.parser.connections.findNode(node->input("x"));
  ASSERT_NE(filed, nullptr);
  EXPECT_STREQ(filed->value.source, "a");
  EXPECT_EQ(vsa_tests::text(filed->value.output), "two");
  EXPECT_EQ(node->input("x")->held, 1);
  const auto* const referring = primed.parser.references.findNode(node->input("y"));
  ASSERT_NE(referring, nullptr);
  EXPECT_STREQ(referring->value.source, "a");
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
