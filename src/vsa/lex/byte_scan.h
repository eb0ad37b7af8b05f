// Scans bytes for the lexer's inner loops: 16 bytes per step with SSE2, one byte per step without
// SSE2. Internal.
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

/// Returns the first byte in [at, end) that is `a`, `b` or the end mark 0xFF, which ends the input
/// (see END_OF_INPUT). Returns `end` if there is no such byte.
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

/// Returns the number of bytes in [at, end) that equal `c`. Does not branch on the value of a byte:
/// the positions of line feeds are unpredictable, so the branches would be mispredicted.
inline std::size_t countOf(const char* at, const char* end, char c) {
  std::size_t count = 0;
#if defined(__SSE2__)
  const __m128i zero = _mm_setzero_si128();
  __m128i sums = zero;
  for (; end - at >= 16; at += 16) {
    const __m128i isSame = _mm_cmpeq_epi8(detail::load16(at), _mm_set1_epi8(c));
    sums = _mm_add_epi64(sums, _mm_sad_epu8(_mm_sub_epi8(zero, isSame), zero));
  }
  std::uint64_t halves[2];
  _mm_storeu_si128(reinterpret_cast<__m128i*>(halves), sums);
  count = static_cast<std::size_t>(halves[0] + halves[1]);
#endif
  for (; at < end; ++at) count += *at == c ? 1 : 0;
  return count;
}

/// Returns the last byte in [at, end) that equals `c`, or null.
inline const char* findLast(const char* at, const char* end, char c) {
#if defined(__SSE2__)
  for (; end - at >= 16; end -= 16) {
    const std::uint32_t found = detail::equalMask(detail::load16(end - 16), c);
    if (found != 0) return end - 16 + (31 - __builtin_clz(found));
  }
#endif
  while (end > at) {
    if (*--end == c) return end;
  }
  return nullptr;
}

/// The line feeds in a run of bytes.
struct LineFeeds {
  std::size_t count;  ///< The number of line feeds.
  const char* last;   ///< The last line feed. Null if `count` is 0.
};

inline LineFeeds countLineFeeds(const char* at, const char* end) {
  const std::size_t count = countOf(at, end, '\n');
  return {count, count == 0 ? nullptr : findLast(at, end, '\n')};
}

}  // namespace zn::korvo_sdk::impl
