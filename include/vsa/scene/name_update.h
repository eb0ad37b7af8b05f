// Translation of names that a node type no longer uses, from the table of declared node types (see
// node_type.h). The reader asks it for every scene, a host's own included. Safe from any thread;
// throws std::bad_alloc.
#pragma once

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn::korvo_sdk {

/// Whether any node type is declared. As long as none is, no name has changed, and nobody needs to
/// ask.
VSA_API bool anyNodeTypes() noexcept;

/// The name under which `nodeType` now knows the input `name`; `name` itself when it never changed.
VSA_API String updateInputName(const String& nodeType, const String& name);

/// The name under which `nodeType` now knows the output `name`; `name` itself when it never
/// changed.
VSA_API String updateOutputName(const String& nodeType, const String& name);

}  // namespace zn::korvo_sdk
