// A hint to the processor, where the compiler knows how to give it.
#pragma once

namespace zn::detail {

/// The memory at `place` will be read soon; it need not be there.
inline void prefetch([[maybe_unused]] const void* place) noexcept {
#if defined(__GNUC__) || defined(__clang__)
  __builtin_prefetch(place);
#endif
}

}  // namespace zn::detail
