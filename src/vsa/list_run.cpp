// Sixteen bytes a step: a byte's class comes from two table look-ups, by its high and its low half
// (Langdale and Lemire, "Parsing Gigabytes of JSON per Second", 2019). Most lists are nearly normal
// already, so most steps are one store.
#include "vsa/list_run.h"

#include <cstdint>

#include "foundation/char_class.h"

#if defined(__x86_64__) || defined(__i386__)
#define VSA_LIST_RUN_SSSE3 1
#include <immintrin.h>
#endif

namespace zn::korvo_sdk::impl {

namespace {

bool isNumber(char c) {
  return char_class::is(c, char_class::NUMBER);
}

bool isSeparator(char c) {
  return char_class::is(c, char_class::SPACE) || c == ',';
}

}  // namespace

ListRun copyListRunPortable(const char* from, const char* end, char* to) {
  while (from < end) {
    if (isNumber(*from)) {
      *to++ = *from++;
      continue;
    }
    const char* next = from;
    while (next < end && isSeparator(*next)) ++next;
    if (next == from || next == end || !isNumber(*next)) break;
    *to++ = ' ';
    from = next;
  }
  return {from, to};
}

#ifdef VSA_LIST_RUN_SSSE3

namespace {

constexpr std::uint32_t ALL = 0xFFFF;

// Class bits: 1 for + - . ; 2 for 0-9 ; 4 for A-F I N a-f i n ; 8 for U u ; 16 for the blank and
// the comma ; 32 for \t to \r. A byte is in a class when both of its halves say so.
constexpr int NUMBER_BITS = 1 | 2 | 4 | 8;

struct Classes {
  std::uint32_t number;
  std::uint32_t separator;
};

__attribute__((target("ssse3"))) Classes classify(__m128i bytes) {
  const __m128i byHigh = _mm_setr_epi8(32, 0, 1 | 16, 2, 4, 8, 4, 8, 0, 0, 0, 0, 0, 0, 0, 0);
  const __m128i byLow = _mm_setr_epi8(2 | 16, 2 | 4, 2 | 4, 2 | 4, 2 | 4, 2 | 4 | 8, 2 | 4, 2, 2,
                                      2 | 4 | 32, 32, 1 | 32, 16 | 32, 1 | 32, 1 | 4, 0);
  const __m128i lowHalf = _mm_set1_epi8(0x0F);
  const __m128i high = _mm_and_si128(_mm_srli_epi16(bytes, 4), lowHalf);
  const __m128i low = _mm_and_si128(bytes, lowHalf);
  const __m128i bits = _mm_and_si128(_mm_shuffle_epi8(byHigh, high), _mm_shuffle_epi8(byLow, low));
  const __m128i zero = _mm_setzero_si128();
  const __m128i numberBits = _mm_and_si128(bits, _mm_set1_epi8(NUMBER_BITS));
  const auto none = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bits, zero)));
  const auto noNumber =
      static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(numberBits, zero)));
  return {~noNumber & ALL, noNumber & ~none & ALL};
}

// Writes the first `count` bytes, a blank for each separator that follows no other separator.
char* squeeze(const char* from, std::uint32_t count, const Classes& classes, char* to) {
  const std::uint32_t dropped = classes.separator & (classes.separator << 1);
  for (std::uint32_t i = 0; i < count; ++i) {
    *to = (classes.separator >> i & 1) != 0 ? ' ' : from[i];
    to += 1 - (dropped >> i & 1);
  }
  return to;
}

__attribute__((target("ssse3"))) ListRun copyListRunSsse3(const char* from, const char* end,
                                                          char* to) {
  while (end - from >= 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    const Classes classes = classify(bytes);
    const std::uint32_t other = ~(classes.number | classes.separator) & ALL;
    const std::uint32_t run = other == 0 ? ALL : (other & (~other + 1)) - 1;
    const std::uint32_t numbers = classes.number & run;
    if (numbers == 0) return {from, to};
    // Separators at the end of the step wait for the next one: what follows decides on them.
    const std::uint32_t count = 32 - static_cast<std::uint32_t>(__builtin_clz(numbers));
    const std::uint32_t counted = (std::uint32_t{1} << count) - 1;
    if ((classes.separator & (classes.separator << 1) & counted) == 0) {
      const __m128i comma = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(','));
      const __m128i white = _mm_cmplt_epi8(bytes, _mm_set1_epi8(' '));
      const __m128i blanked = _mm_or_si128(comma, white);
      const __m128i normal = _mm_or_si128(_mm_andnot_si128(blanked, bytes),
                                          _mm_and_si128(blanked, _mm_set1_epi8(' ')));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(to), normal);
      to += count;
    } else {
      to = squeeze(from, count, classes, to);
    }
    from += count;
  }
  return copyListRunPortable(from, end, to);
}

}  // namespace

ListRun copyListRun(const char* from, const char* end, char* to) {
  static const bool hasShuffles = __builtin_cpu_supports("ssse3") != 0;
  return hasShuffles ? copyListRunSsse3(from, end, to) : copyListRunPortable(from, end, to);
}

#else

ListRun copyListRun(const char* from, const char* end, char* to) {
  return copyListRunPortable(from, end, to);
}

#endif

}  // namespace zn::korvo_sdk::impl
