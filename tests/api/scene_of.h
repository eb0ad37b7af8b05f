// Helpers for tests that inspect or edit scenes: they read a scene from a text, and write a scene
// as text.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <vsa/parse.h>
#include <vsa/scene.h>
#include "tools/scene_text/read_outcome.h"
#include "tools/scene_text/scene_dump.h"

namespace api_test {

/// Reads a scene from a text. Throws std::runtime_error if the text is not read to its end.
/// Warnings are ignored.
inline vsa::Scene sceneOf(std::string_view text) {
  vsa_tools::LogCapture log;
  const zn::ScopedLogSink scope(&log);
  vsa::Scene scene;
  if (!zn::korvo_sdk::impl::parseString(&scene.plain(), zn::String::copyOf(text))) {
    throw std::runtime_error(log.entries.empty() ? "not read" : log.entries.back().text);
  }
  return scene;
}

/// Returns the header, nodes, inputs, values and links of the scene as text.
inline std::string dumpOf(const vsa::Scene& scene) {
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase({}, scene.plain(), out);
  return out.text();
}

}  // namespace api_test
