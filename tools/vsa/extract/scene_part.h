// Reduces a scene to some of its nodes and the nodes that they need.
#pragma once

#include <string>
#include <vector>

#include <vsa/scene.h>

namespace vsa_tools {

/// Keeps the nodes whose names match `names`, and the nodes that their links lead to, directly or
/// through other nodes. Removes all other nodes. Removes the nodes that match `without`, too, and
/// does not follow links through them. Links to removed nodes become null. matchesPattern()
/// describes the patterns. Returns the patterns of `names` that match no node.
std::vector<std::string> keepPart(vsa::Scene& scene, const std::vector<std::string>& names,
                                  const std::vector<std::string>& without);

/// Removes inputs and members that are arrays without elements and without an element type, and
/// arrays whose elements are all such arrays. A text with such an array causes a warning when it is
/// read.
void removeEmptyArrays(vsa::Scene& scene);

/// Removes comments that contain a wrong version. The version and the time are then those of the
/// remaining comments. A text with such a comment causes a warning when it is read.
void removeBadComments(vsa::Scene& scene);

}  // namespace vsa_tools
