// A source line as a terminal displays it, with carets under a part of it.
#pragma once

#include <string>

#include <vsa/reading/text_position.h>
#include "tools/vsa/check/text/checked_text.h"

namespace vsa_tools {

struct Excerpt {
  /// The line, without its line end. Tabs become blanks, control characters and invalid UTF-8 are
  /// escaped. Of a long line, only the part around the carets is shown, with "..." at each cut.
  std::string line;
  /// Blanks and carets, to be printed below `line`. Wide characters have two carets.
  std::string carets;
};

/// The first line of `range`, and carets under the bytes of `range` in that line. An empty range
/// has one caret. `width` is the number of columns of the terminal that the line may take.
Excerpt excerptOf(const CheckedText& text, const vsa::TextRange& range, std::size_t width);

/// The columns that a terminal needs for a character: 0 for a combining one, 2 for a wide one.
int columnsOf(char32_t character);

}  // namespace vsa_tools
