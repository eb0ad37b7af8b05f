// The node types of a file.
#pragma once

#include <string>

namespace vsa_tools {

/// Declares the types that the JSON file `name` describes, see docs/types.md. If it cannot be read,
/// prints why and returns false.
bool declareTypesOf(const std::string& name);

}  // namespace vsa_tools
