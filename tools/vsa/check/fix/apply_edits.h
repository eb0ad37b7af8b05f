// Applies the edits of findings to a file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsa/check/finding.h"

namespace vsa_tools {

struct EditedText {
  std::string text;
  std::uint64_t fixed = 0;  ///< The number of findings whose edits were applied.
};
/// Applies the edits of findings to a text, in the order of the findings. All edits of a finding
/// are left out if one of them overlaps an applied edit of an earlier finding, or is not inside the
/// text.
EditedText withEdits(std::string_view text, const std::vector<std::vector<TextEdit>>& findings);

/// Replaces the file `path` by a new file with these bytes, as vsa::FileReplacement does. Only a
/// regular file is replaced that this process may write. Returns the reason of a failure, and an
/// empty text if there is none.
std::string replaceFile(const std::string& path, std::string_view bytes);

}  // namespace vsa_tools
