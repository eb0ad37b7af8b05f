// Reads one file into a scene, and finds problems that the reader does not log.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tools/vsa/input/loss.h"

namespace vsa_tools {

struct FileOutcome {
  /// The outcome of the reading. Of the diagnostics, it has only the one that ended the reading.
  vsa::ReadOutcome read;
  std::vector<Loss> losses;

  /// Whether the whole file was read.
  bool isComplete() const { return read.isComplete() && losses.empty(); }
};

/// Reads the file `name` into `scene` and shows a progress line. "-" is standard input. If the file
/// cannot be opened, prints why, and returns nothing. Ctrl-C ends the wait for the first bytes and
/// the reading; see isInterrupted(). `options.onDiagnostic` receives the diagnostics that are no
/// losses, and `options.keptDiagnostics` is ignored. The caller must not have an InterruptScope.
std::optional<FileOutcome> readScene(vsa::Scene& scene, const std::string& name,
                                     const vsa::ReadOptions& options);

}  // namespace vsa_tools
