// String::unescape: backslash sequences to the characters they stand for. UTF-16 code units as in
// JSON (RFC 8259), written as UTF-8 (RFC 3629).
#include <cstdint>
#include <cstring>

#include "foundation/string.h"

namespace zn {

namespace {

constexpr unsigned NO_UNIT = 0x10000;  // not a UTF-16 code unit

unsigned hexValue(char c) {
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
  return static_cast<unsigned>(toLowerCase(c) - 'a') + 10U;
}

// The value of exactly `count` hexadecimal digits at `at`, or NO_UNIT.
unsigned hexDigits(const char* at, const char* end, int count) {
  if (end - at < count) return NO_UNIT;
  unsigned value = 0;
  for (int i = 0; i < count; ++i) {
    if (!String::isHexDigit(at[i])) return NO_UNIT;
    value = value * 16 + hexValue(at[i]);
  }
  return value;
}

// The code unit of a \uHHHH sequence at `at`, or NO_UNIT.
unsigned codeUnit(const char* at, const char* end) {
  if (end - at < 2 || at[0] != '\\' || at[1] != 'u') return NO_UNIT;
  return hexDigits(at + 2, end, 4);
}

// The character of a one-letter escape, or NUL.
char simpleEscape(char letter) {
  switch (letter) {
    case '\\':
    case '"':
    case '\'':
    case '/':
      return letter;
    case 'a':
      return '\a';
    case 'b':
      return '\b';
    case 'f':
      return '\f';
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    case 'v':
      return '\v';
    default:
      return '\0';
  }
}

char* appendUtf8(char* to, unsigned code) {
  const auto put = [&to](unsigned byte) { *to++ = static_cast<char>(byte); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | (code >> 6));
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | (code >> 12));
    put(0x80 | ((code >> 6) & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | (code >> 18));
    put(0x80 | ((code >> 12) & 0x3F));
    put(0x80 | ((code >> 6) & 0x3F));
    put(0x80 | (code & 0x3F));
  }
  return to;
}

// Reads a \u sequence, or a pair of them, at `at`. Returns the characters read, 0 for none that
// stands for a character.
int unicodeEscape(const char* at, const char* end, char*& to) {
  const unsigned unit = codeUnit(at, end);
  if (unit == NO_UNIT || unit == 0) return 0;
  if (unit < 0xD800 || unit > 0xDFFF) {
    to = appendUtf8(to, unit);
    return 6;
  }
  const unsigned second = codeUnit(at + 6, end);
  if (unit > 0xDBFF || second < 0xDC00 || second > 0xDFFF) return 0;
  to = appendUtf8(to, 0x10000 + ((unit - 0xD800) << 10) + (second - 0xDC00));
  return 12;
}

// Reads one escape sequence at `at` (a backslash) and writes what it stands for. Returns the
// characters read, 0 when it is none and stays as written.
int escape(const char* at, const char* end, char*& to) {
  if (end - at < 2) return 0;
  if (at[1] == 'u') return unicodeEscape(at, end, to);
  if (at[1] == 'x') {
    const unsigned byte = hexDigits(at + 2, end, 2);
    if (byte == NO_UNIT || byte == 0) return 0;
    *to++ = static_cast<char>(byte);
    return 4;
  }
  const char simple = simpleEscape(at[1]);
  if (simple == '\0') return 0;
  *to++ = simple;
  return 2;
}

}  // namespace

// Most characters stand for themselves: they are copied from one backslash to the next. No sequence
// stands for more characters than it is written with.
std::size_t String::unescape(std::string_view text, char* out) noexcept {
  char* to = out;
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at < end) {
    if (*at == '\\') {
      if (const int read = escape(at, end, to); read != 0) {
        at += read;
        continue;
      }
      *to++ = *at++;
    }
    const std::size_t left = static_cast<std::size_t>(end - at);
    const void* const next = left == 0 ? nullptr : std::memchr(at, '\\', left);
    const std::size_t count =
        next == nullptr ? left : static_cast<std::size_t>(static_cast<const char*>(next) - at);
    if (count != 0) std::memcpy(to, at, count);
    at += count;
    to += count;
  }
  return static_cast<std::size_t>(to - out);
}

String String::unescape() const {
  const std::string_view text = view();
  if (text.find('\\') == std::string_view::npos) return *this;
  ds::Vector<char> chars;
  chars.reserve(static_cast<unsigned long>(text.size() + 1));
  return String::copyOf({chars.data, unescape(text, chars.data)});
}

}  // namespace zn
