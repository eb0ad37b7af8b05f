#include "tools/vsa/common/diagnostic.h"

#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

std::optional<Position> positionOf(const vsa::Diagnostic& diagnostic) {
  if (diagnostic.kind.empty()) return std::nullopt;
  return Position{diagnostic.logLineNumber, diagnostic.logColumn};
}

std::string diagnosticLine(std::string_view file, const std::optional<Position>& position,
                           std::string_view level, std::string_view text) {
  std::string line = printableLine(file);
  if (position)
    line += ':' + std::to_string(position->line) + ':' + std::to_string(position->column);
  line += ": ";
  line += level;
  line += ": ";
  return line + printableLine(text);
}

}  // namespace vsa_tools
