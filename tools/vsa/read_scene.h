// One file read into a scene, with everything there is to say about it.
#pragma once

#include <string>
#include <vector>

#include "foundation/file.h"
#include "scene/model/scene.h"
#include "tools/support/log_capture.h"

namespace vsa_tools {

struct FileReading : ReadOutcome {
  /// What the reader passed over without a word because to it the text had simply ended: one
  /// sentence each.
  std::vector<std::string> losses;

  /// Whether all of the file was read.
  bool complete() const { return result && losses.empty(); }
};

/// Reads `file`, which is open, into `scene`. Throws nothing.
FileReading readScene(zn::korvo_sdk::Scene& scene, zn::File file);

}  // namespace vsa_tools
