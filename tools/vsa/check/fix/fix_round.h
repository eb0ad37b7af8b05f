// One round of --fix: the edits of all findings of a text, if they make it better.
#pragma once

#include "tools/vsa/check/file_check.h"
#include "tools/vsa/check/fix/apply_edits.h"
#include "tools/vsa/check/selection/level_table.h"
#include "tools/vsa/check/text/checked_text.h"

namespace vsa_tools {

/// Checks a text and applies the edits of its findings, but not those that the levels or comments
/// ignore, nor those that may only follow from an earlier mistake. The new text is checked, too. If
/// it has more errors or not fewer findings with edits, the edits are not safe. The result has no
/// text and no fixed findings in that case, without edits, and after Ctrl-C.
EditedText fixedOnce(CheckedText& text, const FileCheckOptions& options, const LevelTable& levels);

}  // namespace vsa_tools
