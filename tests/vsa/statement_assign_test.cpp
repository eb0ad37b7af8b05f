// Path resolution and assignment: every call on a host's scene, and scenes that refuse calls.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <vsa/scene/node_type.h>
#include "tests/support/host_scene.h"
#include "tests/support/parser_fixture.h"
#include "vsa/apply/path_resolver.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::HostInput;
using vsa_tests::HostNode;
using vsa_tests::HostScene;
using vsa_tests::LoggedLines;
using vsa_tests::PrimedParser;
using vsa_tests::string;
using Lines = std::vector<std::string>;

/// A scene with a node n that texts are read into.
class Assign : public testing::Test {
 protected:
  Assign() { node_ = scene_.add("lamp", "n"); }

  bool read(const std::string& bytes) {
    scene_.options.calls.clear();
    return VsaParser().parse(&scene_, string(bytes));
  }

  /// The scene calls of a text that parses without errors.
  Lines calls(const std::string& bytes) {
    EXPECT_TRUE(read(bytes)) << bytes;
    return scene_.options.calls;
  }

  /// The log of a text that fails.
  Lines errors(const std::string& bytes) {
    const LoggedLines log;
    EXPECT_FALSE(read(bytes)) << bytes;
    return log.lines();
  }

  static HostInput* element(HostInput* array, int index) {
    return static_cast<HostInput*>(array->element(static_cast<std::uint64_t>(index)));
  }

  HostScene scene_;
  HostNode* node_;
};

TEST_F(Assign, ReturnsFalseAndConsumesNothingWithoutAPath) {
  PrimedParser primed("42;");
  EXPECT_FALSE(primed.parser.parseAssign());
  EXPECT_EQ(primed.ahead(), "42 ; EOF");
}

TEST_F(Assign, NoOperatorAfterThePath) {
  EXPECT_EQ(errors("n.a;"), Lines{"error: PARSE ERROR (1,3): unrecognized token ';'.."});
  EXPECT_EQ(errors("n.a. = 1;"), Lines{"error: PARSE ERROR (1,3): unrecognized token '.'.."});
}

// --- which inputs are requested ---

TEST_F(Assign, RequiredTypeDependsOnTheRestOfThePath) {
  EXPECT_EQ(calls("n.a = 1;"), (Lines{"n.createInput a Int", "n.a.assign Int 1"}));
  EXPECT_EQ(calls("n.b[0] = 1;"),
            (Lines{"n.createArray b Int", "n.b.appendElement", "n.b[0].assign Int 1"}));
  EXPECT_EQ(calls("n.c[0][0] = 1;"),
            (Lines{"n.createArray c Array", "n.c.appendElement", "n.c[0].set Array Int",
                   "n.c[0].appendElement", "n.c[0][0].assign Int 1"}));
  EXPECT_EQ(calls("n.d[0].e = 1;"), (Lines{"n.createArray d Object", "n.d.appendElement",
                                           "n.d[0].createInput e Int", "n.d[0].e.assign Int 1"}));
  EXPECT_EQ(calls("n.f.g = 1;"),
            (Lines{"n.createInput f Object", "n.f.createInput g Int", "n.f.g.assign Int 1"}));
  EXPECT_EQ(calls("n.h.i[0] = 1;"), (Lines{"n.createInput h Object", "n.h.createArray i Int",
                                           "n.h.i.appendElement", "n.h.i[0].assign Int 1"}));
}

TEST_F(Assign, LinkRequiresNoType) {
  EXPECT_EQ(calls("n.a |= n.o;")[0], "n.createInput a Null");
  EXPECT_EQ(calls("n.b = null;")[0], "n.createInput b Null");
  EXPECT_EQ(calls("n.c[0] = n;")[0], "n.createArray c Null");
  EXPECT_EQ(calls("n.d = {1};"), (Lines{"n.createInput d Object", "n.d.assign Object"}));
}

TEST_F(Assign, ExistingInputIsReused) {
  read("n.a = 1; n.o.p = 1; n.l[0] = 1;");
  EXPECT_EQ(calls("n.a = 2; n.o.p = 2; n.l[0] = 2;"),
            (Lines{"n.a.assign Int 2", "n.o.p.assign Int 2", "n.l[0].assign Int 2"}));
}

TEST_F(Assign, FormerNamesAreTranslatedEverywhere) {
  NodeType type;
  type.name = "assignTestLamp";
  type.formerInputs = {{"old", "new"}, {"[9]", "[1]"}};
  registerNodeType(type);
  scene_.add("assignTestLamp", "l");
  EXPECT_EQ(calls("l.old = 1;"), (Lines{"l.createInput new Int", "l.new.assign Int 1"}));
  EXPECT_EQ(calls("l.o.old = 1;"),
            (Lines{"l.createInput o Object", "l.o.createInput new Int", "l.o.new.assign Int 1"}));
  // Indices are translated too. Messages quote the original text.
  EXPECT_EQ(calls("l.i[9] = 1;"), (Lines{"l.createArray i Int", "l.i.appendElement",
                                         "l.i.appendElement", "l.i[1].assign Int 1"}));
  EXPECT_EQ(calls("n.old = 1;")[0], "n.createInput old Int");
  unregisterNodeType("assignTestLamp");
}

TEST_F(Assign, Indices) {
  EXPECT_EQ(calls("n.a[2] = 1;"),
            (Lines{"n.createArray a Int", "n.a.appendElement", "n.a.appendElement",
                   "n.a.appendElement", "n.a[2].assign Int 1"}));
  EXPECT_EQ(calls("n.a[*] = 1;"), (Lines{"n.a.appendElement", "n.a[3].assign Int 1"}));
  EXPECT_EQ(calls("n.a[ 1 ] = 1;"), Lines{"n.a[1].assign Int 1"});
  EXPECT_EQ(calls("n.a[007] = 1;").back(), "n.a[7].assign Int 1");
  EXPECT_EQ(errors("n.a[] = 1;"),
            Lines{"error: PARSE ERROR (1,10): invalid input array index: []."});
  EXPECT_EQ(errors("n.a[ * ] = 1;"),
            Lines{"error: PARSE ERROR (1,13): invalid input array index: [ * ]."});
  EXPECT_EQ(errors("n.a[1 2] = 1;"),
            Lines{"error: PARSE ERROR (1,13): invalid input array index: [1 2]."});
  EXPECT_EQ(errors("n.a[18446744073709551616] = 1;"),
            Lines{"error: PARSE ERROR (1,30): invalid input array index: [18446744073709551616]."});
  EXPECT_EQ(scene_.options.calls, Lines{});
}

// A number does not skip unprintable characters, and the message contains them.
TEST_F(Assign, IndicesWithUnprintableCharacters) {
  using namespace std::string_literals;
  EXPECT_EQ(errors("n.a[\x01 2] = 1;"),
            Lines{"error: PARSE ERROR (1,13): invalid input array index: [\x01 2]."});
  EXPECT_EQ(errors("n.b[2\x7f] = 1;"),
            Lines{"error: PARSE ERROR (1,12): invalid input array index: [2\x7f]."});
  EXPECT_EQ(calls("n.c[\t1\r\n] = 1;").back(), "n.c[1].assign Int 1");
  // The token's text ends at the NUL.
  EXPECT_EQ(calls("n.d[2\0 9] = 1;"s).back(), "n.d[2].assign Int 1");
  EXPECT_EQ(errors("n.e[\0002] = 1;"s),
            Lines{"error: PARSE ERROR (1,12): invalid input array index: [."});
}

// A reference after a literal that does not convert requires the literal's type.
TEST_F(Assign, ReferenceAfterAFailedConversion) {
  EXPECT_EQ(calls("n.a = 5U n;"),
            (Lines{"n.createInput a Int", "n.a.retain", "n.a.setNode n", "n.a.release"}));
  EXPECT_EQ(calls("n.b[0] = vec3(1 2) n;")[0], "n.createArray b Vec3");
  EXPECT_EQ(errors("n.b[0] = 5U n;"),
            Lines{"error: TYPE ERROR (1,14): cannot assign Int to Array @ n.b."});
}

// --- refusals ---

TEST_F(Assign, NodeRefusesAnInput) {
  scene_.options.refusesInputs = true;
  EXPECT_EQ(errors("n.a = 1;"), Lines{"error: PARSE ERROR (1,8): input 'n.a' not found.."});
  EXPECT_EQ(errors("n.a.b |= n.o;"), Lines{"error: PARSE ERROR (1,13): input 'n.a.b' not found.."});
}

TEST_F(Assign, NodeRefusesAnArray) {
  scene_.options.refusesArrays = true;
  EXPECT_EQ(errors("n.a[0].b = 1;"),
            Lines{"error: PARSE ERROR (1,13): input 'n.a[0].b' not found.."});
  EXPECT_EQ(errors("lamp m: .a[0] = n;"),
            Lines{"error: PARSE ERROR (1,18): input 'm.a[0]' not found.."});
}

TEST_F(Assign, InputRefusesAMember) {
  scene_.options.refusesMembers = true;
  EXPECT_EQ(errors("n.a.b = 1;"), Lines{"error: PARSE ERROR (1,10): input 'n.a.b' not found.."});
  EXPECT_EQ(scene_.options.calls, (Lines{"n.createInput a Object", "n.a.createInput b Int"}));
  EXPECT_EQ(errors("n.a.c[0] = 1;"),
            Lines{"error: PARSE ERROR (1,13): input 'n.a.c[0]' not found.."});
  EXPECT_EQ(scene_.options.calls, Lines{"n.a.createArray c Int"});
}

TEST_F(Assign, ArrayAddsNoElement) {
  scene_.options.refusesElements = true;
  EXPECT_EQ(errors("n.a[7] = 1;"), Lines{"error: PARSE ERROR (1,11): input 'n.a[7]' not found.."});
  EXPECT_EQ(scene_.options.calls, (Lines{"n.createArray a Int", "n.a.appendElement"}));
}

TEST_F(Assign, ArrayReturnsNoElement) {
  scene_.options.losesElements = true;
  EXPECT_EQ(errors("n.a[0] = 1;"), Lines{"error: PARSE ERROR (1,11): input 'n.a[0]' not found.."});
}

// hasInput returns true and input returns null: the reader creates the input.
TEST_F(Assign, ExistingInputThatIsNotReturnedIsCreated) {
  read("n.a = 1; n.o.p = 1; n.l[0] = 1;");
  scene_.options.losesInputs = true;
  EXPECT_EQ(calls("n.a = 2;"), (Lines{"n.createInput a Int", "n.a.assign Int 2"}));
  EXPECT_EQ(calls("n.o.p = 2;"),
            (Lines{"n.createInput o Object", "n.o.createInput p Int", "n.o.p.assign Int 2"}));
  EXPECT_EQ(calls("n.l[0] = 2;"), (Lines{"n.createArray l Int", "n.l[0].assign Int 2"}));
}

TEST_F(Assign, ExistingInputThatIsNeitherReturnedNorCreated) {
  read("n.a = 1; n.o.p = 1; n.l[0] = 1;");
  scene_.options.losesInputs = true;
  scene_.options.refusesInputs = scene_.options.refusesArrays = true;
  EXPECT_EQ(errors("n.a = 2;"), Lines{"error: PARSE ERROR (1,8): input 'n.a' not found.."});
  EXPECT_EQ(errors("n.l[0] = 2;"), Lines{"error: PARSE ERROR (1,11): input 'n.l[0]' not found.."});
  EXPECT_EQ(errors("n.a |= n.o;"), Lines{"error: PARSE ERROR (1,11): input 'n.a' not found.."});
  scene_.options.refusesInputs = false;
  scene_.options.refusesMembers = true;
  EXPECT_EQ(errors("n.o.p = 2;"), Lines{"error: PARSE ERROR (1,10): input 'n.o.p' not found.."});
}

// --- the order of the queries about a target ---

TEST_F(Assign, TargetIsQueriedInOrder) {
  HostInput* const input = node_->add("a", AttrType::Int);
  const auto queries = [&](const std::string& bytes) {
    const LoggedLines log;
    scene_.options.queries.clear();
    EXPECT_TRUE(read(bytes)) << bytes;
    return scene_.options.queries;
  };
  const Lines all = {"n.a.isArray", "n.a.refusesValues", "n.a.holdsBuffer"};
  EXPECT_EQ(queries("n.a = 1;"), all);
  EXPECT_EQ(queries("n.a = 1.5;"), all);
  EXPECT_EQ(queries("n.a = \"x\";"), all);
  EXPECT_EQ(queries("n.a |= n.o;"), Lines{});
  EXPECT_EQ(queries("n.a = n;"), Lines{});
  input->kind = AttrType::Buffer;
  EXPECT_EQ(queries("n.a = 1;"), all);
  EXPECT_EQ(queries("n.a = byte[1] {1};"),
            (Lines{"n.a.isArray", "n.a.refusesValues", "n.a.holdsBuffer", "n.a.bufferType"}));
  input->refuses = true;
  EXPECT_EQ(queries("n.a = 1;"), (Lines{"n.a.isArray", "n.a.refusesValues"}));
  input->kind = AttrType::Array;
  EXPECT_EQ(queries("n.a = 1;"), Lines{"n.a.isArray"});
}

// The links of an input are stored by its address, even after its node is removed.
TEST_F(Assign, InputReturnedAgainAfterNodeRemoval) {
  scene_.options.forgetsInputs = true;
  EXPECT_EQ(calls("n.a |= x.one; remove m; n.a |= null;"),
            (Lines{"n.createInput a Null", "n.a.retain", "removeNode m", "n.createInput a Null",
                   "n.a.disconnect", "n.a.release"}));
}

// A scene may hide an input and later return the same object as a new one. Each link is looked up
// in its table first, so the input has one entry, is retained once, and its last link is used.
TEST_F(Assign, HiddenInputHasOneEntry) {
  scene_.options.forgetsInputs = true;
  EXPECT_EQ(calls("n.a |= x.one; n.a |= null;"),
            (Lines{"n.createInput a Null", "n.a.retain", "n.createInput a Null", "n.a.disconnect",
                   "n.a.release"}));
  scene_.options.calls.clear();
  EXPECT_EQ(calls("n.b = n; n.b = null;"),
            (Lines{"n.createInput b Null", "n.b.retain", "n.createInput b Null", "n.b.setNode null",
                   "n.b.release"}));
}

// The names of every element are translated by the type of the node, declared or not.
TEST_F(Assign, NodeTypeIsRequestedForEveryElement) {
  EXPECT_EQ(calls("n.a[1].b = 1;").back(), "n.a[1].b.assign Int 1");
  EXPECT_EQ(scene_.options.typesAsked, 3);
}

TEST_F(Assign, WithNode) {
  EXPECT_EQ(errors(".radius = 1;"),
            Lines{"error: PARSE ERROR (1,12): 'with' node not set (input: .radius)."});
  EXPECT_EQ(errors("\n.a[0].b\n= 1\n;"),
            Lines{"error: PARSE ERROR (4,1): 'with' node not set (input: .a[0].b)."});
  EXPECT_EQ(calls("lamp n: .a = 1;"), (Lines{"n.createInput a Int", "n.a.assign Int 1"}));
}

TEST_F(Assign, MissingNodes) {
  EXPECT_EQ(errors("nosuch.a[1] = 1;"),
            Lines{"error: PARSE ERROR (1,16): node 'nosuch.a[1]' not found ."});
  EXPECT_EQ(errors("nosuch.a |= n.o;"),
            Lines{"error: PARSE ERROR (1,16): node 'nosuch.a' not found ."});
  // The right-hand side is parsed first.
  EXPECT_EQ(errors("nosuch.a = ;"),
            Lines{"error: BAD TOKEN (1,12): expected '(scalar|buffer|reference)', found ';'."});
}

// --- inputs in the middle of a path ---

TEST_F(Assign, IntermediateInputMustBeObjectOrNull) {
  node_->add("x", AttrType::Null);
  EXPECT_EQ(calls("n.x.y = 1;"), (Lines{"n.x.createInput y Int", "n.x.y.assign Int 1"}));
  node_->add("i", AttrType::Int);
  EXPECT_EQ(errors("n.i.y = 1;"),
            Lines{"error: TYPE ERROR (1,10): cannot assign Object to Int @ n.i."});
  EXPECT_EQ(errors("n.i[0] = 1;"),
            Lines{"error: TYPE ERROR (1,11): cannot assign Array to Int @ n.i."});
  node_->add("b", AttrType::Buffer);
  EXPECT_EQ(errors("n.b[0] = 1;"),
            Lines{"error: TYPE ERROR (1,11): cannot assign Array to Buffer @ n.b."});
  EXPECT_EQ(errors("n.b.y |= n.o;"),
            Lines{"error: TYPE ERROR (1,13): cannot assign Object to Buffer @ n.b."});
}

TEST_F(Assign, IntermediateArrayNeedsAMatchingIndex) {
  node_->add("a", AttrType::Array)->elements = AttrType::Int;
  EXPECT_EQ(errors("n.a.y = 1;"),
            Lines{"error: TYPE ERROR (1,10): cannot assign Object to Array @ n.a."});
  EXPECT_EQ(errors("n.a[0] = 2.5;"),
            Lines{"error: TYPE ERROR (1,13): cannot assign Real to Array @ n.a."});
  EXPECT_EQ(errors("n.a[0].y = 1;"),
            Lines{"error: TYPE ERROR (1,13): cannot assign Object to Array @ n.a."});
  EXPECT_EQ(errors("n.a[0][0] = 1;"),
            Lines{"error: TYPE ERROR (1,14): cannot assign Array to Array @ n.a."});
  // A link requires no element type.
  EXPECT_EQ(calls("n.a[0] = n;")[0], "n.a.appendElement");
}

TEST_F(Assign, NestedArrayWithAnotherElementType) {
  read("n.a[0][0] = 1;");
  EXPECT_EQ(errors("n.a[0][1] = 2.5;"),
            Lines{"error: TYPE ERROR (1,16): cannot assign Real to Array @ n.a[0]."});
  // The element type is checked before the index.
  EXPECT_EQ(errors("n.a[0][] = 2.5;"),
            Lines{"error: TYPE ERROR (1,15): cannot assign Real to Array @ n.a[0]."});
}

TEST_F(Assign, UntypedArrayGetsTheTypeOfItsFirstElement) {
  node_->add("x", AttrType::Array);
  // In the middle of a path, an untyped array accepts only links: its element type is not the
  // required one.
  EXPECT_EQ(errors("n.x[0] = 1;"),
            Lines{"error: TYPE ERROR (1,11): cannot assign Int to Array @ n.x."});
  EXPECT_EQ(calls("n.x[0] = n;"), (Lines{"n.x.set Array Null", "n.x.appendElement", "n.x[0].retain",
                                         "n.x[0].setNode n", "n.x[0].release"}));
}

// The type decides how elements are looked up. isArray() decides which type check is made in the
// middle of a path.
TEST_F(Assign, ArrayIsIndexedEvenIfIsArrayIsFalse) {
  HostInput* const array = node_->add("a", AttrType::Array);
  array->deniesBeingArray = true;
  EXPECT_EQ(calls("n.a[0] = 1;"),
            (Lines{"n.a.set Array Int", "n.a.appendElement", "n.a[0].assign Int 1"}));
  EXPECT_EQ(errors("n.a[1] = 2.5;"),
            Lines{"error: TYPE ERROR (1,13): cannot assign Real to Array @ n.a."});
  EXPECT_EQ(errors("n.a.x = 1;"),
            Lines{"error: TYPE ERROR (1,10): cannot assign Object to Array @ n.a."});
  EXPECT_EQ(scene_.options.calls, Lines{});
}

TEST_F(Assign, UntypedNestedArrayGetsTheFirstType) {
  EXPECT_EQ(calls("n.a[2][1] = true;"),
            (Lines{"n.createArray a Array", "n.a.appendElement", "n.a.appendElement",
                   "n.a.appendElement", "n.a[2].set Array Bool", "n.a[2].appendElement",
                   "n.a[2].appendElement", "n.a[2][1].assign Bool true"}));
  EXPECT_EQ(calls("n.a[0][0].x = 1;"),
            (Lines{"n.a[0].set Array Object", "n.a[0].appendElement", "n.a[0][0].createInput x Int",
                   "n.a[0][0].x.assign Int 1"}));
  EXPECT_EQ(calls("n.a[1][0] |= n.o;"),
            (Lines{"n.a[1].set Array Null", "n.a[1].appendElement", "n.a[1][0].retain",
                   "n.a[1][0].connect n.o", "n.a[1][0].release"}));
}

// --- the target ---

TEST_F(Assign, TargetsThatRejectPlainValues) {
  const LoggedLines log;
  node_->add("a", AttrType::Array);
  node_->add("r", AttrType::Int)->refuses = true;
  EXPECT_EQ(calls("n.a = 1; n.a = \"a text of many characters\"; n.a = [2]; n.a = int32[0]{};"),
            Lines{});
  EXPECT_EQ(calls("n.r = 1; n.r = vec2(1 2);"), Lines{});
  EXPECT_EQ(log.lines(), (Lines{"error: TYPE ERROR (1,8): expected Array @ n.a but found 1.",
                                "error: TYPE ERROR (1,43): expected Array @ n.a but found "
                                "\"a text of many char....",
                                "error: TYPE ERROR (1,54): expected Array @ n.a but found [2].",
                                "error: TYPE ERROR (1,72): expected Array @ n.a but found int32[].",
                                "error: TYPE ERROR (1,8): expected Int @ n.r but found 1.",
                                "error: TYPE ERROR (1,25): expected Int @ n.r but found vec2."}));
}

TEST_F(Assign, ABufferThatRefusesValuesQuotesTheValue) {
  node_->add("b", AttrType::Buffer)->refuses = true;
  const LoggedLines log;
  EXPECT_EQ(calls("n.b = byte[0] {}; n.b = 5;"), Lines{});
  EXPECT_EQ(log.lines(), (Lines{"error: TYPE ERROR (1,17): expected Buffer @ n.b but found byte[].",
                                "error: TYPE ERROR (1,26): expected Buffer @ n.b but found 5."}));
}

TEST_F(Assign, LinksAreAcceptedByEveryInput) {
  node_->add("a", AttrType::Array);
  node_->add("r", AttrType::Int)->refuses = true;
  node_->add("b", AttrType::Buffer);
  const LoggedLines log;
  EXPECT_TRUE(read("n.a |= n.o; n.r = n; n.b |= n.o;"));
  EXPECT_EQ(log.lines(), Lines{});
}

TEST_F(Assign, BufferTargets) {
  node_->add("b", AttrType::Buffer);
  const LoggedLines log;
  EXPECT_EQ(calls("n.b = 1; n.b = \"x\"; n.b = {};"), Lines{});
  EXPECT_EQ(calls("n.b = float[1] {1};"), Lines{"n.b.assign Buffer Float 1"});
  EXPECT_EQ(calls("n.b = float[0] {};"), Lines{"n.b.assign Buffer Float 0"});
  EXPECT_EQ(calls("n.b = double[0] {};"), Lines{});
  EXPECT_EQ(log.lines(),
            (Lines{"error: TYPE ERROR (1,8): expected Buffer @ n.b but found Int.",
                   "error: TYPE ERROR (1,19): expected Buffer @ n.b but found String.",
                   "error: TYPE ERROR (1,29): expected Buffer @ n.b but found Object.",
                   "error: TYPE ERROR (1,19): expected Buffer @ n.b but found Double."}));
}

TEST_F(Assign, ConversionsWarnBeforeAssigning) {
  node_->add("i", AttrType::Int);
  node_->add("b", AttrType::Bool);
  node_->add("s", AttrType::String);
  const LoggedLines log;
  EXPECT_EQ(calls("n.i = 2.7;"), Lines{"n.i.assign Int 3"});
  EXPECT_EQ(calls("n.b = 2;"), Lines{"n.b.assign Bool true"});
  EXPECT_EQ(calls("n.b = 2.5; n.s = 1; n.i = \"1\"; n.i = {};"), Lines{});
  EXPECT_EQ(log.lines(), (Lines{"warning: TYPE WARNING (1,10): narrowing Real to Int @ n.i.",
                                "warning: TYPE WARNING (1,8): narrowing Int to Bool @ n.b.",
                                "error: TYPE ERROR (1,10): expected Bool @ n.b but found Real.",
                                "error: TYPE ERROR (1,19): expected String @ n.s but found Int.",
                                "error: TYPE ERROR (1,30): expected Int @ n.i but found String.",
                                "error: TYPE ERROR (1,40): expected Int @ n.i but found Object."}));
}

TEST_F(Assign, UntypedBuffersGetATypeBeforeTheValueIsAssigned) {
  EXPECT_EQ(calls("n.a[1] = float[0] {};"),
            (Lines{"n.createArray a Buffer", "n.a.appendElement", "n.a.appendElement",
                   "n.a[0].set Buffer Float", "n.a[1].set Buffer Float",
                   "n.a[1].assign Buffer Float 0"}));
  EXPECT_EQ(calls("n.a[3] = byte[0] {};"),
            (Lines{"n.a.appendElement", "n.a.appendElement", "n.a[2].set Buffer Byte",
                   "n.a[3].set Buffer Byte", "n.a[3].assign Buffer Byte 0"}));
  // A rejected value sets no type.
  EXPECT_EQ(calls("n.a[5] |= n.o;").size(), 5U);
  const LoggedLines log;
  EXPECT_EQ(calls("n.a[0] = byte[0] {};"), Lines{});
  EXPECT_EQ(log.lines(),
            Lines{"error: TYPE ERROR (1,20): expected Buffer @ n.a[0] but found Byte."});
  EXPECT_EQ(calls("n.a[0] = float[0] {};"),
            (Lines{"n.a[4].set Buffer Float", "n.a[5].set Buffer Float",
                   "n.a[0].assign Buffer Float 0"}));
}

// An element of type Array whose isArray() is false accepts a plain value.
TEST_F(Assign, UntypedNestedArraysGetATypeBeforeTheValueIsAssigned) {
  HostInput* const array = node_->add("a", AttrType::Array);
  array->elements = AttrType::Array;
  for (int i = 0; i < 4; ++i) array->appendElement();
  element(array, 1)->deniesBeingArray = true;
  element(array, 2)->elements = AttrType::Real;
  EXPECT_EQ(calls("n.a[1] = [5];"), (Lines{"n.a[0].set Array Null", "n.a[1].set Array Null",
                                           "n.a[3].set Array Null", "n.a[1].assign Array"}));
  // They are still untyped, so the next value sets them again.
  EXPECT_EQ(calls("n.a[1] = [];").size(), 4U);
  const LoggedLines log;
  EXPECT_EQ(calls("n.a[0] = [5];"), Lines{});
  EXPECT_EQ(log.lines(), Lines{"error: TYPE ERROR (1,13): expected Array @ n.a[0] but found [5]."});
}

// The earlier link of an input is found among very many pending links.
TEST_F(Assign, LaterLinkReplacesTheEarlierAmongMany) {
  std::string earlier;
  std::string later;
  for (int i = 0; i < 500; ++i) {
    const std::string number = std::to_string(i);
    if (i % 2 == 0) node_->add("r" + number, AttrType::Null);  // created before it has a link
    earlier += "n.r" + number + " = nosuch; n.c" + number + " |= nosuch.out;";
    later += "n.r" + number + " = n; n.c" + number + " |= n.out;";
  }
  const LoggedLines log;
  const Lines lines = calls(earlier + later);
  EXPECT_EQ(log.lines(), Lines{});
  const auto countOf = [&](const std::string& end) {
    return std::count_if(lines.begin(), lines.end(),
                         [&](const std::string& line) { return line.ends_with(end); });
  };
  EXPECT_EQ(countOf(".retain"), 1000);
  EXPECT_EQ(countOf(".release"), 1000);
  EXPECT_EQ(countOf(".setNode n"), 500);
  EXPECT_EQ(countOf(".connect n.out"), 500);
}

// A host may change its arrays during a parse. Each assignment uses the current untyped elements.
class ChangingArray : public Assign {
 protected:
  ChangingArray() {
    array_ = node_->add("a", AttrType::Array);
    array_->elements = AttrType::Buffer;
    node_->add("now", AttrType::Int);
  }

  /// The scene calls of the text when the host calls `change` at each `n.now = 1;`.
  template <class Change>
  Lines callsWhen(const std::string& bytes, const Change& change) {
    scene_.options.onCall = [&](const std::string& line) {
      if (line == "n.now.assign Int 1") change();
    };
    Lines lines = calls(bytes);
    scene_.options.onCall = nullptr;
    return lines;
  }

  HostInput* array_;
};

TEST_F(ChangingArray, ShrinksAndGrows) {
  EXPECT_EQ(
      callsWhen("n.a[2] = byte[0]{}; n.now = 1; n.a[2] = byte[0]{};", [&] { array_->shrinkTo(1); }),
      (Lines{"n.a.appendElement", "n.a.appendElement", "n.a.appendElement",
             "n.a[0].set Buffer Byte", "n.a[1].set Buffer Byte", "n.a[2].set Buffer Byte",
             "n.a[2].assign Buffer Byte 0", "n.now.assign Int 1", "n.a.appendElement",
             "n.a.appendElement", "n.a[1].set Buffer Byte", "n.a[2].set Buffer Byte",
             "n.a[2].assign Buffer Byte 0"}));
}

TEST_F(ChangingArray, ShrinksToTheAssignedElement) {
  EXPECT_EQ(
      callsWhen("n.a[2] = byte[0]{}; n.now = 1; n.a[0] = byte[0]{};", [&] { array_->shrinkTo(1); })
          .back(),
      "n.a[0].assign Buffer Byte 0");
}

TEST_F(ChangingArray, ElementsLoseTheirType) {
  const Lines lines = callsWhen("n.a[2] = byte[0]{}; n.now = 1; n.a[1] = float[0]{};", [&] {
    for (int i = 0; i < 3; ++i) element(array_, i)->buffers = DataType::Null;
  });
  ASSERT_EQ(lines.size(), 12U);
  EXPECT_EQ(Lines(lines.begin() + 7, lines.end()),
            (Lines{"n.now.assign Int 1", "n.a[0].set Buffer Float", "n.a[1].set Buffer Float",
                   "n.a[2].set Buffer Float", "n.a[1].assign Buffer Float 0"}));
}

TEST_F(ChangingArray, CountIsZeroWhileAnElementIsTyped) {
  scene_.options.onCall = [&](const std::string& line) {
    if (line == "n.a[0].set Buffer Byte") array_->countsNone = true;
    if (line == "n.now.assign Int 1") array_->countsNone = false;
  };
  EXPECT_EQ(calls("n.a[0] = byte[0]{}; n.now = 1; n.a[1] = byte[0]{};"),
            (Lines{"n.a.appendElement", "n.a[0].set Buffer Byte", "n.a[0].assign Buffer Byte 0",
                   "n.now.assign Int 1", "n.a.appendElement", "n.a[1].set Buffer Byte",
                   "n.a[1].assign Buffer Byte 0"}));
}

TEST_F(ChangingArray, ElementTypeChanges) {
  const Lines lines = callsWhen("n.a[1] = byte[0]{}; n.now = 1; n.a[3] = 1;", [&] {
    array_->shrinkTo(0);
    array_->elements = AttrType::Int;
  });
  EXPECT_EQ(Lines(lines.begin() + 5, lines.end()),
            (Lines{"n.now.assign Int 1", "n.a.appendElement", "n.a.appendElement",
                   "n.a.appendElement", "n.a.appendElement", "n.a[3].assign Int 1"}));
}

class Colours final : public interfaces::IEnumeration {
 public:
  explicit Colours(bool isEmpty) : isEmpty_(isEmpty) {}
  bool isEmpty() const override { return isEmpty_; }
  const void* find(const String& name) const override { return name == "red" ? this : nullptr; }

 private:
  bool isEmpty_;
};

/// An enumeration that adds each assigned value of its input.
class ExtensibleColours final : public interfaces::IEnumeration {
 public:
  explicit ExtensibleColours(const std::vector<std::string>& calls) : calls_(calls) {}
  bool isEmpty() const override { return false; }
  const void* find(const String& name) const override {
    const std::string assigned = "n.colour.assign String " + vsa_tests::text(name);
    return std::count(calls_.begin(), calls_.end(), assigned) != 0 ? this : nullptr;
  }

 private:
  const std::vector<std::string>& calls_;
};

// The enumeration is checked after the assignment, with the assigned value.
TEST_F(Assign, EnumerationMayAddTheAssignedValue) {
  const ExtensibleColours colours(scene_.options.calls);
  node_->add("colour", AttrType::String)->enumeration = &colours;
  const LoggedLines log;
  EXPECT_EQ(calls(R"(n.colour = "deep \"blue\"";)"), Lines{"n.colour.assign String deep \"blue\""});
  EXPECT_EQ(log.lines(), Lines{});
}

TEST_F(Assign, EnumerationsWarnAfterTheAssignment) {
  const Colours colours(false);
  const Colours none(true);
  HostInput* const input = node_->add("e", AttrType::String);
  const LoggedLines log;
  input->enumeration = &none;
  EXPECT_EQ(calls("n.e = \"mauve\";"), Lines{"n.e.assign String mauve"});
  input->enumeration = &colours;
  EXPECT_EQ(calls("n.e = \"red\";"), Lines{"n.e.assign String red"});
  EXPECT_EQ(log.lines(), Lines{});
  EXPECT_EQ(calls("n.e = \"Re\\x64\";"), Lines{"n.e.assign String Red"});
  EXPECT_EQ(calls("n.e = \"\";"), Lines{"n.e.assign String "});
  EXPECT_EQ(log.lines(),
            (Lines{"warning: ENUM WARNING (1,15): setting non-existent enum value 'Red' @ n.e.",
                   "warning: ENUM WARNING (1,9): setting non-existent enum value '' @ n.e."}));
}

TEST_F(Assign, CreatedInputsRemainWhenResolutionFails) {
  EXPECT_EQ(errors("n.a.b[x] = 1;"), Lines{"error: INVALID BRACKET LIST TOKEN (1,6): 'x'"});
  EXPECT_EQ(errors("n.a.b[] = 1;"),
            Lines{"error: PARSE ERROR (1,12): invalid input array index: []."});
  EXPECT_EQ(scene_.options.calls, (Lines{"n.createInput a Object", "n.a.createArray b Int"}));
}

// The lexer rejects "[x]", so the test calls the resolver directly.
TEST_F(Assign, NonNumericIndexIsQuotedAsWritten) {
  AssignInfo info;
  for (const Token& token :
       {Token{Token::Type::Id, "n", 1, 1}, Token{Token::Type::Dot, ".", 1, 2},
        Token{Token::Type::Id, "a", 1, 3}, Token{Token::Type::Brackets, "[x]", 1, 6}}) {
    info.targetPath.push_back(token);
  }
  info.data.type = AttrType::Int;
  PathResolver resolver(*node_, info.targetPath, info.data.type, Emitter());
  EXPECT_EQ(vsa_tests::thrownBy([&] { resolver.resolve(); }),
            "PARSE ERROR (0,0): invalid input array index: [x].");
  EXPECT_EQ(scene_.options.calls, Lines{"n.createArray a Int"});
}

TEST_F(Assign, PathWithoutElementsResolvesToNull) {
  AssignInfo info;
  EXPECT_EQ(PathResolver(*node_, info.targetPath, info.data.type, Emitter()).resolve(), nullptr);
  info.targetPath.push_back(Token{Token::Type::Id, "n", 1, 1});
  EXPECT_EQ(PathResolver(*node_, info.targetPath, info.data.type, Emitter()).resolve(), nullptr);
  info.targetPath.push_back(Token{Token::Type::Dot, ".", 1, 2});
  EXPECT_EQ(PathResolver(*node_, info.targetPath, info.data.type, Emitter()).resolve(), nullptr);
  EXPECT_EQ(scene_.options.calls, Lines{});
}

TEST_F(Assign, ResolverReturnsTheArrayOfItsTarget) {
  PrimedParser primed("n.a[1].b");
  AssignInfo info;
  ASSERT_TRUE(primed.parser.path(info.targetPath));
  PathResolver resolver(*node_, info.targetPath, info.data.type, Emitter());
  EXPECT_EQ(vsa_tests::text(resolver.resolve()->path()), "n.a[1].b");
  EXPECT_EQ(resolver.array(), nullptr);
  info.targetPath.reserve(4);
  PathResolver shorter(*node_, info.targetPath, info.data.type, Emitter());
  EXPECT_EQ(vsa_tests::text(shorter.resolve()->path()), "n.a[1]");
  EXPECT_EQ(shorter.array(), node_->input("a"));
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
