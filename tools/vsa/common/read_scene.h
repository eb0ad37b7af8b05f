// Reads one file into a scene, and finds problems that the reader does not log.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

/// A problem that the reader does not log as an error. The reader stopped or ended a token there,
/// so a part of the file may be missing from the scene.
struct Loss {
  std::string text;
  /// Where the problem is. Not set if that is unknown.
  std::optional<Position> position;
};

struct FileOutcome {
  /// The outcome of the reading. It has no diagnostics about the problems in `losses`.
  vsa::ReadOutcome read;
  std::vector<Loss> losses;

  /// Whether the whole file was read.
  bool isComplete() const { return read.isComplete() && losses.empty(); }
};

/// Reads `input` into `scene` and shows a progress line. `input` must be open.
/// `options.onDiagnostic` receives the diagnostics of the reader's log. The outcome stores none.
FileOutcome readScene(vsa::Scene& scene, const InputFile& input, vsa::ReadOptions options);

}  // namespace vsa_tools
