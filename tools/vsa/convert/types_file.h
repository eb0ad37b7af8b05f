// Declares the node types of a file.
#pragma once

#include <string>

namespace vsa_tools {

/// Declares the types that the JSON file `name` describes, see docs/types.md. If the file cannot be
/// read or is wrong, prints the reason, declares nothing and returns false.
bool declareTypesOf(const std::string& name);

}  // namespace vsa_tools
