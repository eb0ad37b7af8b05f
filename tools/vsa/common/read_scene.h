// Reads one file into a scene, and finds problems that the reader does not log.
#pragma once

#include <vector>

#include <vsa/read.h>
#include "tools/vsa/input/input_file.h"
#include "tools/vsa/input/loss.h"

namespace vsa_tools {

struct FileOutcome {
  /// The outcome of the reading. Of the diagnostics, it has only the one that ended the reading.
  vsa::ReadOutcome read;
  std::vector<Loss> losses;

  /// Whether the whole file was read.
  bool isComplete() const { return read.isComplete() && losses.empty(); }
};

/// Reads `input` into `scene` and shows a progress line. `input` must be open.
/// `options.onDiagnostic` receives the diagnostics that are no losses, and
/// `options.keptDiagnostics` is ignored.
FileOutcome readScene(vsa::Scene& scene, const InputFile& input, vsa::ReadOptions options);

}  // namespace vsa_tools
