// Normalises lists. normalizeList() has a portable version (kernel), and on x86-64 also two with
// vector instructions (SSE4.2 and AVX2), which process one vector of bytes per step.
//
// Two table look-ups, by the high and the low nibble, classify a byte (Langdale and Lemire,
// "Parsing Gigabytes of JSON per Second", 2019). Most lists are almost in normal form, so most
// steps store the whole vector at once. Each step advances by the full width of a vector. A step
// depends on the previous step by only one bit: whether the previous step ended in a separator. If
// the list ends in separators, they are removed last.
#include "vsa/lex/list_normalizer.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include <vsa/foundation/char_class.h>
#include "foundation/base/cpu_features.h"
#include "foundation/base/prefetch.h"

#if defined(__x86_64__)
#include <immintrin.h>
#define VSA_SSE42 __attribute__((target("sse4.2,popcnt")))
#define VSA_SSE42_INLINE __attribute__((target("sse4.2,popcnt"), always_inline)) inline
#define VSA_AVX2 __attribute__((target("avx2,popcnt")))
#define VSA_AVX2_INLINE __attribute__((target("avx2,popcnt"), always_inline)) inline
#endif

namespace zn::korvo_sdk::impl {

namespace {

constexpr bool isNumber(char c) {
  return char_class::is(c, char_class::NUMBER);
}

constexpr bool isSeparator(char c) {
  return char_class::is(c, char_class::SPACE) || c == ',';
}

}  // namespace

NormalizedList normalizeListPortable(const char* from, const char* end, char* to) {
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

#if defined(__x86_64__)

namespace {

// Tables that classify a byte. The classes of a byte are byHigh[high nibble] & byLow[low nibble]. A
// byte of 0x80 or more has no class. There are only eight bits for two classes of eight high
// nibbles. Therefore a bit does not represent a high nibble, but a set of low nibbles: the bytes of
// one class with the same high nibble. High nibbles with the same set share the bit.
struct NibbleTables {
  alignas(16) std::int8_t byHigh[16] = {};
  alignas(16) std::int8_t byLow[16] = {};
  // The bits that represent number characters. All other bits represent separators.
  std::int8_t numberBits = 0;
};

constexpr std::uint16_t rowOfClass(unsigned high, bool (*isInClass)(char)) {
  std::uint16_t row = 0;
  for (unsigned low = 0; low < 16; ++low) {
    const bool isMember = isInClass(static_cast<char>(high << 4 | low));
    row = static_cast<std::uint16_t>(row | (isMember ? 1U << low : 0U));
  }
  return row;
}

constexpr NibbleTables makeNibbleTables() {
  NibbleTables tables;
  std::uint16_t rows[8] = {};
  unsigned rowCount = 0;
  for (bool (*isInClass)(char) : {isNumber, isSeparator}) {
    const unsigned firstOfClass = rowCount;
    for (unsigned high = 0; high < 8; ++high) {
      const std::uint16_t row = rowOfClass(high, isInClass);
      if (row == 0) continue;
      unsigned bit = firstOfClass;
      while (bit < rowCount && rows[bit] != row) ++bit;
      if (bit == rowCount) rows[rowCount++] = row;
      tables.byHigh[high] = static_cast<std::int8_t>(tables.byHigh[high] | 1 << bit);
      if (isInClass == isNumber) {
        tables.numberBits = static_cast<std::int8_t>(tables.numberBits | 1 << bit);
      }
    }
  }
  for (unsigned bit = 0; bit < rowCount; ++bit) {
    for (unsigned low = 0; low < 16; ++low) {
      if ((rows[bit] >> low & 1) == 0) continue;
      tables.byLow[low] = static_cast<std::int8_t>(tables.byLow[low] | 1 << bit);
    }
  }
  return tables;
}

constexpr NibbleTables NIBBLES = makeNibbleTables();

constexpr bool nibblesAgreeWithClasses() {
  for (unsigned byte = 0; byte < 256; ++byte) {
    const unsigned classes =
        static_cast<std::uint8_t>(NIBBLES.byHigh[byte >> 4] & NIBBLES.byLow[byte & 0x0F]);
    const unsigned numberBits = static_cast<std::uint8_t>(NIBBLES.numberBits);
    const char c = static_cast<char>(byte);
    if (((classes & numberBits) != 0) != isNumber(c)) return false;
    if (((classes & ~numberBits) != 0) != isSeparator(c)) return false;
  }
  return true;
}

static_assert(nibblesAgreeWithClasses());

/// Returns a shuffle for each subset of eight bytes. The shuffle moves the members of the subset to
/// the front.
constexpr auto makeCompactions() {
  std::array<std::array<std::int8_t, 8>, 256> shuffles{};
  for (unsigned set = 0; set < 256; ++set) {
    std::size_t count = 0;
    for (std::int8_t i = 0; i < 8; ++i) {
      if ((set >> i & 1) != 0) shuffles[set][count++] = i;
    }
  }
  return shuffles;
}

constexpr auto COMPACTIONS = makeCompactions();

/// The result of one step: the bytes with every separator replaced by a blank, and a bit mask of
/// the separators. `isKnown` is false if a byte is neither a number character nor a separator.
struct Step16 {
  __m128i normal;
  std::uint32_t separators;
  bool isKnown;
};

struct Step32 {
  __m256i normal;
  std::uint32_t separators;
  bool isKnown;
};

/// Returns the separators that follow another separator.
inline std::uint32_t repeated(std::uint32_t separators, std::uint32_t isAfterSeparator) {
  return static_cast<std::uint32_t>(separators &
                                    (std::uint64_t{separators} << 1 | isAfterSeparator));
}

VSA_SSE42_INLINE __m128i tableOf(const std::int8_t* table) {
  return _mm_load_si128(reinterpret_cast<const __m128i*>(table));
}

VSA_SSE42_INLINE Step16 readStep16(const char* from) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
  const __m128i high = _mm_and_si128(_mm_srli_epi16(bytes, 4), _mm_set1_epi8(0x0F));
  const __m128i classes = _mm_and_si128(_mm_shuffle_epi8(tableOf(NIBBLES.byHigh), high),
                                        _mm_shuffle_epi8(tableOf(NIBBLES.byLow), bytes));
  const __m128i other =
      _mm_cmpeq_epi8(_mm_and_si128(classes, _mm_set1_epi8(NIBBLES.numberBits)), zero);
  // The andnot sets each separator to 0, and the maximum replaces this 0 by a blank. Number
  // characters stay, because they are greater than a blank.
  return {_mm_max_epu8(_mm_andnot_si128(other, bytes), _mm_set1_epi8(' ')),
          static_cast<std::uint32_t>(_mm_movemask_epi8(other)),
          _mm_movemask_epi8(_mm_cmpeq_epi8(classes, zero)) == 0};
}

VSA_AVX2_INLINE Step32 readStep32(const char* from) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256i byHigh = _mm256_broadcastsi128_si256(tableOf(NIBBLES.byHigh));
  const __m256i byLow = _mm256_broadcastsi128_si256(tableOf(NIBBLES.byLow));
  const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
  const __m256i high = _mm256_and_si256(_mm256_srli_epi16(bytes, 4), _mm256_set1_epi8(0x0F));
  const __m256i classes =
      _mm256_and_si256(_mm256_shuffle_epi8(byHigh, high), _mm256_shuffle_epi8(byLow, bytes));
  const __m256i other =
      _mm256_cmpeq_epi8(_mm256_and_si256(classes, _mm256_set1_epi8(NIBBLES.numberBits)), zero);
  return {_mm256_max_epu8(_mm256_andnot_si256(other, bytes), _mm256_set1_epi8(' ')),
          static_cast<std::uint32_t>(_mm256_movemask_epi8(other)),
          _mm256_movemask_epi8(_mm256_cmpeq_epi8(classes, zero)) == 0};
}

/// Writes those of the lower eight bytes whose bits are set in `set`. Returns the end of the
/// output.
VSA_SSE42_INLINE char* writeMembers8(__m128i bytes, std::uint32_t set, char* to) {
  const auto* const shuffle = reinterpret_cast<const __m128i*>(COMPACTIONS[set].data());
  _mm_storel_epi64(reinterpret_cast<__m128i*>(to),
                   _mm_shuffle_epi8(bytes, _mm_loadl_epi64(shuffle)));
  return to + _mm_popcnt_u32(set);
}

VSA_SSE42_INLINE char* writeMembers16(__m128i bytes, std::uint32_t set, char* to) {
  to = writeMembers8(bytes, set & 0xFF, to);
  return writeMembers8(_mm_unpackhi_epi64(bytes, bytes), set >> 8 & 0xFF, to);
}

VSA_AVX2_INLINE char* writeMembers32(__m256i bytes, std::uint32_t set, char* to) {
  to = writeMembers16(_mm256_castsi256_si128(bytes), set, to);
  return writeMembers16(_mm256_extracti128_si256(bytes, 1), set >> 16, to);
}

/// Prefetches the input and the output of later steps. This is necessary because the hardware
/// prefetcher stops at the end of a page. It saves 5 % of the time of the benchmark geo.
inline void prefetchAhead(const char* from, char* to) noexcept {
  constexpr std::size_t AHEAD = 2048;
  zn::detail::prefetch(from, AHEAD);
  zn::detail::prefetchForWriting(to, AHEAD);
}

/// Finishes the list after the vector steps. Takes back the separators directly before `from`, in
/// the output and in the input. Then normalises the rest of the list byte by byte.
NormalizedList finishList(const char* from, const char* end, char* to, bool isAfterSeparator) {
  if (isAfterSeparator) {
    --to;
    while (isSeparator(from[-1])) --from;
  }
  return normalizeListPortable(from, end, to);
}

}  // namespace

VSA_SSE42 NormalizedList normalizeListSse42(const char* from, const char* end, char* to) {
  std::uint32_t isAfterSeparator = 0;
  for (; end - from >= 16; from += 16) {
    prefetchAhead(from, to);
    const Step16 step = readStep16(from);
    if (!step.isKnown) break;
    const std::uint32_t dropped = repeated(step.separators, isAfterSeparator);
    if (dropped == 0) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(to), step.normal);
      to += 16;
    } else {
      to = writeMembers16(step.normal, ~dropped, to);
    }
    isAfterSeparator = step.separators >> 15;
  }
  return finishList(from, end, to, isAfterSeparator != 0);
}

VSA_AVX2 NormalizedList normalizeListAvx2(const char* from, const char* end, char* to) {
  std::uint32_t isAfterSeparator = 0;
  for (; end - from >= 32; from += 32) {
    prefetchAhead(from, to);
    const Step32 step = readStep32(from);
    if (!step.isKnown) break;
    const std::uint32_t dropped = repeated(step.separators, isAfterSeparator);
    if (dropped == 0) {
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), step.normal);
      to += 32;
    } else {
      to = writeMembers32(step.normal, ~dropped, to);
    }
    isAfterSeparator = step.separators >> 31;
  }
  // The compiler does not insert this instruction before a tail call. Without it, later SSE
  // instructions would wait for the upper halves of the registers.
  _mm256_zeroupper();
  return finishList(from, end, to, isAfterSeparator != 0);
}

NormalizedList normalizeList(const char* from, const char* end, char* to) {
  if (cpuHasAvx2()) return normalizeListAvx2(from, end, to);
  if (cpuHasSse42()) return normalizeListSse42(from, end, to);
  return normalizeListPortable(from, end, to);
}

#else

NormalizedList normalizeList(const char* from, const char* end, char* to) {
  return normalizeListPortable(from, end, to);
}

#endif

}  // namespace zn::korvo_sdk::impl
