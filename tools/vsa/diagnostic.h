// Diagnostics in the form that editors jump to: FILE:LINE:COLUMN: LEVEL: TEXT.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vsa_tools {

struct Position {
  long line, column;

  friend bool operator==(const Position&, const Position&) = default;
};

/// The position that the reader put into its text, "KIND (LINE,COLUMN): ...", or nothing. Only the
/// reader's own kinds at the very start count: further in, and in texts without a kind, parentheses
/// are the words of the scene file.
std::optional<Position> positionIn(std::string_view text);

/// One line without its line end. `level` is "warning" or "error". File name and text are made safe
/// to look at.
std::string diagnosticLine(std::string_view file, const std::optional<Position>& position,
                           std::string_view level, std::string_view text);

}  // namespace vsa_tools
