// Applies the edits of findings to a file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsa/check/finding.h"

namespace vsa_tools {

/// A text with the edits of all findings, in order. Edits that overlap an earlier one are left out.
struct EditedText {
  std::string text;
  std::uint64_t fixed = 0;  ///< Findings whose edits were applied.
};
EditedText withEdits(std::string_view text, const std::vector<std::vector<TextEdit>>& findings);

/// Replaces the file `path` by a new file with these bytes. The new file is in the same folder, has
/// the same permissions, and replaces the old one when it is complete. A symbolic link remains, and
/// the file that it leads to is replaced. Throws std::runtime_error if that fails.
void replaceFile(const std::string& path, std::string_view bytes);

}  // namespace vsa_tools
