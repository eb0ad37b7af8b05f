// The kinds of findings: the diagnostics of the reader, problems of files, and the rules.
#pragma once

#include <span>
#include <string_view>

#include "tools/vsa/check/finding.h"

namespace vsa_tools {

struct FindingKind {
  const char* id;
  Level level;
  const char* group;  ///< "reader", "file", or the group of the rule.
  bool isDefault;     ///< Whether findings of this kind are reported without an option.
  const char* page;   ///< The documentation page that has a heading for this id.
};

// The id of the finding for a file that cannot be opened, read to its end (also for lack of memory)
// or changed by --fix, and for each FileListProblem.
inline constexpr char UNREADABLE_FILE[] = "unreadable-file";

/// Returns the finding UNREADABLE_FILE with this message.
Finding unreadable(std::string message);

/// Returns all kinds: the reader's diagnostics, the problems of files, and the rules.
std::span<const FindingKind> allKinds();
/// Returns the kind with that id, or null if there is none.
const FindingKind* kindOf(std::string_view id);

}  // namespace vsa_tools
