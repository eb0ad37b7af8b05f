// Tests of HostScene: its default functions, and the calls that a derived class receives.
#include <vsa/host_scene.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vsa/read.h>
#include "tests/api/scene_of.h"

namespace {

using vsa::HostInput;
using vsa::HostNode;
using vsa::HostOutput;
using vsa::ReadStatus;
using zn::korvo_sdk::AttrData;

// Returns the log lines of a reading in the order of the log.
std::vector<std::string> messagesOf(const vsa::ReadOutcome& outcome) {
  std::vector<std::string> messages;
  for (const vsa::Diagnostic& found : outcome.diagnostics) messages.push_back(found.logLine());
  return messages;
}

// A scene that records its calls.
class Recorder : public vsa::HostScene {
 public:
  std::vector<std::string> events;

  void onValue(const HostInput& input, const AttrData& value) override {
    events.push_back(where(input) + " is a " + std::string(vsa::typeName(value.type)));
  }
  void onReference(const HostInput& input, HostNode* node) override {
    events.push_back(where(input) + " refers to " +
                     (node ? std::string(node->nodeName()) : "none"));
  }
  void onConnection(const HostInput& input, const HostOutput* output) override {
    events.push_back(where(input) + " is driven by " + (output ? output->name() : "none"));
  }
  void onRemove(HostNode& node) override {
    events.push_back("without " + std::string(node.nodeName()));
  }

 private:
  static std::string where(const HostInput& input) {
    return std::string(input.node().nodeName()) + "/" + input.pathInNode();
  }
};

using Events = std::vector<std::string>;

TEST(HostScene, TellsOfEveryValueAndLink) {
  Recorder scene;
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, R"(
    lamp sun: .power = 2.5; .keys[1].time = 1; .points = float[2] {1 2}; .name = "sun"; .kind = {};
    sky dusk; .color |= dusk.out; remove dusk; sun.power = 3; sun.free |= null;
    sun.to = sun; sun.keys[0].to = null;)");
  EXPECT_EQ(outcome.status, ReadStatus::Complete);
  // Links are resolved in the order of the memory addresses of their inputs, which are not
  // predictable. Therefore the test sorts all events after "without dusk".
  std::sort(scene.events.begin() + 6, scene.events.end());
  EXPECT_EQ(scene.events,
            (Events{"sun/power is a Real", "sun/keys[1].time is a Int", "sun/points is a Buffer",
                    "sun/name is a String", "sun/kind is a Object", "without dusk",
                    "sun/free is driven by none", "sun/keys[0].to refers to none",
                    "sun/power is a Real", "sun/to refers to sun"}));
  EXPECT_EQ(scene.node("dusk"), nullptr);
  ASSERT_NE(scene.node("sun"), nullptr);
  EXPECT_EQ(scene.node("sun")->nodeType(), "lamp");
}

// Reading a text without declared types gives the same status as with the library's scene, and the
// same messages in any order.
TEST(HostScene, BehavesAsTheLibrarysSceneDoes) {
  for (const char* const text : {
           "lamp a: .x = 1; .x = 2.5; .x = \"s\"; .x.y = 1;",
           "lamp a: .k[2] = 1; .k[*] = 2; .k[0] = 1.5; .k.x = 1;",
           "lamp a: .p = float[1] {1}; .p = int32[1] {1}; .p = 1; .p[0] = 1;",
           "lamp a: .k[1] = float[1] {1}; .k[0] = int32[1] {1};",
           "lamp a: .o.p.q = 1; .o.p = 1; .o[0] = 1;",
           "lamp a: .n |= b.out; .n = 1; lamp b;",
           "lamp a: .n = 1; .n = a; .m = 1.5; .m = null; .r = a; .r = a; .f |= null; .f = a;",
           "lamp a: .k[0][1].x = vec2(1 2); .k[0][0].x = vec3(1 2 3); .k = [1];",
           "lamp a: .x |= nosuch.out; .y = nosuch; .z |= a.b.c;",
           "define s; with s: .x = 1; remove s; s.x = 1;",
           "# version: x\nlamp a; a.",
       }) {
    vsa::Scene plain;
    vsa::HostScene host;
    const vsa::ReadOutcome expected = vsa::readTextInto(plain, text);
    const vsa::ReadOutcome found = vsa::readTextInto(host, text);
    EXPECT_EQ(found.status, expected.status) << text;
    std::vector<std::string> messages = messagesOf(found), expectedMessages = messagesOf(expected);
    std::sort(messages.begin(), messages.end());
    std::sort(expectedMessages.begin(), expectedMessages.end());
    EXPECT_EQ(messages, expectedMessages) << text;
  }
}

TEST(HostScene, BoundsWhatATextMakesOfFewCharacters) {
  vsa::HostScene scene;
  EXPECT_EQ(vsa::readTextInto(scene, "lamp a: .k[4000000000] = 1;").limit,
            vsa::Limit::EmptyElements);
  std::string deep;
  for (int i = 0; i < 256; ++i) deep += ".o";
  EXPECT_EQ(vsa::readTextInto(scene, "lamp b: " + deep + " = 1;").status, ReadStatus::Complete);
  EXPECT_EQ(vsa::readTextInto(scene, "lamp c: " + deep + ".o = 1;").limit, vsa::Limit::Depth);
  std::string dense = "lamp c;";
  for (int i = 0; i < 1000; ++i) dense += "c.k[" + std::to_string(i) + "] = 1;";
  vsa::HostScene other;
  EXPECT_EQ(other.emptyElementLimit, 524288U);
  other.emptyElementLimit = 2;
  EXPECT_EQ(vsa::readTextInto(other, dense).status, ReadStatus::Complete);
}

// An element with a link is not empty. This is so even before the link is resolved, as in the
// library's scene.
TEST(HostScene, CountsNoElementWithALinkAsEmpty) {
  std::string links = "lamp x;";
  for (int i = 0; i < 20; ++i) links += "x.a[*] = x; x.b[*] |= x.out;";
  vsa::Scene plain;
  plain.plain().setEmptyElementLimit(2);
  EXPECT_EQ(vsa::readTextInto(plain, links).status, ReadStatus::Complete);
  vsa::HostScene scene;
  scene.emptyElementLimit = 2;
  EXPECT_EQ(vsa::readTextInto(scene, links).status, ReadStatus::Complete);
  EXPECT_EQ(vsa::readTextInto(scene, "x.a[21] = x;").status, ReadStatus::Complete);
  EXPECT_EQ(vsa::readTextInto(scene, "x.a[24] = x;").limit, vsa::Limit::EmptyElements);
}

// A scene that keeps no nodes.
class Counter : public vsa::HostScene {
 public:
  int nodes = 0;

 private:
  std::unique_ptr<HostNode> makeNode(std::string_view /*type*/,
                                     std::string_view /*name*/) override {
    ++nodes;
    return nullptr;
  }
};

TEST(HostScene, CanKeepNothing) {
  Counter scene;
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, R"(
    lamp sun: .power = 2.5; .keys[4000000000].time[3][*] = 1; .points = float[2] {1 2}; .name = "sun";
    .k[1] = float[1] {1}; .k[0] = int32[1] {1}; lamp sun; lamp moon; define s; with s: .x = 1;
    moon.c |= sun.out; moon.r = s; remove moon; lamp moon; .v = vec3(1 2 3);)");
  EXPECT_EQ(outcome.status, ReadStatus::Complete);
  EXPECT_EQ(messagesOf(outcome), Events{});
  EXPECT_EQ(scene.nodes, 4);
  EXPECT_EQ(scene.node("sun"), nullptr);
}

// A node that records its end.
class MortalNode : public HostNode {
 public:
  MortalNode(vsa::HostScene& scene, std::string_view type, std::string_view name, Events& events)
      : HostNode(scene, type, name), events_(events) {}
  ~MortalNode() override { events_.push_back("end of " + std::string(nodeName())); }

 private:
  Events& events_;
};

class MortalNodes : public vsa::HostScene {
 public:
  explicit MortalNodes(Events& events) : events_(events) {}

 private:
  std::unique_ptr<HostNode> makeNode(std::string_view type, std::string_view name) override {
    return std::make_unique<MortalNode>(*this, type, name, events_);
  }
  void onRemove(HostNode& node) override {
    events_.push_back("without " + std::string(node.nodeName()));
  }

  Events& events_;
};

TEST(HostScene, KeepsRemovedNodes) {
  Events events;
  {
    MortalNodes scene(events);
    EXPECT_EQ(vsa::readTextInto(scene, "lamp a; remove a; lamp b; lamp a;").status,
              ReadStatus::Complete);
    EXPECT_EQ(events, Events{"without a"});
  }
  EXPECT_EQ(events.size(), 4U);
}

// A scene that keeps only some nodes. The reader calls it for links to dropped nodes, too.
class Lamps : public Recorder {
  std::unique_ptr<HostNode> makeNode(std::string_view type, std::string_view name) override {
    return type == "lamp" ? vsa::HostScene::makeNode(type, name) : nullptr;
  }
};

TEST(HostScene, CanKeepSomeNodes) {
  Lamps scene;
  EXPECT_EQ(vsa::readTextInto(scene, "sky s: .x = 1; lamp l: .c |= s.out; .r = s; .y = 1;").status,
            ReadStatus::Complete);
  EXPECT_EQ(scene.events, (Events{"l/y is a Int", "l/c is driven by out", "l/r refers to none"}));
}

// An input of the host. Inputs with the name "closed" refuse values. Inputs with the name "refused"
// and elements with the index 3 do not exist, see StrictNode.
class StrictInput : public HostInput {
 public:
  using HostInput::HostInput;
  bool refusesValues() const override { return name() == "closed"; }
};

class StrictNode : public HostNode {
 public:
  using HostNode::HostNode;
  std::unique_ptr<HostInput> makeInput(HostInput* parent, std::string_view name,
                                       std::uint64_t index, vsa::ValueType type) override {
    if (name == "refused" || index == 3) return nullptr;
    return std::make_unique<StrictInput>(*this, parent, name, index, type);
  }
};

class StrictScene : public vsa::HostScene {
  std::unique_ptr<HostNode> makeNode(std::string_view type, std::string_view name) override {
    return std::make_unique<StrictNode>(*this, type, name);
  }
};

TEST(HostScene, CanHaveInputsOfItsOwn) {
  StrictScene scene;
  EXPECT_EQ(
      messagesOf(vsa::readTextInto(scene, "lamp l: .closed = 1; .o.closed = 2; .k[2] = 1;")).size(),
      2U);
  for (const char* const text : {"with l: .refused = 1;", "with l: .o.refused = 1;",
                                 "with l: .k[3] = 1;", "with l: .refused[0] = 1;"}) {
    EXPECT_EQ(vsa::readTextInto(scene, text).status, ReadStatus::StoppedByError) << text;
  }
}

class Thrower : public vsa::HostScene {
  void onValue(const HostInput& /*input*/, const AttrData& /*value*/) override { throw 1; }
};

// The sanitizers detect it if the memory of the value is not freed.
TEST(HostScene, MayThrow) {
  Thrower scene;
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp l: .p = float[1000] {1};");
  EXPECT_EQ(outcome.status, ReadStatus::HostException);
  EXPECT_THROW(std::rethrow_exception(outcome.exception), int);
}

// The reader checks types before it calls the scene. A program that calls the scene itself may omit
// that check, so the scene must refuse wrong types.
TEST(HostScene, RefusesWhatDoesNotFit) {
  Recorder scene;
  ASSERT_TRUE(vsa::readTextInto(scene, "lamp a: .n = 1; .k[0] = 1; .o.p = 2; .free |= a.out;")
                  .isComplete());
  HostNode& a = *scene.node("a");
  EXPECT_TRUE(a.hasInput("n", vsa::ValueType::Int));
  EXPECT_TRUE(a.hasInput("n", vsa::ValueType::Null));
  EXPECT_FALSE(a.hasInput("n", vsa::ValueType::Real));
  EXPECT_FALSE(a.hasInput("m", vsa::ValueType::Null));
  HostInput& n = *a.input("n");
  HostInput& o = *a.input("o");
  EXPECT_EQ(n.createInput("p", vsa::ValueType::Int), nullptr);
  EXPECT_EQ(o.createInput("[0]", vsa::ValueType::Int), nullptr);
  EXPECT_TRUE(o.hasInput("p", vsa::ValueType::Int));
  EXPECT_TRUE(o.hasInput("p", vsa::ValueType::Null));
  EXPECT_FALSE(o.hasInput("p", vsa::ValueType::Bool));
  EXPECT_FALSE(o.hasInput("q", vsa::ValueType::Null));
  EXPECT_NE(a.input("free")->createInput("p", vsa::ValueType::Int), nullptr);
  EXPECT_EQ(a.input("k")->element(1), nullptr);
  EXPECT_EQ(a.output("out"), a.output("out"));
  EXPECT_EQ(scene.createNode("sky", "a", ""), &a);
  scene.events.clear();
  AttrData text;
  text.type = vsa::ValueType::String;
  text.payload.string = strdup("not a number");
  n.assign(text);  // refuses the value and frees its characters
  EXPECT_EQ(scene.events, Events{});
  EXPECT_EQ(n.type(), vsa::ValueType::Int);
}

// For a dropped node, the reader gets an object that accepts all calls. Its hasInput() is always
// false, but input() and createInput() return one object that represents all of its inputs.
TEST(HostScene, GivesDroppedNodesThatAreEmpty) {
  namespace interfaces = zn::korvo_sdk::interfaces;
  Counter scene;
  ASSERT_TRUE(vsa::readTextInto(scene, "lamp a: .x |= a.out; .y |= a.out;").isComplete());
  interfaces::INode* const a = scene.findNode("a");
  ASSERT_NE(a, nullptr);
  EXPECT_FALSE(a->hasInput("x", vsa::ValueType::Null));
  EXPECT_EQ(a->output("out"), a->output("out"));
  interfaces::IInput* const x = a->createInput("x", vsa::ValueType::Array);
  AttrData structure;
  structure.type = vsa::ValueType::Array;
  structure.elementType = static_cast<int>(vsa::ValueType::Int);
  x->set(structure);
  EXPECT_EQ(x->elementType(), vsa::ValueType::Int);
  structure.type = vsa::ValueType::Object;
  x->set(structure);
  EXPECT_EQ(x->elementType(), vsa::ValueType::Int);
  x->disconnect();
  EXPECT_EQ(x->input("member"), x);
  EXPECT_EQ(a->input("x"), x);
  EXPECT_FALSE(x->hasInput("member", vsa::ValueType::Null));
}

}  // namespace
