// Prefetch hints. They have no effect with a compiler that does not support them. Internal.
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
inline void prefetch([[maybe_unused]] const void* place,
                     [[maybe_unused]] std::size_t ahead = 0) noexcept {
#if defined(__GNUC__) || defined(__clang__)
  __builtin_prefetch(addressAhead(place, ahead));
#endif
}

/// Prefetches the memory `ahead` bytes after `place` for writing. The address may be invalid.
inline void prefetchForWriting([[maybe_unused]] void* place,
                               [[maybe_unused]] std::size_t ahead = 0) noexcept {
#if defined(__GNUC__) || defined(__clang__)
  __builtin_prefetch(addressAhead(place, ahead), 1);
#endif
}

}  // namespace zn::detail
