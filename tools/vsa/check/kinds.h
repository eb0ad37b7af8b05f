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
  bool isDefault;     ///< Whether findings of this kind are reported by default.
  const char* page;   ///< The page of the documentation that has a heading of this id.
};

// The id of a finding about a file that cannot be opened, or cannot be read to its end.
inline constexpr char UNREADABLE_FILE[] = "unreadable-file";

/// All kinds: those of the reader, those of files, and the rules.
std::span<const FindingKind> allKinds();
/// The kind of that id; null if there is none.
const FindingKind* kindOf(std::string_view id);

}  // namespace vsa_tools
