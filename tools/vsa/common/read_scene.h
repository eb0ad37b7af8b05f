// Reads one file into a scene and finds what the reader does not report.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

/// A part of a file that is, or may be, missing from the scene although the reader logs no error:
/// for the reader, the text or a token ended there.
struct Loss {
  std::string text;
  /// Empty if the position is unknown.
  std::optional<Position> position;
};

struct FileOutcome {
  /// The outcome of the reading, without the diagnostics that `losses` contains.
  vsa::ReadOutcome read;
  std::vector<Loss> losses;

  /// Whether the whole file was read.
  bool isComplete() const { return read.isComplete() && losses.empty(); }
};

/// Reads `input`, which must be open, into `scene`, with a progress line. `options.onDiagnostic`
/// receives the diagnostics in the log of the reader, and the outcome stores none.
FileOutcome readScene(vsa::Scene& scene, const InputFile& input, vsa::ReadOptions options);

}  // namespace vsa_tools
