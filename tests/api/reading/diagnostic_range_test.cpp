// Tests of the range of each diagnostic, with a table of texts in which the range is marked.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

#include <vsa/host_scene.h>
#include <vsa/read.h>
#include "diagnostics/emitter.h"
#include "tests/api/reading/api_read.h"
#include "tests/support/host_scene.h"

namespace vsa_tests {

namespace {

using vsa::DiagnosticId;

/// A text in which « and » mark the range of its first diagnostic.
struct RangeRow {
  DiagnosticId id;
  std::string_view marked;
  std::string_view inputPath = "";
  std::optional<std::uint64_t> numberIndex = std::nullopt;
};

using enum DiagnosticId;

const RangeRow RANGE_ROWS[] = {
    // Invalid characters.
    {InvalidToken, "lamp sun;\nsun.power = 50«%»;", "sun.power"},
    {InvalidToken, "«}»"},
    {InvalidToken, "lamp sun;\n«)»\n"},
    {InvalidListToken, "lamp sun;\nsun.color = rgba(1 0.9 «x»);", "sun.color", 2},
    {InvalidListToken, "mesh m;\nm.ids = float[3]{1 «1z» 3};\n", "m.ids", 1},
    {InvalidListToken, "mesh m;\nm.ids = float[3]{1, 2, «15x»};\n", "m.ids", 2},
    {InvalidListToken, "mesh m;\nm.up = vec3(«x»", "m.up", 0},
    {InvalidListToken, "lamp sun;\nsun.color = rgba«(»1 0.9 1;\nlamp moon;\n", "sun.color"},
    {InvalidListToken, "mesh m;\nm.ids = int32[3] «{»0 1\n2\nm.power = 3;\n", "m.ids"},
    {InvalidListToken, "mesh m;\nm.ids = float«[»3{1 2 3};\n", "m.ids"},
    {UnrecognizedToken, "lamp sun;\na«[»"},
    {BadToken, "lamp sun: .pts = float[3]«{»1, 2", "sun.pts"},
    {BadToken, "mesh quad;\nquad.ids = int32[3]«;»\n", "quad.ids"},
    {BadToken, "mesh quad;\nquad.ids = int32[3]«»", "quad.ids"},
    {InvalidListToken, "mesh m;\nm.ids[«x»] = 3;\n", "m.ids"},
    {InvalidListToken, "mesh m:\n.ids[«-»1] = 3;\n", "m.ids"},
    {InvalidToken, "lamp sun: .power = 50«%»;", "sun.power"},
    {InvalidToken, "lamp sun:\nlamp moon; .power = 50«%»;", "sun.power"},
    {InvalidToken, "lamp «%»sun;"},
    {InvalidToken, "lamp sun;\nsun.power =;«%»"},
    {InvalidListToken, "sun: {«x»}", "", 0},
    // Strings, lists and texts that end too early.
    {UnexpectedEof, "lamp sun;\n  «\"»never closed;\n"},
    {UnexpectedEof, "lamp sun;«{»1 2 3"},
    {BadToken, "lamp sun;\nsun.label = «\"»over the table;\nlamp moon;\n", "sun.label"},
    {BadToken, "lamp sun;\nsun.color = rgba«(»1 2 3", "sun.color"},
    {BadToken, "lamp sun;\nsun.power = 3«»", "sun.power"},
    {BadToken, "lamp sun;\nsun.power =«»\n\n", "sun.power"},
    // A name that is the same as the text of the token at the end.
    {BadToken, "lamp sun;\nsun.power = 3 «EOF»;\n", "sun.power"},
    {EndMark, "lamp sun;\n«\xFF»lamp moon;"},
    // Wrong statements.
    {BadToken, "lamp sun;\nsun.power = 3«»\nsun.label = \"x\";\n", "sun.power"},
    {BadToken, "lamp sun;\nsun.power = 3«» # watts\n;\n", "sun.power"},
    {BadToken, "lamp sun;\nsun.label = «\"»x;\nsun.name = \"noon\";\n", "sun.label"},
    {BadToken, "lamp sun;\nsun.power = 1«,»5;\n", "sun.power"},
    {BadToken, "mesh quad;\nquad.ids = «uint8»[2] {0 1};\n", "quad.ids"},
    {BadToken, "mesh quad;\nquad.up = «vector»(0 1 0);\n", "quad.up"},
    {BadToken, "mesh quad;\nquad.ids = int32[3] «(0 1 2)»;\n", "quad.ids"},
    {BadToken, "mesh quad;\nquad.ids = int32 «{0 1 2}»;\n", "quad.ids"},
    {BadToken, "mesh quad;\nquad.up = vec3«[1 2 3]»;\n", "quad.up"},
    {BadToken, "mesh quad;\nquad.up = «;»\n", "quad.up"},
    {BadToken, "lamp sun;\nsun.power = «+»5;\n", "sun.power"},
    {BadToken, "lamp sun;\nsun.depth = «1e-05»;\n", "sun.depth"},
    {BadToken, "lamp sun;\nsun.up = vec3«(1 2)»;\n", "sun.up"},
    {BadToken, "lamp sun;\nsun.up = vec3(1, «1e», 2);\n", "sun.up", 1},
    {BadToken, "lamp sun;\nsun.color | «dusk».outColor;\n", "sun.color"},
    {BadToken, "sphere ball;\nball.material |= «clay»;\n", "ball.material"},
    {UnrecognizedToken, "«42»;"},
    {UnrecognizedToken, "lamp sun;\n«/»/ a lamp\n"},
    {UnrecognizedToken, "lamp sun«»\nsun.power = 3;\n"},
    {UnrecognizedToken, "lamp sun«»"},
    {UnrecognizedToken, "lamp sun;\nsun.power «3»;\n", "sun.power"},
    {UnrecognizedToken, "mesh «\"m\"»;\n"},
    {UnrecognizedToken, "mesh m«,» n;\n"},
    {UnrecognizedToken, "mesh m «.»a=1;\n"},
    {UnrecognizedToken, "a «true»;\n"},
    {UnrecognizedToken, "a b:\n.«true»=1;\n"},
    {UnrecognizedToken, "a b:\nb.«3»=1;\n"},
    {UnrecognizedToken, "a b:\n.x.«true»=1;\n", "b.x"},
    {UnrecognizedToken, "mesh«»"},
    {BadVersion, "lamp sun;\n  «# version: beta»\nlamp moon;\n"},
    {WithNodeNotSet, "lamp sun;\n«.power» = 2.5;", ".power"},
    {NodeNotFound, "lamp sun;\n«moon».power =\n  2.5;", "moon.power"},
    {InputNotFound, "mesh q;\nq.ids |= c.out;\nq.«ids[0]» = 1;\n", "q.ids[0]"},
    {InvalidArrayIndex, "mesh q;\nq.sets[0]«[]» = 1;\n", "q.sets[0][]"},
    // Wrong types.
    {CannotAssignType, "curve f:\n.keys[0] = 1;\n.keys[1] = «2.5»;\n", "f.keys[1]"},
    {CannotAssignType, "ball b:\n.radius = 1;\n.radius.«x» = 2.5;\n", "b.radius"},
    {CannotAssignType, "ball b:\n.radius = 1;\nb.radius«[0]» = 2.5;\n", "b.radius"},
    {CannotAssignType, "ball b:\n.radius = 1;\nb.radius.«x[0].y» = 2.5;\n", "b.radius"},
    {Narrowing, "lamp sun;\nsun.n = 1;\nsun.n = «2.7» ;\n", "sun.n"},
    {WrongType, "lamp sun;\nsun.n = 1;\nsun.n = «vec3 (1 2 3)»;\n", "sun.n"},
    {WrongType, "lamp sun;\nsun.n[*] = 1;\nsun.n = «\"a\n but found b\"»;\n", "sun.n"},
    {BadEnumValue, "declaredLamp sun:\n.shape = «\"cone\"»;\n", "sun.shape"},
    // Wrong buffers.
    {InvalidElementCount, "mesh q;\nq.ids = int32«[]» {0 1 2};\n", "q.ids"},
    {TooManyElements, "mesh q;\nq.p = vec3f[1] {0, 0\n0 «1.5» 2};\n", "q.p", 3},
    {TooManyElements, "mesh q;\nq.p = float[1] {1{2}3 («4») 5 };\n", "q.p", 1},
    {TooManyElements, "mesh q;\nq.p = float[1] {{1,}2 «3»};\n", "q.p", 1},
    {TooManyElements, "mesh q;\nq.p = float[1] {{1 \n}2 «3» };\n", "q.p", 1},
    {TooManyElements, "mesh q;\nq.p = float[1] {{(1)}2 «3»,};\n", "q.p", 1},
    {TooManyElements, "mesh q;\nq.p = float[1] {{1, }«2» 3};\n", "q.p", 1},
    {TooFewElements, "mesh q;\nq.p = vec3f[2] «{1 2 3}»;\n", "q.p"},
    {UnreadableBuffer, "mesh q;\nq.ids = int32[4] {1, 2, «1.5», 2.5};\n", "q.ids", 2},
    {UnreadableBuffer, "mesh q:\n.b = byte[2] {1\n «256»};\n", "q.b", 1},
    {UnreadableBuffer, "mesh q;\nq.ids = int32[2] {{«1.5 }2» 3};\n", "q.ids", 0},
    {CompressedDataBadCharacter, "mesh q;\nq.b = byte[3] «{.--}»;\n", "q.b"},
    {CompressedDataEmpty, "mesh q;\nq.b = byte[3] «{.}»;\n", "q.b"},
    {CompressedDataEndsEarly, "mesh q;\nq.b = byte[3] «{.78}»;\n", "q.b"},
    {CompressedDataCorrupt, "mesh q;\nq.b = byte[4] «{.78da070018000b0000}»;\n", "q.b"},
    {CompressedDataWrongChecksum, "mesh q;\nq.b = byte[4] «{.78da636462660100001800ff}»;\n", "q.b"},
    {CompressedDataTooLarge, "mesh q;\nq.b = byte[3] «{.78da6364626601000018000b}»;\n", "q.b"},
    // Wrong links.
    {InvalidOutput, "a x;\nx.i |= «b.c.d»;\n", "x.i"},
    {InvalidOutput, "a x:\n.i |= «b.c.d»;\na y:\n", "x.i"},
    {NoNodeToConnect, "a x;\nx.i |= «gone».out;\na y;\n", "x.i"},
    {NoOutputToConnect, "declaredLamp d;\na x;\nx.i |= d.«gone» ;\na y;\n", "x.i"},
    {NoNodeToAssign, "a x;\n\nx.i =\n  «gone»;\na y;\n", "x.i"},
    {CannotAssignNode, "a x;\nx.i = 1;\nx.i = «x»;\na y;\n", "x.i"},
    // Values beyond a limit.
    {OverLimit, "mesh q;\nq.far = byte«[90000000000]» {1};\n", "q.far"},
    {TooManyEmptyElements, "mesh q;\nq.far«[90000000]» = 1;\n", "q.far"},
};

constexpr std::string_view OPEN = "«";
constexpr std::string_view CLOSE = "»";

struct Marked {
  explicit Marked(std::string_view marked) {
    begin = marked.find(OPEN);
    const std::size_t close = marked.find(CLOSE);
    end = close - OPEN.size();
    text = std::string(marked.substr(0, begin));
    text += marked.substr(begin + OPEN.size(), close - begin - OPEN.size());
    text += marked.substr(close + CLOSE.size());
  }

  std::string text;
  std::size_t begin;
  std::size_t end;
};

vsa::TextPosition positionIn(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const auto lines = static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n'));
  const std::size_t feed = before.rfind('\n');
  const std::size_t start = feed == std::string_view::npos ? 0 : feed + 1;
  return {offset, lines + 1, offset - start + 1};
}

void expectRange(const RangeRow& row, const vsa::ReadOutcome& outcome) {
  const Marked marked(row.marked);
  ASSERT_FALSE(outcome.diagnostics.empty()) << row.marked;
  const vsa::Diagnostic& found = outcome.diagnostics.front();
  EXPECT_STREQ(vsa::name(found.id), vsa::name(row.id)) << row.marked;
  const vsa::TextRange& range = found.range;
  EXPECT_EQ(range.begin, positionIn(marked.text, marked.begin))
      << row.marked << "\n"
      << found.logLine() << "\nbegin " << range.begin.offset;
  EXPECT_EQ(range.end, positionIn(marked.text, marked.end))
      << row.marked << "\n"
      << found.logLine() << "\nend " << range.end.offset;
  EXPECT_EQ(found.inputPath, row.inputPath) << row.marked;
  EXPECT_EQ(found.numberIndex, row.numberIndex) << row.marked;
}

TEST(DiagnosticRange, IsTheOneMarkedInATextInMemory) {
  declareLamp();
  for (const RangeRow& row : RANGE_ROWS) {
    expectRange(row, vsa::readText(Marked(row.marked).text));
  }
}

// The range extends to the end of the number, although its first character is already wrong.
TEST(DiagnosticRange, GoesOnToTheEndOfANumber) {
  const RangeRow row{InvalidListToken, "mesh m;\nm.x = float[3]{1 «zz» 3};\n", "m.x", 1};
  expectRange(row, vsa::readText(Marked(row.marked).text));
}

// Each id has a row in the table or its own test below.
TEST(DiagnosticRange, IsCheckedForEveryId) {
  std::set<DiagnosticId> checked = {
      CannotAllocate,       // has its own test below
      NestedTooDeeply,      // has its own test below
      HostError,            // has its own test below
      HostMessage,          // has its own test below
      TooManyArrayElements  // has its own test below
  };
  for (const RangeRow& row : RANGE_ROWS) checked.insert(row.id);
  for (int i = 0; i < vsa::DIAGNOSTIC_ID_COUNT; ++i) {
    const auto id = static_cast<DiagnosticId>(i);
    EXPECT_EQ(checked.count(id), 1U) << vsa::name(id);
  }
}

TEST(DiagnosticRange, IsTheCountOfABufferThatCannotBeAllocated) {
  const RangeRow row{CannotAllocate, "mesh q;\nq.b = float«[18446744073709551615]» {0};\n", "q.b"};
  vsa::ReadOptions options;
  options.limits.memory = vsa::UNLIMITED;
  const vsa::ReadResult result = vsa::readText(Marked(row.marked).text, options);
  expectRange(row, result);
  EXPECT_EQ(result.status, vsa::ReadStatus::OutOfMemory);
}

TEST(DiagnosticRange, IsThePathOfAnInputThatIsTooDeep) {
  const RangeRow row{NestedTooDeeply, "mesh q;\n«q.a.b.c» = 1;\n", "q.a.b.c"};
  vsa::Scene scene;
  scene.plain().setDepthLimit(2);
  expectRange(row, vsa::readTextInto(scene, Marked(row.marked).text));
}

// The library's scene would need 200 GB for this message. Therefore a scene of a host throws it.
TEST(DiagnosticRange, IsTheIndexInAnArrayThatCannotGrow) {
  HostScene scene;
  scene.options.onCall = [](const std::string& call) {
    if (call != "q.v.appendElement") return;
    zn::korvo_sdk::Emitter().fatal(zn::korvo_sdk::DiagnosticId::TooManyArrayElements,
                                   zn::String("q.v"), std::uint64_t{4294967295});
  };
  const RangeRow row{TooManyArrayElements, "mesh q;\nq.v«[7]» = 1;\n", "q.v"};
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, Marked(row.marked).text);
  expectRange(row, outcome);
  EXPECT_EQ(outcome.limit, vsa::Limit::Elements);
}

// What a host can do in a call, and the diagnostic that it causes.
struct HostAct {
  DiagnosticId id;
  std::function<void()> act;
};

const HostAct HOST_ACTS[] = {
    {HostError, [] { throw std::runtime_error("no moon"); }},
    {HostError, [] { throw std::logic_error("no moon"); }},
    {HostError, [] { throw 5; }},
    {HostError, [] { throw "no moon"; }},
    {HostMessage, [] { zn::logWarning("%s", "an odd moon"); }},
};

// Reads the text of `row` into a host's scene, which acts in the first call that begins with
// `call`. Compares the diagnostic with the row.
void expectRangeOfAct(const HostAct& host, std::string_view call, RangeRow row) {
  HostScene scene;
  bool hasActed = false;
  scene.options.onCall = [&](const std::string& made) {
    if (hasActed || !made.starts_with(call)) return;
    hasActed = true;
    host.act();
  };
  row.id = host.id;
  if (host.id == HostMessage) row.inputPath = "";
  expectRange(row, vsa::readTextInto(scene, Marked(row.marked).text));
}

TEST(DiagnosticRange, IsTheStatementAtWhichAHostThrowsOrLogs) {
  for (const HostAct& host : HOST_ACTS) {
    expectRangeOfAct(host, "createNode lamp moon",
                     {HostError, "lamp sun;\n«lamp moon;»\nlamp star;\n"});
  }
}

TEST(DiagnosticRange, IsTheLinkAtWhichAHostThrowsOrLogs) {
  for (const HostAct& host : HOST_ACTS) {
    expectRangeOfAct(
        host, "sun.up.connect",
        {HostError, "lamp sun:\n «.up |= sun.out;»\n.at = sun;\nlamp star;\n", "sun.up"});
    expectRangeOfAct(host, "sun.at.setNode",
                     {HostError, "lamp sun;\n«sun.at = sun;»\nlamp star;\n", "sun.at"});
  }
}

/// A record that a host throws, as a DiagnosticError, in the first call that begins with `call`.
/// Its arguments need not match the text of the row.
struct HostRecord {
  std::string_view call;
  std::vector<std::string> arguments;
  RangeRow row;
};

const HostRecord HOST_RECORDS[] = {
    // The record names another input than the statement, or the input itself as an array.
    {"q.createInput v",
     {"Int", "", "Array", "z.z"},
     {CannotAssignType, "mesh q;\n«q.v» = 1;\na y;", "z.z"}},
    {"q.createInput v",
     {"Int", "", "Array", "q.v"},
     {CannotAssignType, "mesh q;\n«q.v» = 1;\na y;", "q.v"}},
    // The record names a part that the statement does not have.
    {"q.createInput v", {"[9]"}, {InvalidArrayIndex, "mesh q;\n«q.v» = 1;\na y;", "q.v"}},
    {"q.createInput v",
     {"Int", "", "Node", "q.v"},
     {CannotAssignType, "mesh q;\n«q.v» = 1;\na y;", "q.v"}},
    {"q.createInput v",
     {"5", "9", "byte", "2"},
     {TooManyElements, "mesh q;\nq.v = byte[2] «{1 2}»;\na y;", "q.v"}},
    {"q.createInput v", {}, {TooManyElements, "mesh q;\nq.v = byte[2] «{1 2}»;\na y;", "q.v"}},
    {"q.createInput v",
     {"byte"},
     {UnreadableBuffer, "mesh q;\nq.v = byte[2] «{1 2}»;\na y;", "q.v"}},
    // No rule finds a range: it is the last character of the token that was consumed last.
    {"q.createInput v",
     {"5", "9", "byte", "2"},
     {TooManyElements, "mesh q;\nq.v = 1«;»\na y;", "q.v"}},
    {"q.createInput v", {"byte"}, {UnreadableBuffer, "mesh q;\nq.v = 1«;»\na y;", "q.v"}},
    {"q.createInput v", {}, {NoOutputToConnect, "mesh q;\nq.v = 1«;»\na y;", "q.v"}},
    {"q.createInput v", {"!"}, {InvalidToken, "mesh q;\nq.v = 1«;»\na y;", "q.v"}},
    {"createNode lamp moon", {";", ""}, {BadToken, "mesh q;\nlamp moon«;»"}},
    // There is no statement while inputs are released.
    {"q.v.release", {}, {UnrecognizedToken, "mesh q;\nq.v = q;\n«»"}},
    {"q.v.release", {";", ""}, {BadToken, "mesh q;\nq.v = q;\n«»"}},
};

// A host can throw any record. Whatever it contains, the range is in the text.
TEST(DiagnosticRange, OfARecordThatAHostThrowsIsInTheText) {
  for (const HostRecord& thrown : HOST_RECORDS) {
    zn::korvo_sdk::Diagnostic record;
    record.id = static_cast<zn::korvo_sdk::DiagnosticId>(thrown.row.id);
    for (const std::string& each : thrown.arguments) {
      record.arguments.push_back(zn::String::copyOf(each));
    }
    HostScene scene;
    scene.options.onCall = [&](const std::string& call) {
      if (call.starts_with(thrown.call)) throw zn::korvo_sdk::DiagnosticError(record);
    };
    const std::string text = Marked(thrown.row.marked).text;
    expectRange(thrown.row, vsa::readTextInto(scene, text));
    HostScene other;
    other.options.onCall = scene.options.onCall;
    TestSource source(text);
    expectRange(thrown.row, vsa::readSourceInto(other, source));
  }
}

// The bytes after the statement are not lexed if they are too many.
TEST(DiagnosticRange, OfARecordThatAHostThrowsIsInALongText) {
  zn::korvo_sdk::Diagnostic record;
  record.id = zn::korvo_sdk::DiagnosticId::UnreadableBuffer;
  HostScene scene;
  scene.options.onCall = [&](const std::string& call) {
    if (call.starts_with("q.createInput v")) throw zn::korvo_sdk::DiagnosticError(record);
  };
  const RangeRow row{UnreadableBuffer, "mesh q;\nq.v = 1«;»\n", "q.v"};
  const std::string text = Marked(row.marked).text + "# " + std::string(100'000, 'c');
  expectRange(row, vsa::readTextInto(scene, text));
}

// Inputs are released when all links of their kind have been resolved. No statement of the text is
// concerned.
TEST(DiagnosticRange, IsTheEndOfTheTextIfAHostThrowsOrLogsWhileInputsAreReleased) {
  for (const HostAct& host : HOST_ACTS) {
    expectRangeOfAct(host, "sun.up.release",
                     {HostError, "lamp sun:\n.up |= sun.out;\n.at = sun;\nlamp star;\n«»"});
    expectRangeOfAct(host, "sun.at.release",
                     {HostError, "lamp sun:\n.up |= sun.out;\n.at = sun;\nlamp star;\n«»"});
  }
}

// A path() that throws, too, does not hide the exception that ended the reading.
TEST(DiagnosticRange, IsTheLinkOfAnInputWhosePathThrows) {
  class Input final : public vsa::HostInput {
   public:
    using vsa::HostInput::HostInput;
    zn::String path() const override { throw std::logic_error("no path"); }
    void connect(zn::korvo_sdk::interfaces::IOutput*) override {
      throw std::logic_error("no moon");
    }
  };
  class Node final : public vsa::HostNode {
   public:
    using vsa::HostNode::HostNode;
    std::unique_ptr<vsa::HostInput> makeInput(vsa::HostInput* parent, std::string_view name,
                                              std::uint64_t index, vsa::ValueType type) override {
      return std::make_unique<Input>(*this, parent, name, index, type);
    }
  };
  class Scene final : public vsa::HostScene {
    std::unique_ptr<vsa::HostNode> makeNode(std::string_view type, std::string_view name) override {
      return std::make_unique<Node>(*this, type, name);
    }
  } scene;
  const RangeRow row{HostError, "lamp sun;\n«sun.up |= sun.out;»\nlamp star;\n"};
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, Marked(row.marked).text);
  expectRange(row, outcome);
  EXPECT_EQ(outcome.message, "no moon");
}

TEST(DiagnosticRange, IsTheOneMarkedInASource) {
  declareLamp();
  for (const RangeRow& row : RANGE_ROWS) {
    for (const std::size_t bytesPerRead : {0, 1, 5}) {
      TestSource source(Marked(row.marked).text, bytesPerRead);
      expectRange(row, vsa::readSource(source));
    }
  }
}

}  // namespace

}  // namespace vsa_tests
