// Suggestions for a misspelt name: finds the closest known name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// Returns the optimal string alignment distance of two names. It is the number of bytes that must
/// be inserted, deleted, replaced or swapped with a neighbour to change one name into the other.
/// Only the first 64 bytes of each name are compared.
std::size_t editDistance(std::string_view a, std::string_view b);

/// Returns the known name that is closest to `name`: the first one of several. A name is close if
/// its distance is at most a third of the length of `name`, or 1 for a short `name`. Returns an
/// empty text if none is close.
std::string closestName(std::string_view name, const std::vector<std::string>& known);

/// Returns ": did you mean NAME?" with the closest name, or an empty text if none is close.
std::string didYouMean(std::string_view name, const std::vector<std::string>& known);

}  // namespace vsa_tools
