#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

namespace {

constexpr char HEX[] = "0123456789abcdef";

unsigned byteAt(std::string_view text, size_t index) {
  return static_cast<unsigned char>(text[index]);
}

/// What may follow a first byte: how many bytes the sequence has, and the range of its second. The
/// narrowed ranges shut out overlong forms, surrogates and what lies beyond U+10FFFF.
struct SequenceForm {
  size_t length;
  unsigned secondLow, secondHigh;
};

SequenceForm formOf(unsigned first) {
  if (first < 0x80) return {1, 0, 0};
  if (first < 0xC2) return {0, 0, 0};
  if (first < 0xE0) return {2, 0x80, 0xBF};
  if (first == 0xE0) return {3, 0xA0, 0xBF};
  if (first == 0xED) return {3, 0x80, 0x9F};
  if (first < 0xF0) return {3, 0x80, 0xBF};
  if (first == 0xF0) return {4, 0x90, 0xBF};
  if (first < 0xF4) return {4, 0x80, 0xBF};
  if (first == 0xF4) return {4, 0x80, 0x8F};
  return {0, 0, 0};
}

void appendByte(std::string& out, unsigned byte) {
  switch (byte) {
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    default:
      out += "\\x";
      out += HEX[byte >> 4];
      out += HEX[byte & 15];
  }
}

void appendCharacter(std::string& out, char32_t character) {
  out += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) out += HEX[(character >> shift) & 15];
}

}  // namespace

size_t utf8SequenceLength(std::string_view text) {
  const SequenceForm form = formOf(byteAt(text, 0));
  if (form.length < 2) return form.length;
  if (text.size() < form.length) return 0;
  const unsigned second = byteAt(text, 1);
  if (second < form.secondLow || second > form.secondHigh) return 0;
  for (size_t i = 2; i < form.length; ++i) {
    if ((byteAt(text, i) & 0xC0) != 0x80) return 0;
  }
  return form.length;
}

char32_t utf8Character(std::string_view sequence) {
  const unsigned first = byteAt(sequence, 0);
  if (sequence.size() == 1) return first;
  char32_t character = first & (0x7Fu >> sequence.size());
  for (size_t i = 1; i < sequence.size(); ++i) {
    character = character << 6 | (byteAt(sequence, i) & 0x3F);
  }
  return character;
}

bool actsOnTerminal(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0) ||
         (character >= 0x200E && character <= 0x200F) ||
         (character >= 0x2028 && character <= 0x202E) ||
         (character >= 0x2066 && character <= 0x2069) || character == 0x061C;
}

std::string visible(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const size_t length = utf8SequenceLength(text);
    const std::string_view sequence = text.substr(0, length == 0 ? 1 : length);
    const bool acts = length == 0 || actsOnTerminal(utf8Character(sequence));
    if (!acts) {
      out += sequence;
    } else if (length > 1) {
      appendCharacter(out, utf8Character(sequence));
    } else {
      appendByte(out, byteAt(sequence, 0));
    }
    text.remove_prefix(sequence.size());
  }
  return out;
}

}  // namespace vsa_tools
