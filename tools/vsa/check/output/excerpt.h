// An excerpt: a source line as a terminal displays it, with carets under a part of the line.
#pragma once

#include <string>

#include <vsa/reading/text_position.h>
#include "tools/vsa/check/text/checked_text.h"

namespace vsa_tools {

struct Excerpt {
  /// The line without its line end. Tabs are replaced by blanks, and control characters and invalid
  /// UTF-8 are escaped. Of a long line, only the part around the carets is shown. "..." replaces
  /// the parts before and after it.
  std::string line;
  /// The blanks and carets that are printed below `line`. The marked part of the line has one caret
  /// below each of its columns, and at least one.
  std::string carets;
};

/// Returns the first line of `range`, with carets under the bytes of `range` in that line. An empty
/// range has one caret. `width` is the maximum number of terminal columns for the line, and must be
/// more than 6.
Excerpt excerptOf(const CheckedText& text, const vsa::TextRange& range, std::size_t width);

/// Returns how many columns a terminal needs for a character: 0 for a combining character, 2 for a
/// wide one, and otherwise 1.
int columnsOf(char32_t character);

}  // namespace vsa_tools
