// Whether a text can be read, and what it makes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// What a reading of a text does.
struct ReadingCheck {
  bool isComplete = false;
  /// See SceneDigest; of a complete reading.
  std::uint64_t digest = 0;
};

/// Reads a text into a SceneDigest, with long lists as short ones.
ReadingCheck checkReading(vsa::Source& text, const ReadArguments& arguments = {});

/// The diagnostics that ended the reading of `text`, one line each, with `name` as its file.
std::vector<std::string> endingDiagnostics(const std::string& name, vsa::Source& text,
                                           const ReadArguments& arguments);

}  // namespace vsa_tools
