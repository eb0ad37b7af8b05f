#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

namespace {

struct CharacterRange {
  char32_t first, last;
};

constexpr CharacterRange NOT_SHOWN[] = {
    {0x0000, 0x001F}, {0x007F, 0x009F},   {0x00AD, 0x00AD},   {0x034F, 0x034F}, {0x061C, 0x061C},
    {0x115F, 0x1160}, {0x17B4, 0x17B5},   {0x180E, 0x180E},   {0x200B, 0x200F}, {0x2028, 0x202E},
    {0x2060, 0x2064}, {0x2066, 0x206F},   {0x3164, 0x3164},   {0xFEFF, 0xFEFF}, {0xFFA0, 0xFFA0},
    {0xFFF9, 0xFFFB}, {0x1D173, 0x1D17A}, {0xE0000, 0xE007F},
};

std::string escapedUnit(char32_t unit) {
  const char bytes[] = {static_cast<char>(unit >> 8 & 255), static_cast<char>(unit & 255)};
  std::string escape = "\\u";
  appendHex(escape, {bytes, sizeof bytes});
  return escape;
}

// Whether the text from `at` on begins like a command of a CI runner.
bool isCommand(std::string_view text, std::size_t at) {
  const std::string_view rest = text.substr(at);
  if (rest.starts_with("##[") || rest.starts_with("##vso[")) return true;
  return rest.starts_with("::") && text.find_first_not_of(" \t") == at;
}

}  // namespace

bool isTerminalControl(char32_t character) {
  for (const CharacterRange& range : NOT_SHOWN) {
    if (character <= range.last) return character >= range.first;
  }
  return false;
}

void appendHex(std::string& to, std::string_view bytes) {
  constexpr char DIGITS[] = "0123456789abcdef";
  for (const char byte : bytes) {
    to += DIGITS[static_cast<unsigned char>(byte) >> 4];
    to += DIGITS[byte & 15];
  }
}

std::string escapedByte(char byte) {
  if (byte == '\n') return "\\n";
  if (byte == '\r') return "\\r";
  if (byte == '\t') return "\\t";
  std::string escape = "\\x";
  appendHex(escape, {&byte, 1});
  return escape;
}

std::string escapedCharacter(char32_t character) {
  if (character <= 0xFFFF) return escapedUnit(character);
  const char32_t offset = character - 0x10000;
  return escapedUnit(0xD800 + (offset >> 10)) + escapedUnit(0xDC00 + (offset & 0x3FF));
}

std::string printable(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  forEachCharacter(
      text,
      [&](char32_t character, std::string_view bytes) {
        if (!isTerminalControl(character)) {
          out += bytes;
        } else {
          out += bytes.size() == 1 ? escapedByte(bytes[0]) : escapedCharacter(character);
        }
      },
      [&](char byte) { out += escapedByte(byte); });
  return out;
}

// The strings of a JSON text contain no line feed, because JSON requires an escape for it. Every
// line feed is therefore between two tokens, and remains.
std::string printableJson(std::string_view json) {
  std::string out;
  out.reserve(json.size());
  forEachCharacter(
      json,
      [&](char32_t character, std::string_view bytes) {
        if (character == '\n' || !isTerminalControl(character)) {
          out += bytes;
        } else {
          out += escapedCharacter(character);
        }
      },
      [&](char byte) { out += byte; });
  return out;
}

std::string printableLine(std::string_view text) {
  if (text.find_first_of("\\:#") == std::string_view::npos) return printable(text);
  std::string line;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isBackslash = text[i] == '\\';
    if (!isBackslash && !isCommand(text, i)) continue;
    line += printable(text.substr(begin, i - begin));
    line += isBackslash ? "\\\\" : "\\x";
    if (!isBackslash) appendHex(line, text.substr(i, 1));
    begin = i + 1;
  }
  return line + printable(text.substr(begin));
}

}  // namespace vsa_tools
