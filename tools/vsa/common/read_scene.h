// Reads one file into a scene and finds what the reader does not report.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <vsa/foundation/log.h>
#include <vsa/model/scene.h>
#include "tools/scene_text/read_outcome.h"
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

/// A part of a file that is, or may be, missing from the scene although the reader reports no
/// error: for the reader, the text or a token ended there.
struct Loss {
  std::string text;
  /// Empty if the position is unknown.
  std::optional<Position> position;
};

struct FileOutcome : ReadStatus {
  std::vector<Loss> losses;

  /// Whether the whole file was read.
  bool isComplete() const { return result && losses.empty(); }
};

/// Reads `input`, which must be open, into `scene`; `log` receives the messages during the read.
/// Throws std::bad_alloc only.
FileOutcome readScene(zn::korvo_sdk::Scene& scene, const InputFile& input, zn::LogSink& log);

}  // namespace vsa_tools
