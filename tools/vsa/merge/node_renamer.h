// NodeRenamer: renames the nodes of a text.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include <vsa/syntax.h>
#include <vsa/write.h>

namespace vsa_tools {

/// The new names of nodes, by their old names.
using Renames = std::map<std::string, std::string, std::less<>>;

/// Writes the text of `reader` in the canonical layout, with the names of nodes replaced where they
/// are declared, removed, assigned to, referred to or connected to. A valid text is expected.
/// Returns false if the sink has failed. Throws what the reader of a source throws.
bool writeRenamed(vsa::SyntaxReader& reader, const Renames& renames, vsa::Sink& sink);

}  // namespace vsa_tools
