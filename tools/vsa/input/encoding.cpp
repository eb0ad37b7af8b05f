#include "tools/vsa/input/encoding.h"

#include <cstddef>

namespace vsa_tools {

namespace {

using namespace std::string_view_literals;

/// Returns whether there are at least two groups of four bytes, and each is a character from U+0001
/// to U+10FFFF in UTF-32.
bool isUtf32(std::string_view head, bool bigEndian) {
  for (std::size_t unit = 0; unit + 4 <= head.size(); unit += 4) {
    const char highest = head[unit + (bigEndian ? 0 : 3)],
               second = head[unit + (bigEndian ? 1 : 2)];
    const bool inRange = highest == '\0' && second >= 0 && second <= 0x10;
    if (!inRange || head.substr(unit, 4) == "\0\0\0\0"sv) return false;
  }
  return head.size() >= 8;
}

bool looksLikeUtf32(std::string_view head) {
  return head.starts_with("\xFF\xFE\0\0"sv) || head.starts_with("\0\0\xFE\xFF"sv) ||
         isUtf32(head, false) || isUtf32(head, true);
}

/// Returns whether the file is probably UTF-16. A text usually begins with an ASCII character,
/// whose high byte is NUL in UTF-16: the place of this NUL shows the byte order. Most NUL bytes
/// must be high bytes, because a low byte is NUL in only one of 256 characters.
bool looksLikeUtf16(std::string_view head) {
  if (head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF")) return true;
  std::size_t nuls[2] = {0, 0};
  for (std::size_t i = 0; i < head.size(); ++i) nuls[i % 2] += head[i] == '\0';
  const bool bigEndian = head.starts_with('\0');
  const std::size_t expected = nuls[bigEndian ? 0 : 1], others = nuls[bigEndian ? 1 : 0];
  const bool firstHasNul = bigEndian || (head.size() > 1 && head[1] == '\0');
  return firstHasNul && expected > 1 && expected > others;
}

}  // namespace

const char* foreignEncoding(std::string_view head) {
  if (looksLikeUtf32(head)) return "UTF-32";
  return looksLikeUtf16(head) ? "UTF-16" : nullptr;
}

const char* compressorOf(std::string_view head) {
  if (head.starts_with("\x1F\x8B\x08")) return "gzip";
  if (head.starts_with("\x28\xB5\x2F\xFD")) return "zstd";
  if (head.starts_with("\xFD\x37zXZ\0"sv)) return "xz";
  const bool isBzip2 = head.starts_with("BZh") && head.substr(4).starts_with("1AY&SY");
  return isBzip2 ? "bzip2" : nullptr;
}

}  // namespace vsa_tools
