// Reads a text to find out whether it can be read completely, with little memory.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/fmt/reading/short_list_source.h"

namespace vsa_tools {

/// The result of a reading, and what it counted. The tests compare the counts of a text and of its
/// formatted text: texts with the same tokens have equal results, unless a limit, Ctrl-C or an
/// error of the source ends a reading.
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

/// Reads a text through a ShortListSource, which needs little memory. The result is not complete in
/// three cases: a reading ends early, the size of the text is known and exceeds its limit, or the
/// text has several parts and one of them changes a node of an earlier one. Then only a reading of
/// the whole text shows whether it can be read completely.
ReadingCheck checkReading(vsa::Source& text, const ReadArguments& arguments = {},
                          std::uint64_t partBytes = ShortListSource::PART_BYTES);

/// Reads `text` without a ShortListSource. Returns the diagnostics that ended the reading, one a
/// line, with `name` as the file name. Without such a diagnostic, the line has the reason why the
/// reading ended. Another line has the result of byteLoss(), if there is one: a NUL byte, another
/// encoding or compression. Returns no line if the text is read completely and has no such loss.
std::vector<std::string> endingDiagnostics(const std::string& name, vsa::Source& text,
                                           const ReadArguments& arguments);

}  // namespace vsa_tools
