// writeRenamed(): renames the nodes of a text.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include <vsa/syntax.h>
#include <vsa/write.h>

namespace vsa_tools {

/// The new names of nodes, by their old names.
using Renames = std::map<std::string, std::string, std::less<>>;

/// Writes the text of `reader` in the canonical layout, with new names of nodes. Names are replaced
/// in declarations, directives, left-hand sides, references and connections. The text must be
/// valid. Returns false if the sink has failed. Throws what the source of the reader throws.
bool writeRenamed(vsa::SyntaxReader& reader, const Renames& renames, vsa::Sink& sink);

}  // namespace vsa_tools
