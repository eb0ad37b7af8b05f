// Translates former names of inputs and outputs to current names. The declarations of node_type.h
// contain the former names. The reader calls these functions for every scene, including the scene
// of a host. Any thread may call them. The two functions that translate throw std::bad_alloc.
#pragma once

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn::korvo_sdk {

/// Returns whether a node type is declared. If none is declared, no name has a translation.
VSA_API bool anyNodeTypes() noexcept;

/// Returns the current name of the input or member `name` of a node of type `nodeType`. Returns
/// `name` if it is not a former name.
VSA_API String updateInputName(const String& nodeType, const String& name);

/// Returns the current name of the output `name` of a node of type `nodeType`. Returns `name` if it
/// is not a former name.
VSA_API String updateOutputName(const String& nodeType, const String& name);

}  // namespace zn::korvo_sdk
