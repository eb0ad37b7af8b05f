// Suggestions for a misspelt name: finds the closest known name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// Returns the optimal string alignment distance of two names. It is the least number of steps that
/// change one name into the other. A step inserts, deletes or replaces one byte, or swaps two
/// neighbouring bytes. No byte is changed by two steps. Only the first 64 bytes of each name are
/// compared.
std::size_t editDistance(std::string_view a, std::string_view b);

/// Returns the known name that is closest to `name`: the first one of several. A name is close if
/// its distance is at most a third of the length of `name` (rounded down), or at most 1 if `name`
/// has less than six bytes. Returns an empty text if none is close.
std::string closestName(std::string_view name, const std::vector<std::string>& known);

/// Returns ": did you mean NAME?" with the closest name, or an empty text if none is close.
std::string didYouMean(std::string_view name, const std::vector<std::string>& known);

}  // namespace vsa_tools
