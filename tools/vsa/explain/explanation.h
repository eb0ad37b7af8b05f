// Functions that return sections of docs/messages.md and docs/rules.md as text for a terminal.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// Returns the ids that have a section, in the order of the documentation.
std::vector<std::string> explainedIds();

/// Returns these ids as text, one a line.
std::string listOfExplanations();

/// Returns the section about an id. Its first line is the id, and code is indented. Returns an
/// empty text if there is no such section.
std::string explanationOf(std::string_view id);

}  // namespace vsa_tools
