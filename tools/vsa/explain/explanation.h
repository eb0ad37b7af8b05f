// The pages of docs/messages.md and docs/rules.md as text for a terminal.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// The ids that have a page, in the order of the documentation.
std::vector<std::string> explainedIds();

/// The ids, one a line.
std::string listOfExplanations();

/// The page of an id: its first line is the id, and code is indented. Empty if there is none.
std::string explanationOf(std::string_view id);

}  // namespace vsa_tools
