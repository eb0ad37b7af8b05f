// Tests of the memory of edited scenes. The memory of replaced and removed values is freed at once.
// A change that runs out of memory is refused, the scene can still be inspected, and the same
// change succeeds when memory is available again.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <vsa/edit.h>
#include <vsa/host_scene.h>
#include <vsa/read.h>
#include <vsa/scene.h>
#include <vsa/text_rules.h>
#include "tests/support/allocation_tracker.h"

namespace vsa_tests {

namespace {

using vsa::EditError;
using vsa::ElementType;
using vsa::Status;
using vsa::ValueType;

const std::string LONG_TEXT(10'000, 'x');
const std::string LONGER_TEXT(20'000, 'x');
const std::vector<float> NUMBERS(1000);

// Makes many kinds of changes, even after one of them has failed. Returns the first error, or None.
Status changeEverything(vsa::Scene& scene) {
  EditError first = EditError::None;
  const auto note = [&](Status status) {
    if (first == EditError::None) first = status.error();
  };
  const auto a = scene.addNode("lamp", "aNodeWithALongNameThatTakesMemory");
  note(a.status);
  note(a.set("real", 1.5));
  note(a.set("string", LONG_TEXT));
  note(a.set("tuple", vsa::vec3(1, 2, 3)));
  note(a.add("buffer").setBuffer(ElementType::Float, NUMBERS));
  note(a.add("array").makeArray(ValueType::Object));
  note(a["array"].append().set("member", 1));
  note(a["array"][0].set("text", LONG_TEXT));
  note(a["array"].resize(100));
  note(a.add("link").refer(a));
  note(a["link"].connect(a, "anOutputWithALongNameThatTakesMemory"));
  note(a.set("string", LONGER_TEXT));
  note(a.set("buffer", "now a string"));
  note(a.set("array", 1));
  note(a.remove("tuple"));
  note(scene.addComment(LONG_TEXT));
  note(scene.setFileTime(LONG_TEXT));
  note(scene.setFileVersion(2));
  note(scene.removeNode(a));
  return first;
}

// Inspects the nodes of the scene with their inputs and elements. That must work even after a
// change that has failed.
void lookAtAll(const vsa::Scene& scene) {
  for (const vsa::NodeView node : scene.nodes()) {
    for (const vsa::InputView input : node.inputs()) {
      EXPECT_EQ(node[input.name()], input);
      for (const vsa::InputView element : input.elements()) EXPECT_TRUE(element);
      EXPECT_EQ(input.buffer().bytes().empty(), input.buffer().count() == 0);
    }
  }
}

TEST(EditMemory, SurvivesEveryFailedAllocation) {
  for (const bool everAfter : {false, true}) {
    for (std::uint64_t n = 1;; ++n) {
      vsa::Scene scene;
      AllocationTracker::start();
      AllocationTracker::failAt(n, everAfter);
      const Status status = changeEverything(scene);
      const bool hasFailed = AllocationTracker::hasFailed();
      AllocationTracker::failAt(0, false);
      AllocationTracker::stop();
      if (!hasFailed) {
        EXPECT_EQ(status.error(), EditError::None);
        break;
      }
      EXPECT_NE(status.error(), EditError::None) << n;
      lookAtAll(scene);
      static_cast<void>(scene.removeNode(scene["aNodeWithALongNameThatTakesMemory"]));
      // The same changes succeed when memory is available again.
      EXPECT_EQ(changeEverything(scene).error(), EditError::None) << n;
    }
  }
}

TEST(EditMemory, OfReplacedValuesIsFreed) {
  vsa::Scene scene;
  const vsa::Input input = scene.addNode("lamp", "a").add("x");
  const std::vector<float> numbers(10'000);
  const auto change = [&] {
    input.setBuffer(ElementType::Float, numbers).orThrow();
    input.set(LONG_TEXT).orThrow();
    input.set("short").orThrow();
    input.set(vsa::vec3(1, 2, 3)).orThrow();
  };
  change();
  AllocationTracker::start();
  for (int i = 0; i < 1000; ++i) change();
  AllocationTracker::stop();
  EXPECT_EQ(AllocationTracker::count().liveBlocks, 0);
}

TEST(EditMemory, OfRemovedInputsIsFreed) {
  vsa::Scene scene;
  const vsa::Node node = scene.addNode("lamp", "a");
  AllocationTracker::start();
  for (int i = 0; i < 1000; ++i) {
    const vsa::Input array = node.add("x");
    array.makeArray(ValueType::Buffer).orThrow();
    array.appendBuffer(ElementType::Byte, std::vector<std::uint8_t>(100'000)).orThrow();
    node.remove("x").orThrow();
  }
  AllocationTracker::stop();
  // The slabs keep the memory of the 2000 removed inputs, which have 48 bytes each. The memory of
  // the buffers, 100 MB in total, must be freed.
  EXPECT_LT(AllocationTracker::count().liveBytes, 1'000'000);
}

TEST(EditMemory, OfARefusedBufferIsFreed) {
  vsa::Scene scene;
  const vsa::Input input = scene.addNode("lamp", "a").add("x");
  AllocationTracker::start();
  EXPECT_EQ(input.setBuffer(ElementType::Bool, 8, vsa::allocateBuffer(8)).error(),
            EditError::BadBufferType);
  EXPECT_EQ(vsa::Input().setBuffer(ElementType::Byte, 8, vsa::allocateBuffer(8)).error(),
            EditError::Missing);
  AllocationTracker::stop();
  EXPECT_EQ(AllocationTracker::count().liveBlocks, 0);
}

// The base class of a host's scene frees all memory after any failed allocation.
TEST(HostSceneMemory, IsFreedWhateverFails) {
  const char* const text =
      "lamp sun: .power = 2.5; .keys[3].time = 1; .points = float[20] {1 2}; .name = \"sun\"; sky "
      "dusk;"
      ".color |= dusk.out; .to = sun; remove dusk;";
  static_cast<void>(vsa::readText(text));
  for (std::uint64_t n = 1;; ++n) {
    AllocationTracker::start();
    bool hasFailed = false;
    {
      vsa::HostScene scene;
      AllocationTracker::failAt(n, false);
      static_cast<void>(vsa::readTextInto(scene, text));
      hasFailed = AllocationTracker::hasFailed();
      AllocationTracker::failAt(0, false);
    }
    AllocationTracker::stop();
    EXPECT_EQ(AllocationTracker::count().liveBlocks, 0) << n;
    if (!hasFailed) break;
  }
}

TEST(EditMemory, ThatRunsOutRefusesAComment) {
  const std::string comment = "version: " + std::string(100, ' ') + "1000000000000000000";
  EXPECT_TRUE(vsa::checkComment(comment));
  AllocationTracker::start();
  AllocationTracker::failAt(1, true);
  const Status status = vsa::checkComment(comment);
  AllocationTracker::failAt(0, false);
  AllocationTracker::stop();
  EXPECT_EQ(status.error(), EditError::OutOfMemory);
}

}  // namespace

}  // namespace vsa_tests
