// Diagnostics in the format that editors recognise: FILE:LINE:COLUMN: LEVEL: TEXT.
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

/// The position that the diagnostic's log line shows, if it shows one.
std::optional<Position> positionOf(const vsa::Diagnostic& diagnostic);

/// One line without its line end. `level` is "warning" or "error". Escapes file name and text with
/// printableLine().
std::string diagnosticLine(std::string_view file, const std::optional<Position>& position,
                           std::string_view level, std::string_view text);

}  // namespace vsa_tools
