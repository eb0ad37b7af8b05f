// Whether a text can be read, and the result.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/fmt/reading/short_list_source.h"

namespace vsa_tools {

/// The result of a reading. Texts with the same tokens have equal results.
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

/// Reads a text as ShortListSource delivers it, which needs little memory. The result is not
/// complete if the text has several parts and one changes a node of an earlier part. Only a reading
/// of the whole text then shows whether it has a mistake.
ReadingCheck checkReading(vsa::Source& text, const ReadArguments& arguments = {},
                          std::uint64_t partBytes = ShortListSource::PART_BYTES);

/// Reads `text` as it is. Returns the diagnostics that ended the reading, one line each, with
/// `name` as its file; none if it is complete.
std::vector<std::string> endingDiagnostics(const std::string& name, vsa::Source& text,
                                           const ReadArguments& arguments);

}  // namespace vsa_tools
