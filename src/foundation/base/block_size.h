// The size of the blocks that the library allocates for many objects or bytes. Internal.
#pragma once

#include <algorithm>
#include <cstddef>

namespace zn::detail {

/// The size of a block that has `bytes` bytes, except in the fuzzers. They define VSA_SMALL_BLOCKS,
/// because AddressSanitizer maps a block of 64 KiB or more from the system and returns it
/// afterwards. A power of two stays a power of two.
constexpr std::size_t blockBytes(std::size_t bytes) noexcept {
#if defined(VSA_SMALL_BLOCKS)
  return std::min(bytes, std::size_t{8192});
#else
  return bytes;
#endif
}

}  // namespace zn::detail
