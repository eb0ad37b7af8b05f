// Reads a text, and returns what two texts with the same scene have in common.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/fmt/reading/short_list_source.h"

namespace vsa_tools {

/// The result of a reading: what it counted. Texts with the same tokens have equal results.
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

/// Reads a text through a ShortListSource, which needs little memory. If the text has several parts
/// and a part changes a node of an earlier one, the result is not complete. Only a reading of the
/// whole text then shows whether the text has a mistake.
ReadingCheck checkReading(vsa::Source& text, const ReadArguments& arguments = {},
                          std::uint64_t partBytes = ShortListSource::PART_BYTES);

/// Reads `text` without a ShortListSource. Returns the diagnostics that ended the reading, one a
/// line, with `name` as the file name. Returns none if the text is read completely.
std::vector<std::string> endingDiagnostics(const std::string& name, vsa::Source& text,
                                           const ReadArguments& arguments);

}  // namespace vsa_tools
