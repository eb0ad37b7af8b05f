// Whether a text can be read, and what it makes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// What a reading of a text did. Two texts with the same tokens have equal ones.
struct ReadingCheck {
  bool isComplete = false;
  std::uint64_t nodes = 0;
  std::uint64_t elements = 0;
  std::uint64_t values = 0;
  std::uint64_t links = 0;
  std::uint64_t errors = 0;
  std::uint64_t warnings = 0;

  bool operator==(const ReadingCheck&) const = default;
};

/// Reads a text into a scene, with long lists as short ones: the scene keeps no buffers.
ReadingCheck checkReading(vsa::Source& text, const ReadArguments& arguments = {});

/// The diagnostics that ended the reading of `text`, one line each, with `name` as its file.
std::vector<std::string> endingDiagnostics(const std::string& name, vsa::Source& text,
                                           const ReadArguments& arguments);

}  // namespace vsa_tools
