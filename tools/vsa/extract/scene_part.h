// Reduces a scene to some of its nodes and those that they need.
#pragma once

#include <string>
#include <vector>

#include <vsa/scene.h>

namespace vsa_tools {

/// Removes all nodes but those that `names` match and those that links of these lead to, directly
/// or through other nodes. Nodes that `without` match are removed too, and so are those that only
/// they need; links to them become null. Both are patterns, see matchesPattern(). Returns the
/// patterns of `names` that match no node.
std::vector<std::string> keepPart(vsa::Scene& scene, const std::vector<std::string>& names,
                                  const std::vector<std::string>& without);

/// Removes inputs and members that are arrays without elements, if the type of the elements is not
/// known: a text with such an array causes a warning when it is read.
void removeEmptyArrays(vsa::Scene& scene);

/// Removes comments that should set the version and cannot: a text with such a comment causes a
/// warning when it is read.
void removeBadComments(vsa::Scene& scene);

}  // namespace vsa_tools
