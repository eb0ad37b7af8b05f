// Standard output of the commands that print text.
#pragma once

#include <string_view>

namespace vsa_tools {

/// Writes `text` to standard output and flushes it. Returns EXIT_READ; if it cannot be written,
/// says so on standard error and returns EXIT_USAGE.
int printText(std::string_view text);

}  // namespace vsa_tools
