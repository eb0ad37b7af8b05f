// One file read into a scene, with everything there is to say about it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <vsa/foundation/log.h>
#include <vsa/model/scene.h>
#include "tools/scene_text/read_outcome.h"
#include "tools/vsa/diagnostic.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

/// Something of a file that did not, or may not, have got into the scene, of which the reader says
/// nothing: to it the text, or a token of it, had ended.
struct Loss {
  std::string text;
  /// Where, if that is known.
  std::optional<Position> position;
};

struct FileReading : ReadEnd {
  std::vector<Loss> losses;

  /// Whether all of the file was read.
  bool complete() const { return result && losses.empty(); }
};

/// Reads `input`, which is open, into `scene`. What is logged goes to `log` as it comes. Throws
/// nothing but std::bad_alloc for want of memory of its own.
FileReading readScene(zn::korvo_sdk::Scene& scene, const InputFile& input, zn::LogSink& log);

}  // namespace vsa_tools
