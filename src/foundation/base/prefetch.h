// Prefetch hints. Internal.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zn::detail {

/// Returns the address `ahead` bytes after `place`. The address may be outside of any object.
inline void* addressAhead(const void* place, std::size_t ahead) noexcept {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): pointer arithmetic is undefined outside of an object
  return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(place) + ahead);
}

/// Prefetches the memory `ahead` bytes after `place` for reading. The address may be invalid.
inline void prefetch(const void* place, std::size_t ahead = 0) noexcept {
  __builtin_prefetch(addressAhead(place, ahead));
}

/// Prefetches the memory `ahead` bytes after `place` for writing. The address may be invalid.
inline void prefetchForWriting(void* place, std::size_t ahead = 0) noexcept {
  __builtin_prefetch(addressAhead(place, ahead), 1);
}

}  // namespace zn::detail
