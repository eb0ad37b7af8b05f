// The size of the blocks that the library allocates for many objects or bytes. Internal.
#pragma once

#include <algorithm>
#include <cstddef>

namespace zn::detail {

/// Returns `bytes`, the wanted size of a block. In the fuzzers, returns at most 8 KiB. The fuzzers
/// define VSA_SMALL_BLOCKS, because AddressSanitizer maps large blocks from the system and unmaps
/// them afterwards, which takes time. If `bytes` is a power of two, so is the result.
constexpr std::size_t blockBytes(std::size_t bytes) noexcept {
#if defined(VSA_SMALL_BLOCKS)
  return std::min(bytes, std::size_t{8192});
#else
  return bytes;
#endif
}

}  // namespace zn::detail
