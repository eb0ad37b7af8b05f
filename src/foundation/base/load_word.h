// Several bytes of memory as one number, wherever they lie. Internal.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace zn::detail {

/// The bytes at `from` as a number, in the byte order of the machine.
template <class Word>
Word loadWord(const void* from) noexcept {
  Word word;
  std::memcpy(&word, from, sizeof word);
  return word;
}

/// The eight bytes at `from` as a number, the first one lowest.
inline std::uint64_t loadLittleEndian(const void* from) noexcept {
  const auto word = loadWord<std::uint64_t>(from);
  return std::endian::native == std::endian::big ? __builtin_bswap64(word) : word;
}

}  // namespace zn::detail
