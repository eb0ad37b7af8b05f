// Functions of commands that print text to standard output.
#pragma once

#include <string_view>

#include "tools/scene_text/text_output.h"

namespace vsa_tools {

/// Writes `text` to standard output and flushes it. Returns EXIT_READ. If the text cannot be
/// written, prints an error to standard error and returns EXIT_USAGE.
int printText(std::string_view text);

/// Flushes `out`, which writes to standard output. Returns and prints the same as printText().
int finish(TextOutput& out);

}  // namespace vsa_tools
