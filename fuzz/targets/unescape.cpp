// Compares String::unescape with a second implementation. The second implementation follows the
// table of escape sequences and decodes one sequence at a time.
#include <utf8.h>
#include <cstdlib>
#include <string>

#include "fuzz/support/check.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

namespace {

/// Returns the value of `count` hexadecimal digits at `at`. Returns -1 if there are fewer digits.
long hexAt(const std::string& text, std::size_t at, std::size_t count) {
  if (at + count > text.size()) return -1;
  const std::string digits = text.substr(at, count);
  if (digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) return -1;
  return std::strtol(digits.c_str(), nullptr, 16);
}

/// Returns the code unit of a "\uHHHH" sequence at `at`. Returns -1 if there is no such sequence.
long unitAt(const std::string& text, std::size_t at) {
  return text.compare(at, 2, "\\u") == 0 ? hexAt(text, at + 2, 4) : -1;
}

/// Decodes the escape sequence at `at` and appends its character to `out`. Returns the length of
/// the sequence. Returns 0 if there is no valid sequence.
std::size_t decodeEscape(const std::string& text, std::size_t at, std::string& out) {
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
    utf8::append(static_cast<char32_t>(unit), out);
    return 6;
  }
  const long low = at + 6 < text.size() ? unitAt(text, at + 6) : -1;
  if (low < 0xDC00 || low > 0xDFFF) return 0;
  utf8::append(static_cast<char32_t>(0x10000 + (unit - 0xD800) * 1024 + (low - 0xDC00)), out);
  return 12;
}

std::string plainUnescape(const std::string& text) {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = text[at] == '\\' ? decodeEscape(text, at, out) : 0;
    if (length == 0) out += text[at];
    at += length == 0 ? 1 : length;
  }
  return out;
}

}  // namespace

void unescape(std::string_view input) {
  const std::string text =
      mapToAlphabet("\\\\\\\\uuuuxx\"'/abfnrtvdDbB8cCeEfF0123456789aAfF", splitSettings(input));
  checkSame(plainUnescape(text), vsa_tests::string(text).unescape().view(), "unescaped text");
}

}  // namespace vsa_fuzz
