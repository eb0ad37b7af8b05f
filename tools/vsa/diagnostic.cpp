#include "tools/vsa/diagnostic.h"

#include <charconv>

#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

namespace {

/// The kinds that the reader writes before a position.
constexpr std::string_view KINDS[] = {
    "PARSE ERROR",
    "BUFFER ERROR",
    "TYPE ERROR",
    "TYPE WARNING",
    "ENUM WARNING",
    "BAD TOKEN",
    "INVALID TOKEN",
    "INVALID PAREN LIST TOKEN",
    "INVALID BRACKET LIST TOKEN",
    "INVALID BRACE LIST TOKEN",
};

/// Removes `wanted` from the start of `rest`; false if `rest` does not start with it.
bool skip(std::string_view& rest, std::string_view wanted) {
  if (!rest.starts_with(wanted)) return false;
  rest.remove_prefix(wanted.size());
  return true;
}

bool skipNumber(std::string_view& rest, long& number) {
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
  if (error != std::errc()) return false;
  rest.remove_prefix(static_cast<size_t>(end - rest.data()));
  return true;
}

std::optional<Position> positionAfter(std::string_view kind, std::string_view text) {
  Position at{};
  const bool found = skip(text, kind) && skip(text, " (") && skipNumber(text, at.line) &&
                     skip(text, ",") && skipNumber(text, at.column) && skip(text, "): ");
  return found ? std::optional(at) : std::nullopt;
}

}  // namespace

std::optional<Position> positionIn(std::string_view text) {
  for (const std::string_view kind : KINDS) {
    if (const auto position = positionAfter(kind, text)) return position;
  }
  return std::nullopt;
}

std::string diagnosticLine(std::string_view file, const std::optional<Position>& position,
                           std::string_view level, std::string_view text) {
  std::string line = printable(file);
  if (position)
    line += ':' + std::to_string(position->line) + ':' + std::to_string(position->column);
  line += ": ";
  line += level;
  line += ": ";
  return line + printable(text);
}

}  // namespace vsa_tools
