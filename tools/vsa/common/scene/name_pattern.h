// Patterns for names and paths, with "*" and "?".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// Whether `pattern` matches the whole text. "*" stands for any characters, also none, and "?" for
/// one byte; every other character for itself. Takes time proportional to the product of the
/// lengths at most, and no memory.
bool matchesPattern(std::string_view pattern, std::string_view text);

/// Whether one of the patterns matches.
bool matchesAny(const std::vector<std::string>& patterns, std::string_view text);

}  // namespace vsa_tools
