// Tests of path resolution: every call of a host's scene, and scenes that refuse calls.
#include <cstdint>
#include <string>
#include <vector>

#include <vsa/scene/name_update.h>
#include <vsa/scene/node_type.h>
#include "tests/vsa/assign_fixture.h"
#include "vsa/apply/path_resolver.h"

namespace zn::korvo_sdk::impl {
namespace {

using namespace assign_tests;
using vsa_tests::PrimedParser;

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
  // Indices are translated, too. Messages contain the original text.
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

// Unprintable characters are not skipped in a number, and the message contains them.
TEST_F(Assign, IndicesWithUnprintableCharacters) {
  using namespace std::string_literals;
  EXPECT_EQ(errors("n.a[\x01 2] = 1;"),
            Lines{"error: PARSE ERROR (1,13): invalid input array index: [\x01 2]."});
  EXPECT_EQ(errors("n.b[2\x7f] = 1;"),
            Lines{"error: PARSE ERROR (1,12): invalid input array index: [2\x7f]."});
  EXPECT_EQ(calls("n.c[\t1\r\n] = 1;").back(), "n.c[1].assign Int 1");
  // The text of the token ends at the NUL.
  EXPECT_EQ(calls("n.d[2\0 9] = 1;"s).back(), "n.d[2].assign Int 1");
  EXPECT_EQ(errors("n.e[\0002] = 1;"s),
            Lines{"error: PARSE ERROR (1,12): invalid input array index: [."});
}

// A literal that does not convert can be followed by a reference. The reference then requires the
// type of that literal.
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

// hasInput() returns true, but input() returns null. Then the reader creates the input.
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

// A pending link is stored for the address of its input. It is found again even after a node was
// removed, so that the input is retained only once.
TEST_F(Assign, InputReturnedAgainAfterNodeRemoval) {
  scene_.options.forgetsInputs = true;
  EXPECT_EQ(calls("n.a |= x.one; remove m; n.a |= null;"),
            (Lines{"n.createInput a Null", "n.a.retain", "removeNode m", "n.createInput a Null",
                   "n.a.disconnect", "n.a.release"}));
}

// A scene may hide an input and later return it as if it were new. The reader first looks for the
// input in the table of links. Therefore the input has one entry and is retained once, and its last
// link is used.
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

// The type of a node determines the current names of all elements of a path. The reader requests
// the type once for each element, even if the type is not declared.
TEST_F(Assign, NodeTypeIsRequestedForEveryElement) {
  EXPECT_EQ(calls("n.a[1].b = 1;").back(), "n.a[1].b.assign Int 1");
  EXPECT_EQ(scene_.options.typesAsked, 3);
}

// A host may declare a type when the reader requests the type of a node. The next name is then
// translated, on short and on long paths.
TEST_F(Assign, TypeMayBeDeclaredWhenItIsRequested) {
  ASSERT_FALSE(anyNodeTypes());
  scene_.options.onTypeAsked = [] {
    registerNodeType({.name = "lamp", .formerInputs = {{"intensity", "power"}}});
  };
  for (const std::string path : {"a.intensity", "b.intensity[0]", "c.intensity.x"}) {
    scene_.add("lamp", path.substr(0, 1));
    const std::string made = calls(path + " = 1;").front();
    EXPECT_NE(made.find(" power "), std::string::npos) << made;
    unregisterNodeType("lamp");
  }
}

TEST_F(Assign, WithNode) {
  EXPECT_EQ(errors(".radius = 1;"),
            Lines{"error: PARSE ERROR (1,12): 'with' node not set (input: .radius)."});
  EXPECT_EQ(errors("\n.a[0].b\n= 1\n;"),
            Lines{"error: PARSE ERROR (4,1): 'with' node not set (input: .a[0].b)."});
  EXPECT_EQ(calls("lamp n: .a = 1;"), (Lines{"n.createInput a Int", "n.a.assign Int 1"}));
}

// Messages contain the name of the with node before the path. Therefore the reader requests the
// name once in each statement that begins with ".": after it has read the right-hand side, and
// before it requests the inputs of the path.
TEST_F(Assign, WithNodeIsAskedForItsName) {
  EXPECT_EQ(calls("lamp n: .a = 1; .b[0].c = \"x\"; .d |= n.o; .e = n; .f = vec2(1 2);").size(),
            16U);
  EXPECT_EQ(scene_.options.namesAsked, 5 + 1) << "the last one is of setNode in the host's scene";
  EXPECT_EQ(calls("n.a = 2; n.g[0] = 1; n.h |= n.o;").size(), 8U);
  EXPECT_EQ(scene_.options.namesAsked, 6) << "the text has the name";
}

TEST_F(Assign, WithNodeIsAskedForItsNameBeforeItsInputs) {
  for (const std::string statement : {".a = 1;", ".a[0] = 1;", ".a |= n.o;"}) {
    scene_.options = {};
    std::vector<int> typesAskedBefore;
    scene_.options.onNameAsked = [&] { typesAskedBefore.push_back(scene_.options.typesAsked); };
    scene_.add("lamp", "n");
    read("lamp n: " + statement);
    EXPECT_EQ(typesAskedBefore, std::vector<int>{0}) << statement;
    scene_.removeNode("n");
  }
}

// If a node is renamed when its type is requested, the message contains the former name.
TEST_F(Assign, MessageHasTheNameFromBeforeTheInputs) {
  scene_.options.refusesInputs = true;
  scene_.options.onTypeAsked = [this] { node_->rename("other"); };
  EXPECT_EQ(errors("lamp n: .a = 1;"), Lines{"error: PARSE ERROR (1,15): input 'n.a' not found.."});
}

// An exception of name() propagates from the parser even if no message contains the name.
TEST_F(Assign, ExceptionOfTheNameOfTheWithNode) {
  scene_.options.onNameAsked = [] { throw std::logic_error("name"); };
  EXPECT_THROW(read("lamp n: .a = 1;"), std::logic_error);
  EXPECT_EQ(scene_.options.calls, Lines{});
}

TEST_F(Assign, MissingNodes) {
  EXPECT_EQ(errors("nosuch.a[1] = 1;"),
            Lines{"error: PARSE ERROR (1,16): node 'nosuch.a[1]' not found ."});
  EXPECT_EQ(errors("nosuch.a |= n.o;"),
            Lines{"error: PARSE ERROR (1,16): node 'nosuch.a' not found ."});
  // The right-hand side is parsed before the node is looked up.
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
  // The array has no element type yet. A value is refused, because it requires an array whose
  // element type is the type of the value. A link requires no element type.
  EXPECT_EQ(errors("n.x[0] = 1;"),
            Lines{"error: TYPE ERROR (1,11): cannot assign Int to Array @ n.x."});
  EXPECT_EQ(calls("n.x[0] = n;"), (Lines{"n.x.set Array Null", "n.x.appendElement", "n.x[0].retain",
                                         "n.x[0].setNode n", "n.x[0].release"}));
}

// The type of the input decides whether it is indexed. isArray() decides only which type check is
// made in the middle of a path.
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

TEST_F(Assign, CreatedInputsRemainWhenResolutionFails) {
  EXPECT_EQ(errors("n.a.b[x] = 1;"), Lines{"error: INVALID BRACKET LIST TOKEN (1,6): 'x'"});
  EXPECT_EQ(errors("n.a.b[] = 1;"),
            Lines{"error: PARSE ERROR (1,12): invalid input array index: []."});
  EXPECT_EQ(scene_.options.calls, (Lines{"n.createInput a Object", "n.a.createArray b Int"}));
}

// The test calls the resolver directly, because the lexer rejects "[x]".
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
