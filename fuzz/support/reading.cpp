#include "fuzz/support/reading.h"

#include <vsa/foundation/file.h>
#include <vsa/scene/node_type.h>
#include "fuzz/support/literal_memory.h"
#include "fuzz/support/message_count.h"
#include "tests/support/byte_source.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_fuzz {

namespace {

using namespace zn::korvo_sdk;

// The one declared node type, the same as that of the test cases: everything that a declaration can
// say is in it.
NodeType declaredLamp() {
  NodeType lamp;
  lamp.name = "declaredLamp";
  lamp.inputs = {
      {"power", AttrType::Real, {}, {}, {}, false},
      {"shape", AttrType::String, {}, {}, {"point", "spot"}, false},
      {"filter", AttrType::Rgba, {}, {}, {}, true},
      {"samples", AttrType::Buffer, {}, DataType::Float, {}, false},
      {"keys", AttrType::Array, AttrType::Real, {}, {}, false},
  };
  lamp.outputs = {"outColor"};
  lamp.formerInputs = {{"intensity", "power"}};
  lamp.formerOutputs = {{"color", "outColor"}};
  return lamp;
}

template <class EntryPoint>
Reading read(EntryPoint entryPoint) {
  Reading reading;
  reading.outcome = vsa_tools::captureRead([&] { return entryPoint(reading.report); });
  for (const Diagnostic& diagnostic : reading.outcome.diagnostics) countMessage(diagnostic.id);
  const auto& escaped = reading.outcome.escapedDiagnostic;
  if (escaped) countMessage(escaped->id);
  if (!reading.report.cutOff.isEmpty()) countMessage(DiagnosticId::UnexpectedEof);
  return reading;
}

int alive = 0;

}  // namespace

Surroundings::Surroundings() {
  static const bool declared = [] {
    registerNodeType(declaredLamp());
    return true;
  }();
  static_cast<void>(declared);
  ++alive;
}

Surroundings::~Surroundings() {
  if (--alive == 0) freeLiteralsLeftBehind();
}

FuzzScene::FuzzScene() {
  scene.setEmptyElementLimit(400);
  scene.setDepthLimit(12);
}

Reading readFromString(Scene& scene, std::string_view text) {
  return read([&](impl::ReadReport& report) {
    return impl::parseString(&scene, zn::String::copyOf(text), report);
  });
}

Reading readFromFile(Scene& scene, std::string_view text, std::size_t block) {
  return read([&](impl::ReadReport& report) {
    return impl::parseVsa(&scene, vsa_tests::memoryFile(std::string(text), block), true, report);
  });
}

std::string shown(const Reading& reading, const Scene& scene) {
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase(reading.outcome, scene, out);
  return out.text();
}

}  // namespace vsa_fuzz
