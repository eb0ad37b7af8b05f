// Tests random changes of a scene, some of which are refused. The changed scene can be written as a
// text, and reading that text gives the same scene without a message. So the scene has refused
// every change whose result no text can represent. The only exception is an array without elements:
// no text can represent it, but it is not refused, so the test replaces it.
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vsa/edit.h>
#include <vsa/read.h>
#include <vsa/write.h>
#include "tests/api/scene_of.h"

namespace {

using api_test::dumpOf;
using vsa::ElementType;
using vsa::Input;
using vsa::Node;
using vsa::Tuple;
using vsa::Value;
using vsa::ValueType;

class RandomEditor {
 public:
  explicit RandomEditor(unsigned seed) : random_(seed) {}

  void change(vsa::Scene& scene) {
    static const char* const NAMES[] = {"a",     "b",    "with",      "remove", "vec3",
                                        "größe", "true", "two words", ""};
    if (chance(8)) {
      static_cast<void>(scene.addNode(one(NAMES), one(NAMES)));
    } else if (chance(40)) {
      static_cast<void>(scene.removeNode(anyNode(scene)));
    } else if (chance(20)) {
      changeHeader(scene);
    } else {
      const Node node = anyNode(scene);
      if (chance(20)) static_cast<void>(node.remove(one(NAMES)));
      changeInput(scene, node.add(one(NAMES)), 0);
    }
  }

  // Removes the value of each array without elements in `input` and below it, because no text can
  // represent such an array. If the scene refuses to remove the value, tries to add an integer
  // instead.
  void fill(Input input) {
    if (input.type() == ValueType::Array && input.elements().empty()) {
      static_cast<void>(input.clear());
      if (input.type() == ValueType::Array) fillArray(input);
    }
    for (std::uint64_t i = 0; i < input.elements().size(); ++i) fill(input[i]);
    for (const vsa::InputView member : input.members()) fill(input[member.name()]);
  }

 private:
  bool chance(unsigned in) { return random_() % in == 0; }
  template <class T, std::size_t N>
  const T& one(const T (&choices)[N]) {
    return choices[random_() % N];
  }

  Node anyNode(vsa::Scene& scene) {
    std::vector<std::string> names;
    for (const vsa::NodeView node : scene.nodes()) names.emplace_back(node.name());
    return names.empty() ? Node() : scene[names[random_() % names.size()]];
  }

  static void fillArray(Input array) {
    static_cast<void>(array.makeArray(ValueType::Int));
    static_cast<void>(array.append(1));
  }

  void changeHeader(vsa::Scene& scene) {
    static const char* const TEXTS[] = {"noon", " noon", "version: 3", "version: x", "time: later",
                                        "a\nb", ""};
    if (chance(3)) static_cast<void>(scene.setFileVersion(random_()));
    if (chance(3)) static_cast<void>(scene.setFileTime(one(TEXTS)));
    if (chance(3)) static_cast<void>(scene.addComment(one(TEXTS)));
    if (chance(9)) static_cast<void>(scene.clearHeader());
  }

  double anyReal() {
    const double choices[] = {0.0,
                              -0.0,
                              1.5,
                              1e300,
                              std::numeric_limits<double>::denorm_min(),
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(),
                              std::nan(""),
                              -std::nan(""),
                              std::bit_cast<double>(std::uint64_t{0x7FF0000000000001}),
                              std::bit_cast<double>((std::uint64_t{random_()} << 32) | random_())};
    return one(choices);
  }

  void setAnyValue(Input input) {
    switch (random_() % 6) {
      case 0:
        static_cast<void>(input.set(chance(2)));
        break;
      case 1:
        static_cast<void>(
            input.set(static_cast<std::int64_t>(std::uint64_t{random_()} << 32 | random_())));
        break;
      case 2:
        static_cast<void>(input.set(std::uint64_t{random_()} << 32 | random_()));
        break;
      case 3:
        static_cast<void>(input.set(anyReal()));
        break;
      case 4: {
        std::string text;
        for (auto i = random_() % 9; i > 0; --i) text += static_cast<char>(random_());
        static_cast<void>(input.set(text));
        break;
      }
      default: {
        const auto type = static_cast<ValueType>(random_() % 19);
        std::vector<double> numbers(zn::korvo_sdk::componentCount(type));
        for (double& number : numbers) number = anyReal();
        if (const auto tuple = Tuple::of(type, numbers)) static_cast<void>(input.set(*tuple));
      }
    }
  }

  void setAnyBuffer(Input input) {
    const auto type = static_cast<ElementType>(random_() % 60);
    std::vector<std::byte> bytes(zn::korvo_sdk::elementBytes(type) * (random_() % 3) +
                                 (chance(9) ? 1 : 0));
    for (std::byte& byte : bytes)
      byte = chance(4) ? std::byte{0xFF} : static_cast<std::byte>(random_());
    static_cast<void>(input.elementType() == ValueType::Buffer
                          ? input.appendBufferBytes(type, bytes)
                          : input.setBufferBytes(type, bytes));
  }

  void changeInput(vsa::Scene& scene, Input input, int depth) {
    static const char* const MEMBERS[] = {"m", "n", "null", "o_1"};
    static const char* const OUTPUTS[] = {"out", "out[2]", "out.x", "", "null"};
    switch (random_() % 10) {
      case 0:
        return setAnyBuffer(input);
      case 1:
        return static_cast<void>(input.refer(anyNode(scene)));
      case 2:
        return static_cast<void>(input.connect(anyNode(scene), one(OUTPUTS)));
      case 3:
        return static_cast<void>(chance(3) ? input.disconnect() : input.referToNone());
      case 4:
        return static_cast<void>(chance(3) ? input.clear() : input.makeObject());
      case 5:
        static_cast<void>(input.makeArray(static_cast<ValueType>(random_() % 20)));
        [[fallthrough]];
      case 6:
        if (chance(3)) setAnyBuffer(input);
        static_cast<void>(input.resize(random_() % 4));
        if (depth < 5) changeInput(scene, input[random_() % 4], depth + 1);
        return;
      case 7:
        if (depth < 5) changeInput(scene, input.add(one(MEMBERS)), depth + 1);
        if (chance(5)) static_cast<void>(input.remove(one(MEMBERS)));
        return;
      default:
        setAnyValue(input);
    }
  }

  std::mt19937 random_;
};

// Returns the header as lines.
std::string headerOf(const vsa::Scene& scene) {
  std::string text = std::to_string(scene.fileVersion()) + ' ' + std::string(scene.fileTime());
  for (const std::string_view comment : scene.comments()) text.append("\n").append(comment);
  return text;
}

TEST(RandomEdit, GivesScenesThatTextsCarry) {
  std::size_t textBytes = 0;
  for (unsigned seed = 1; seed <= 300; ++seed) {
    RandomEditor editor(seed);
    vsa::Scene scene;
    static_cast<void>(scene.clearHeader());
    for (int i = 0; i < 200; ++i) editor.change(scene);
    for (const vsa::NodeView node : scene.nodes()) {
      for (const vsa::InputView input : node.inputs())
        editor.fill(scene[node.name()][input.name()]);
    }
    const vsa::TextResult written = vsa::writeText(scene);
    ASSERT_TRUE(written.isWritten())
        << seed << ": " << written.problems[0].node << "." << written.problems[0].input << ": "
        << written.problems[0].reason;
    textBytes += written.text.size();
    const vsa::ReadResult read = vsa::readText(written.text);
    ASSERT_TRUE(read.isComplete()) << seed << ": " << read.message;
    EXPECT_EQ(read.diagnostics.size(), 0U) << seed << ": " << read.diagnostics[0].logLine();
    EXPECT_EQ(dumpOf(read.scene), dumpOf(scene)) << seed;
    EXPECT_EQ(headerOf(read.scene), headerOf(scene)) << seed;
  }
  EXPECT_GT(textBytes, 100'000U);  // enough changes were accepted
}

}  // namespace
