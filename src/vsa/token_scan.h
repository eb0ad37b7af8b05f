// Where names, numbers, strings and short lists end: sixteen bytes a step where the processor has
// them, one byte a step elsewhere. Internal; the door is vsa.h.
#pragma once

#include <cstdint>

#include "foundation/char_class.h"
#include "vsa/byte_scan.h"

namespace zn::korvo_sdk::impl {

namespace detail {

#if defined(__SSE2__)
inline std::uint32_t maskOf(__m128i flags) {
  return static_cast<std::uint32_t>(_mm_movemask_epi8(flags));
}

/// Flags the bytes from `first` up to `last`.
inline __m128i within(__m128i bytes, char first, char last) {
  const __m128i offset = _mm_sub_epi8(bytes, _mm_set1_epi8(first));
  return _mm_cmpeq_epi8(_mm_min_epu8(offset, _mm_set1_epi8(static_cast<char>(last - first))),
                        offset);
}

inline __m128i equal(__m128i bytes, char c) {
  return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c));
}

/// Letters in lower case; what is no letter is not taken for one.
inline __m128i folded(__m128i bytes) {
  return _mm_or_si128(bytes, _mm_set1_epi8(0x20));
}

inline std::uint32_t nameMask(__m128i bytes) {
  const __m128i plain = _mm_or_si128(
      _mm_or_si128(within(folded(bytes), 'a', 'z'), within(bytes, '0', '9')), equal(bytes, '_'));
  return maskOf(plain) | (maskOf(bytes) & ~equalMask(bytes, static_cast<char>(0xFF)));
}

/// Flags what makes a number a real, exponents aside.
inline __m128i realMarkers(__m128i bytes) {
  const __m128i lower = folded(bytes);
  return _mm_or_si128(
      _mm_or_si128(equal(bytes, '.'), equal(lower, 'f')),
      _mm_or_si128(_mm_or_si128(equal(lower, 'n'), equal(lower, 'a')), equal(lower, 'i')));
}

inline std::uint32_t numberMask(__m128i bytes, __m128i markers) {
  const __m128i lower = folded(bytes);
  const __m128i digits = _mm_or_si128(within(bytes, '0', '9'), within(lower, 'a', 'f'));
  const __m128i others =
      _mm_or_si128(_mm_or_si128(equal(bytes, '-'), equal(bytes, '+')), equal(lower, 'u'));
  return maskOf(_mm_or_si128(_mm_or_si128(digits, others), markers));
}
#endif

}  // namespace detail

/// The first byte in [at, end) that no name goes on with, or `end`.
inline const char* endOfName(const char* at, const char* end) {
#if defined(__SSE2__)
  for (; end - at >= 16; at += 16) {
    const std::uint32_t stops = ~detail::nameMask(detail::load16(at)) & 0xFFFF;
    if (stops != 0) return at + __builtin_ctz(stops);
  }
#endif
  while (at < end && char_class::is(*at, char_class::NAME)) ++at;
  return at;
}

/// Whether a character makes the number that it stands in a real.
inline bool isRealMarker(char c) {
  return c == '.' || c == 'f' || c == 'F' || c == 'n' || c == 'N' || c == 'a' || c == 'A' ||
         c == 'i' || c == 'I';
}

/// The number characters at the start of a run of bytes.
struct NumberEnd {
  const char* at;  ///< Behind the last of them.
  bool isReal;     ///< Whether one of them makes it a real.
};

inline NumberEnd endOfNumber(const char* at, const char* end) {
  bool isReal = false;
#if defined(__SSE2__)
  for (; end - at >= 16; at += 16) {
    const __m128i bytes = detail::load16(at);
    const __m128i markers = detail::realMarkers(bytes);
    const std::uint32_t stops = ~detail::numberMask(bytes, markers) & 0xFFFF;
    const std::uint32_t marks = detail::maskOf(markers);
    if (stops != 0) {
      const std::uint32_t inNumber = (stops & (~stops + 1)) - 1;
      return {at + __builtin_ctz(stops), isReal || (marks & inNumber) != 0};
    }
    isReal = isReal || marks != 0;
  }
#endif
  for (; at < end && char_class::is(*at, char_class::NUMBER); ++at) {
    isReal = isReal || isRealMarker(*at);
  }
  return {at, isReal};
}

/// The first byte in [at, end) that a reader of strings looks at: a quote, a backslash, a line
/// feed, a NUL or the end mark 0xFF; or `end`.
inline const char* findInString(const char* at, const char* end) {
#if defined(__SSE2__)
  for (; end - at >= 16; at += 16) {
    const __m128i bytes = detail::load16(at);
    const __m128i stops = _mm_or_si128(
        _mm_or_si128(_mm_or_si128(detail::equal(bytes, '"'), detail::equal(bytes, '\\')),
                     _mm_or_si128(detail::equal(bytes, '\n'), detail::equal(bytes, '\0'))),
        detail::equal(bytes, static_cast<char>(0xFF)));
    const std::uint32_t mask = detail::maskOf(stops);
    if (mask != 0) return at + __builtin_ctz(mask);
  }
#endif
  while (at < end && *at != '"' && *at != '\\' && *at != '\n' && *at != '\0' &&
         *at != static_cast<char>(0xFF)) {
    ++at;
  }
  return at;
}

/// The first byte in [at, end) that is neither a number character nor a blank between two of them,
/// or `end`.
inline const char* endOfPlainList(const char* at, const char* end) {
#if defined(__SSE2__)
  std::uint32_t before = 1;  // whether the byte before this step is a blank
  for (; end - at >= 16; at += 16) {
    const __m128i bytes = detail::load16(at);
    const std::uint32_t blanks = detail::equalMask(bytes, ' ');
    const std::uint32_t numbers = detail::numberMask(bytes, detail::realMarkers(bytes));
    const std::uint32_t doubled = blanks & (blanks << 1 | before);
    const std::uint32_t stops = (~(blanks | numbers) | doubled) & 0xFFFF;
    if (stops != 0) return at + __builtin_ctz(stops);
    before = blanks >> 15;
  }
  bool afterBlank = before != 0;
#else
  bool afterBlank = true;
#endif
  for (; at < end; ++at) {
    const bool isBlank = *at == ' ';
    if (isBlank ? afterBlank : !char_class::is(*at, char_class::NUMBER)) break;
    afterBlank = isBlank;
  }
  return at;
}

}  // namespace zn::korvo_sdk::impl
