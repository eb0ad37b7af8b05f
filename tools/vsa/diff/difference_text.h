// The values of both scenes in a difference, as short text.
#pragma once

#include <string>

#include "tools/vsa/diff/scene_difference.h"

namespace vsa_tools {

/// Returns the path of the input, such as "ball.radius". Its first name is the name of the node in
/// B, or of the node in A if B has no such node. Long names and paths are shortened.
std::string pathOf(const Difference& difference);

/// The two values or the two connections of a difference. If the types of two values differ, each
/// is followed by its type. The side of a scene without the input is empty. For a difference in a
/// connection, the side without one is "none". If two strings differ, each is shown from a few
/// bytes before the first difference on, or from its beginning.
struct DifferenceSides {
  std::string a, b;
};
DifferenceSides sidesOf(const Difference& difference);

/// Returns a text about the difference of two lists, such as "5 elements differ, the first at 3: (0
/// 1 2) -> (0 1 3), largest deviation 0.5 at 17". Returns an empty text if the values are not
/// compared as lists, or if only the lengths of the lists differ.
std::string listText(const Difference& difference);

}  // namespace vsa_tools
