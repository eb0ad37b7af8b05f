#include "tests/faults/fault_probe.h"

#include <gtest/gtest.h>

#include <cstdint>

#include <vsa/parse.h>
#include "tools/scene_text/scene_dump.h"

namespace vsa_tests {

using zn::korvo_sdk::Scene;

namespace {

constexpr char PROBE[] =
    "probeType faultProbe: .i = 1; .r = 2.5; .s = \"x\\n\"; .v = vec3(1 2 3); .b = float[2] {1 2};"
    ".a[2] = 7; .o.m = true; .ref = faultProbe; .link |= faultProbe.out;";

/// The number of array elements in the text of the probe. Each of them is created as an empty
/// element, and so adds one to the count that the limit of empty elements bounds.
constexpr std::uint64_t PROBE_ELEMENTS = 3;

constexpr char PROBE_TEXT[] =
    "  node probeType faultProbe\n"
    "    i Int 1\n"
    "    r Real 2.5\n"
    "    s String \"x\\n\"\n"
    "    v Vec3 [1, 2, 3]\n"
    "    b Buffer Float 2 [1, 2]\n"
    "    a Array Int\n"
    "      [0] Int 0\n"
    "      [1] Int 0\n"
    "      [2] Int 7\n"
    "    o Object\n"
    "      m Bool true\n"
    "    ref Node faultProbe\n"
    "    link Null <- faultProbe.out\n";

}  // namespace

std::string sceneText(const Scene& scene) {
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase({}, scene, out);
  return out.text();
}

void expectUsable(Scene& scene, const std::string& where) {
  scene.setEmptyElementLimit(scene.emptyElementLimit() + PROBE_ELEMENTS);
  const std::string before = sceneText(scene);
  FixedSink sink;
  const zn::ScopedLogSink scope(&sink);
  EXPECT_TRUE(zn::korvo_sdk::impl::parseString(&scene, PROBE)) << where << '\n' << sink.text();
  EXPECT_EQ(sink.lines, 0u) << where << '\n' << sink.text();
  const std::string after = sceneText(scene);
  EXPECT_TRUE(after.ends_with(PROBE_TEXT)) << where << '\n' << after;
  if (before.find("\nscene\n") != std::string::npos) {
    EXPECT_TRUE(after.starts_with(before)) << where << '\n' << before << "---\n" << after;
  }
}

}  // namespace vsa_tests
