// Diagnostics in the form that editors jump to: FILE:LINE:COLUMN: LEVEL: TEXT.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <vsa/diagnostics/diagnostic.h>

namespace vsa_tools {

struct Position {
  long line, column;

  friend bool operator==(const Position&, const Position&) = default;
};

/// The position that the diagnostic's log line shows, if it shows one.
std::optional<Position> positionOf(const zn::korvo_sdk::Diagnostic& diagnostic);

/// One line without its line end. `level` is "warning" or "error". File name and text are made safe
/// to look at.
std::string diagnosticLine(std::string_view file, const std::optional<Position>& position,
                           std::string_view level, std::string_view text);

}  // namespace vsa_tools
