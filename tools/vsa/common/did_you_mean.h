// The name that was probably meant by a misspelt one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// The number of characters to insert, delete, replace, or swap with a neighbour, needed to change
/// one name into the other: the optimal string alignment distance.
std::size_t editDistance(std::string_view a, std::string_view b);

/// The known name that is closest to `name`; empty if none is close.
std::string closestName(std::string_view name, const std::vector<std::string>& known);

/// ": did you mean NAME?" with the closest name; empty if none is close.
std::string didYouMean(std::string_view name, const std::vector<std::string>& known);

}  // namespace vsa_tools
