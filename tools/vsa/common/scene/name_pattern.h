// Patterns for names and paths, with "*" and "?".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// Returns whether `pattern` matches the whole text. "*" matches any number of bytes, even none,
/// and "?" one byte. Every other byte matches itself. The time is at most proportional to the
/// product of both lengths. Allocates no memory.
bool matchesPattern(std::string_view pattern, std::string_view text);

/// Returns whether at least one of the patterns matches the whole text.
bool matchesAny(const std::vector<std::string>& patterns, std::string_view text);

}  // namespace vsa_tools
