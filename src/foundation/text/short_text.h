// Compares two texts. Texts of 2 to 16 bytes are compared in words of 2, 4 or 8 bytes, which takes
// only a few instructions. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "foundation/base/load_word.h"

namespace zn::detail {

// Compares the first and the last word of two texts. The texts must be at least one word and at
// most two words long. The two words may overlap, so some characters are compared twice.
template <class Word>
bool sameWords(const char* a, const char* b, std::size_t length) noexcept {
  const std::size_t last = length - sizeof(Word);
  const Word first = loadWord<Word>(a) ^ loadWord<Word>(b);
  const Word second = loadWord<Word>(a + last) ^ loadWord<Word>(b + last);
  return (first | second) == 0;
}

/// Whether two texts of the same length are equal.
inline bool sameCharacters(const char* a, const char* b, std::size_t length) noexcept {
  if (length > 16) return std::memcmp(a, b, length) == 0;
  if (length >= 8) return sameWords<std::uint64_t>(a, b, length);
  if (length >= 4) return sameWords<std::uint32_t>(a, b, length);
  if (length >= 2) {
    return a[length - 1] == b[length - 1] &&
           loadWord<std::uint16_t>(a) == loadWord<std::uint16_t>(b);
  }
  return length == 0 || *a == *b;
}

inline bool sameCharacters(std::string_view a, std::string_view b) noexcept {
  return a.size() == b.size() && sameCharacters(a.data(), b.data(), a.size());
}

}  // namespace zn::detail
