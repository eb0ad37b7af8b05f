#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

bool isTerminalControl(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0) ||
         (character >= 0x200E && character <= 0x200F) ||
         (character >= 0x2028 && character <= 0x202E) ||
         (character >= 0x2066 && character <= 0x2069) || character == 0x061C;
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
  const char bytes[] = {static_cast<char>(character >> 8 & 255),
                        static_cast<char>(character & 255)};
  std::string escape = "\\u";
  appendHex(escape, {bytes, sizeof bytes});
  return escape;
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

}  // namespace vsa_tools
