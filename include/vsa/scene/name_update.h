// Translates former names of inputs and outputs to current names, according to the declarations of
// node_type.h. The reader calls these functions for every scene, including a host's own. They may
// be called from any thread. The two translations throw std::bad_alloc.
#pragma once

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn::korvo_sdk {

/// Whether any node type is declared. If none is, no name has a translation.
VSA_API bool anyNodeTypes() noexcept;

/// The current name of the input `name` of `nodeType`, or `name` if it has no translation.
VSA_API String updateInputName(const String& nodeType, const String& name);

/// The current name of the output `name` of `nodeType`, or `name` if it has no translation.
VSA_API String updateOutputName(const String& nodeType, const String& name);

}  // namespace zn::korvo_sdk
