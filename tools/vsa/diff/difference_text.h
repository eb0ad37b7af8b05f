// The two sides of a difference as short text.
#pragma once

#include <string>

#include "tools/vsa/diff/scene_difference.h"

namespace vsa_tools {

/// The path of the input, "ball.radius", with the name of its node in B if B has the node.
std::string pathOf(const Difference& difference);

/// The two values, or the two connections. If the short texts of both values are equal, types are
/// added, and long strings are shown from near their first difference on.
struct DifferenceSides {
  std::string a, b;
};
DifferenceSides sidesOf(const Difference& difference);

/// "5 elements differ, the first at 3: (0 1 2) -> (0 1 3), largest deviation 0.5 at 17"; empty if
/// the two values are sufficient.
std::string listText(const Difference& difference);

}  // namespace vsa_tools
