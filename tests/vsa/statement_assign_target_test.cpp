// Tests of the assignment to a target: checks, conversions, untyped elements, and enumerations.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/vsa/assign_fixture.h"

namespace zn::korvo_sdk::impl {
namespace {

using namespace assign_tests;

class AssignTarget : public Assign {};

TEST_F(AssignTarget, TargetsThatRejectPlainValues) {
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

TEST_F(AssignTarget, ABufferThatRefusesValuesQuotesTheValue) {
  node_->add("b", AttrType::Buffer)->refuses = true;
  const LoggedLines log;
  EXPECT_EQ(calls("n.b = byte[0] {}; n.b = 5;"), Lines{});
  EXPECT_EQ(log.lines(), (Lines{"error: TYPE ERROR (1,17): expected Buffer @ n.b but found byte[].",
                                "error: TYPE ERROR (1,26): expected Buffer @ n.b but found 5."}));
}

TEST_F(AssignTarget, LinksAreAcceptedByArraysBuffersAndInputsThatRefuseValues) {
  node_->add("a", AttrType::Array);
  node_->add("r", AttrType::Int)->refuses = true;
  node_->add("b", AttrType::Buffer);
  const LoggedLines log;
  EXPECT_TRUE(read("n.a |= n.o; n.r = n; n.b |= n.o;"));
  EXPECT_EQ(log.lines(), Lines{});
}

TEST_F(AssignTarget, BufferTargets) {
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

TEST_F(AssignTarget, ConversionsWarnBeforeAssigning) {
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

TEST_F(AssignTarget, UntypedBuffersGetATypeBeforeTheValueIsAssigned) {
  EXPECT_EQ(calls("n.a[1] = float[0] {};"),
            (Lines{"n.createArray a Buffer", "n.a.appendElement", "n.a.appendElement",
                   "n.a[0].set Buffer Float", "n.a[1].set Buffer Float",
                   "n.a[1].assign Buffer Float 0"}));
  EXPECT_EQ(calls("n.a[3] = byte[0] {};"),
            (Lines{"n.a.appendElement", "n.a.appendElement", "n.a[2].set Buffer Byte",
                   "n.a[3].set Buffer Byte", "n.a[3].assign Buffer Byte 0"}));
  // If a value is rejected, the untyped elements of the array remain untyped.
  EXPECT_EQ(calls("n.a[5] |= n.o;").size(), 5U);
  const LoggedLines log;
  EXPECT_EQ(calls("n.a[0] = byte[0] {};"), Lines{});
  EXPECT_EQ(log.lines(),
            Lines{"error: TYPE ERROR (1,20): expected Buffer @ n.a[0] but found Byte."});
  EXPECT_EQ(calls("n.a[0] = float[0] {};"),
            (Lines{"n.a[4].set Buffer Float", "n.a[5].set Buffer Float",
                   "n.a[0].assign Buffer Float 0"}));
}

// An element of type Array accepts a plain value if its isArray() returns false.
TEST_F(AssignTarget, UntypedNestedArraysGetATypeBeforeTheValueIsAssigned) {
  HostInput* const array = node_->add("a", AttrType::Array);
  array->elements = AttrType::Array;
  for (int i = 0; i < 4; ++i) array->appendElement();
  element(array, 1)->deniesBeingArray = true;
  element(array, 2)->elements = AttrType::Real;
  EXPECT_EQ(calls("n.a[1] = [5];"), (Lines{"n.a[0].set Array Null", "n.a[1].set Array Null",
                                           "n.a[3].set Array Null", "n.a[1].assign Array"}));
  // The elements are still untyped, so the next value sets their types again.
  EXPECT_EQ(calls("n.a[1] = [];").size(), 4U);
  const LoggedLines log;
  EXPECT_EQ(calls("n.a[0] = [5];"), Lines{});
  EXPECT_EQ(log.lines(), Lines{"error: TYPE ERROR (1,13): expected Array @ n.a[0] but found [5]."});
}

// Among very many pending links, a later link of an input must replace the earlier one.
TEST_F(AssignTarget, LaterLinkReplacesTheEarlierAmongMany) {
  std::string earlier;
  std::string later;
  for (int i = 0; i < 500; ++i) {
    const std::string number = std::to_string(i);
    if (i % 2 == 0) node_->add("r" + number, AttrType::Null);  // created before its first link
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

// A fixture whose host changes its array during a parse. Each assignment must find the elements
// that are untyped at that time.
class ChangingArray : public Assign {
 protected:
  ChangingArray() {
    array_ = node_->add("a", AttrType::Array);
    array_->elements = AttrType::Buffer;
    node_->add("now", AttrType::Int);
  }

  /// Returns the calls of the scene for the text. The host calls `change` at each `n.now = 1;`.
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

/// An enumeration of the input n.colour. It contains the values that were assigned to the input.
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
TEST_F(AssignTarget, EnumerationMayAddTheAssignedValue) {
  const ExtensibleColours colours(scene_.options.calls);
  node_->add("colour", AttrType::String)->enumeration = &colours;
  const LoggedLines log;
  EXPECT_EQ(calls(R"(n.colour = "deep \"blue\"";)"), Lines{"n.colour.assign String deep \"blue\""});
  EXPECT_EQ(log.lines(), Lines{});
}

TEST_F(AssignTarget, EnumerationsWarnAfterTheAssignment) {
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

}  // namespace
}  // namespace zn::korvo_sdk::impl
