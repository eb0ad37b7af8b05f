// Byte scans that the lexer's inner loops share: sixteen bytes a step where the processor has them,
// one byte a step elsewhere. Internal; the door is vsa.h.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zn::korvo_sdk::impl {

namespace detail {

#if defined(__SSE2__)
inline __m128i load16(const char* at) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

inline std::uint32_t equalMask(__m128i bytes, char c) {
  return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(c))));
}
#endif

}  // namespace detail

/// The first byte in [at, end) that is `a`, `b` or the end mark 0xFF, or `end`.
inline const char* findStop(const char* at, const char* end, char a, char b) {
#if defined(__SSE2__)
  for (; end - at >= 16; at += 16) {
    const __m128i bytes = detail::load16(at);
    const std::uint32_t stops = detail::equalMask(bytes, a) | detail::equalMask(bytes, b) |
                                detail::equalMask(bytes, static_cast<char>(0xFF));
    if (stops != 0) return at + __builtin_ctz(stops);
  }
#endif
  while (at < end && *at != a && *at != b && *at != static_cast<char>(0xFF)) ++at;
  return at;
}

/// The line feeds in a run of bytes.
struct LineFeeds {
  std::size_t count;  ///< How many there are.
  const char* last;   ///< The last one; null when there is none.
};

inline LineFeeds countLineFeeds(const char* at, const char* end) {
  LineFeeds found{0, nullptr};
#if defined(__SSE2__)
  for (; end - at >= 16; at += 16) {
    const std::uint32_t feeds = detail::equalMask(detail::load16(at), '\n');
    if (feeds == 0) continue;
    found.count += static_cast<std::size_t>(__builtin_popcount(feeds));
    found.last = at + (31 - __builtin_clz(feeds));
  }
#endif
  for (; at < end; ++at) {
    if (*at != '\n') continue;
    ++found.count;
    found.last = at;
  }
  return found;
}

}  // namespace zn::korvo_sdk::impl
