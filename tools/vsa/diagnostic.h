// Diagnostics in the format that editors recognise: FILE:LINE:COLUMN: LEVEL: TEXT.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vsa_tools {

struct Position {
  long line, column;

  friend bool operator==(const Position&, const Position&) = default;
};

/// The position in a log text, "KIND (LINE,COLUMN): ...", or nothing. Only the reader's own kinds
/// at the start of the text count. Parentheses elsewhere can come from names in the scene file.
std::optional<Position> positionIn(std::string_view text);

/// One line without its line end. `level` is "warning" or "error". Escapes file name and text with
/// printable().
std::string diagnosticLine(std::string_view file, const std::optional<Position>& position,
                           std::string_view level, std::string_view text);

}  // namespace vsa_tools
