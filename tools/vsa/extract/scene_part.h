// Reduces a scene to some of its nodes and those that they need.
#pragma once

#include <string>
#include <vector>

#include <vsa/scene.h>

namespace vsa_tools {

/// Keeps only the nodes that match `names` and the nodes that their links lead to, directly or
/// through other nodes. Removes the nodes that match `without`, too, and the nodes that only those
/// need; links to removed nodes become null. `names` and `without` are patterns, see
/// matchesPattern(). Returns the patterns of `names` that match no node.
std::vector<std::string> keepPart(vsa::Scene& scene, const std::vector<std::string>& names,
                                  const std::vector<std::string>& without);

/// Removes inputs and members that are arrays without elements, if the type of the elements is not
/// known: a text with such an array causes a warning when it is read.
void removeEmptyArrays(vsa::Scene& scene);

/// Removes comments that should set the version but cannot: a text with such a comment causes a
/// warning when it is read.
void removeBadComments(vsa::Scene& scene);

}  // namespace vsa_tools
