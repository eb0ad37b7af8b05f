// Patterns for names and paths, with "*" and "?".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// Whether `pattern` matches the whole text. "*" matches any characters, including none, and "?"
/// one byte; every other character matches itself. Takes at most time proportional to the product
/// of the lengths, and no memory.
bool matchesPattern(std::string_view pattern, std::string_view text);

/// Whether one of the patterns matches.
bool matchesAny(const std::vector<std::string>& patterns, std::string_view text);

}  // namespace vsa_tools
