// Loads several bytes of memory as one number, at any alignment. Internal.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace zn::detail {

/// Returns the bytes at `from` as a number in the byte order of the machine.
template <class Word>
Word loadWord(const void* from) noexcept {
  Word word;
  std::memcpy(&word, from, sizeof word);
  return word;
}

/// Returns the four or eight bytes at `from` as a number. The first byte is in the lowest bits.
template <class Word = std::uint64_t>
Word loadLittleEndian(const void* from) noexcept {
  const auto word = loadWord<Word>(from);
  if constexpr (std::endian::native != std::endian::big) return word;
  return sizeof(Word) == 4 ? __builtin_bswap32(static_cast<std::uint32_t>(word))
                           : __builtin_bswap64(word);
}

}  // namespace zn::detail
