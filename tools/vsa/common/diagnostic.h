// Diagnostics in the format that editors recognise: FILE:LINE:COLUMN: LEVEL: TEXT, or without a
// position FILE: LEVEL: TEXT.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <vsa/reading/read_diagnostic.h>

namespace vsa_tools {

struct Position {
  long line, column;

  friend bool operator==(const Position&, const Position&) = default;
};

/// Returns the position in the diagnostic's log line, or nothing if the line shows none.
std::optional<Position> positionOf(const vsa::Diagnostic& diagnostic);

/// Returns the diagnostic as one line without a line end. `level` is "warning" or "error". File
/// name and text are escaped by printableLine().
std::string diagnosticLine(std::string_view file, const std::optional<Position>& position,
                           std::string_view level, std::string_view text);

}  // namespace vsa_tools
