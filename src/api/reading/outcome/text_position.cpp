#include <vsa/reading/text_position.h>

#include <algorithm>
#include <cstddef>

namespace vsa {

namespace {

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0U) == 0x80U;
}

// Returns the number of bytes of a UTF-8 character that begins with the byte `first`. Returns 1 if
// no character begins with this byte.
std::size_t bytesAnnounced(unsigned char first) {
  if (first >= 0xF0U && first <= 0xF4U) return 4;
  if (first >= 0xE0U && first < 0xF0U) return 3;
  if (first >= 0xC2U && first < 0xE0U) return 2;
  return 1;
}

// Whether the first two bytes of a character are invalid UTF-8: an overlong form, a surrogate, or a
// number greater than U+10FFFF.
bool isForbidden(unsigned char first, unsigned char second) {
  return (first == 0xE0U && second < 0xA0U) || (first == 0xEDU && second > 0x9FU) ||
         (first == 0xF0U && second < 0x90U) || (first == 0xF4U && second > 0x8FU);
}

// Returns the number of bytes of the first character of `text`, or 1 for an invalid byte. `text`
// must not be empty.
std::size_t characterBytes(std::string_view text) {
  const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const std::size_t count = bytesAnnounced(byteAt(0));
  if (count == 1 || count > text.size() || isForbidden(byteAt(0), byteAt(1))) return 1;
  for (std::size_t i = 1; i < count; ++i) {
    if (!isContinuation(byteAt(i))) return 1;
  }
  return count;
}

// Converts a column in bytes to another unit. `widthOf(bytes)` returns the number of units of the
// character with these bytes.
template <class WidthOf>
std::uint64_t columnIn(std::string_view line, std::uint64_t column, const WidthOf& widthOf) {
  const std::uint64_t target = std::max<std::uint64_t>(column, 1) - 1;
  std::uint64_t result = 1;
  std::size_t at = 0;
  while (at < line.size()) {
    const std::size_t bytes = characterBytes(line.substr(at));
    if (target < at + bytes) return result;
    result += widthOf(bytes);
    at += bytes;
  }
  return result + (target - at);
}

}  // namespace

std::uint64_t columnInCharacters(std::string_view line, std::uint64_t column) noexcept {
  return columnIn(line, column, [](std::size_t) { return 1U; });
}

std::uint64_t columnInUtf16(std::string_view line, std::uint64_t column) noexcept {
  return columnIn(line, column, [](std::size_t bytes) { return bytes == 4 ? 2U : 1U; });
}

}  // namespace vsa
