// String::unescape against a second reader of the escapes, written from their table: one step a
// character, every sequence looked at afresh.
#include <cstdlib>
#include <string>

#include "fuzz/support/check.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

namespace {

/// The value of `count` hexadecimal digits at `at`, or -1.
long hexAt(const std::string& text, std::size_t at, std::size_t count) {
  if (at + count > text.size()) return -1;
  const std::string digits = text.substr(at, count);
  if (digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) return -1;
  return std::strtol(digits.c_str(), nullptr, 16);
}

/// The code unit of "\uHHHH" at `at`, or -1.
long unitAt(const std::string& text, std::size_t at) {
  return text.compare(at, 2, "\\u") == 0 ? hexAt(text, at + 2, 4) : -1;
}

std::string utf8(long code) {
  const auto byte = [](long value) { return static_cast<char>(static_cast<unsigned char>(value)); };
  if (code < 0x80) return {byte(code)};
  const char last = byte(0x80 + code % 64);
  if (code < 0x800) return {byte(0xC0 + code / 64), last};
  const char third = byte(0x80 + code / 64 % 64);
  if (code < 0x10000) return {byte(0xE0 + code / 4096), third, last};
  return {byte(0xF0 + code / 262144), byte(0x80 + code / 4096 % 64), third, last};
}

/// Reads the sequence at `at` into `out`; the characters that it takes, 0 when it is none.
std::size_t sequence(const std::string& text, std::size_t at, std::string& out) {
  static const std::string LETTERS = "\\\"'/abfnrtv";
  static const std::string MEANINGS = "\\\"'/\a\b\f\n\r\t\v";
  if (at + 1 >= text.size()) return 0;
  const std::size_t letter = LETTERS.find(text[at + 1]);
  if (letter != std::string::npos) {
    out += MEANINGS[letter];
    return 2;
  }
  const long byte = text[at + 1] == 'x' ? hexAt(text, at + 2, 2) : -1;
  if (byte > 0) {
    out += static_cast<char>(static_cast<unsigned char>(byte));
    return 4;
  }
  const long unit = unitAt(text, at);
  if (unit <= 0 || (unit >= 0xDC00 && unit <= 0xDFFF)) return 0;
  if (unit < 0xD800 || unit > 0xDFFF) {
    out += utf8(unit);
    return 6;
  }
  const long low = at + 6 < text.size() ? unitAt(text, at + 6) : -1;
  if (low < 0xDC00 || low > 0xDFFF) return 0;
  out += utf8(0x10000 + (unit - 0xD800) * 1024 + (low - 0xDC00));
  return 12;
}

std::string plainUnescape(const std::string& text) {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t taken = text[at] == '\\' ? sequence(text, at, out) : 0;
    if (taken == 0) out += text[at];
    at += taken == 0 ? 1 : taken;
  }
  return out;
}

}  // namespace

void unescape(std::string_view input) {
  const std::string text =
      textIn("\\\\\\\\uuuuxx\"'/abfnrtvdDbB8cCeEfF0123456789aAfF", splitSettings(input));
  checkSame(plainUnescape(text), vsa_tests::string(text).unescape().view(), "unescaped text");
}

}  // namespace vsa_fuzz
