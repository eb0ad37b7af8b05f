#include "tools/scene_text/json_writer.h"

#include <algorithm>

#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

namespace {

constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD";  // U+FFFD

/// Whether a byte is an ASCII character that needs no escape.
bool isPlain(char c) {
  return c >= 0x20 && c < 0x7F && c != '"' && c != '\\';
}

}  // namespace

void JsonWriter::text(std::string_view text) {
  out_.put('"');
  auto at = text.begin();
  while (at != text.end()) {
    const auto plainEnd = std::find_if_not(at, text.end(), isPlain);
    out_.put(std::string_view(at, plainEnd));
    at = std::find_if(plainEnd, text.end(), isPlain);
    forEachCharacter(
        std::string_view(plainEnd, at),
        [this](char32_t character, std::string_view bytes) { this->character(character, bytes); },
        [this](char) { out_.put(REPLACEMENT); });
  }
  out_.put('"');
}

// Does not use nlohmann-json for the escaping. That library escapes either all characters outside
// ASCII, or none of them, not even those that must be escaped here (C1 and the direction marks). It
// also replaces an incomplete UTF-8 sequence as a whole and not byte by byte.
void JsonWriter::character(char32_t character, std::string_view bytes) {
  switch (character) {
    case '"':
      return out_.put("\\\"");
    case '\\':
      return out_.put("\\\\");
    case '\n':
      return out_.put("\\n");
    case '\r':
      return out_.put("\\r");
    case '\t':
      return out_.put("\\t");
    default:
      if (isTerminalControl(character)) return out_.put(escapedCharacter(character));
      return out_.put(bytes);
  }
}

}  // namespace vsa_tools
