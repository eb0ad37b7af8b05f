// The AVX2 form of number lists, for floats and 32-bit integers. It goes through a list by chunks:
// first the blanks of a chunk are found, 64 characters a step, and noted; then its pieces are
// converted four at a time, two in each of two wide registers. Where a piece ends is known before
// it is looked at, so that no piece waits for the one before it. What is done to a piece is what
// the SSE4.1 form does, which also takes whatever is unusual, and the end of the list.

#include "foundation/numbers/number_list_kernels.h"

#if VSA_HAS_AVX2_FORM

#include <immintrin.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "foundation/base/prefetch.h"
#include "foundation/base/sanitizers.h"
#include "foundation/numbers/number_decimal.h"
#include "foundation/numbers/number_list_tables.h"

#define VSA_AVX2 __attribute__((target("avx2,bmi,bmi2,popcnt")))
#define VSA_AVX2_INLINE __attribute__((target("avx2,bmi,bmi2,popcnt"), always_inline)) inline

namespace zn::numbers {
namespace {

constexpr size_t CHUNK = 1024;  // characters
constexpr size_t STEP = 64;     // characters a mask of blanks covers
constexpr size_t SPILL = 8;     // ends noted at once, wanted or not
constexpr size_t GROUP = 4;     // pieces converted at once

// How far ahead memory is fetched, in bytes: the processor by itself goes no further than to a
// page's end.
constexpr size_t AHEAD = 2048;
constexpr size_t OUTPUT_AHEAD = 256;

/// Where the pieces of a chunk end, counted from its start.
struct PieceEnds {
  uint32_t at[CHUNK + SPILL];
  size_t count;
};

VSA_AVX2_INLINE uint32_t bitsOf(__m256i mask) {
  return static_cast<uint32_t>(_mm256_movemask_epi8(mask));
}

/// A bit for each byte of the two that is `c`, the low one's first.
VSA_AVX2_INLINE uint64_t equalBits(__m256i low, __m256i high, char c) {
  const __m256i wanted = _mm256_set1_epi8(c);
  return uint64_t{bitsOf(_mm256_cmpeq_epi8(high, wanted))} << 32 |
         bitsOf(_mm256_cmpeq_epi8(low, wanted));
}

/// Notes the places of the mask's bits, eight at a time: their number varies from step to step, and
/// a loop over single ones would mispredict its end each time.
VSA_WRAPS_AROUND VSA_AVX2_INLINE void noteEnds(uint64_t blanks, uint32_t offset, PieceEnds& ends) {
  const auto count = static_cast<size_t>(_mm_popcnt_u64(blanks));
  uint32_t* to = ends.at + ends.count;
  ends.count += count;
  for (size_t noted = 0; noted < count; noted += SPILL) {
    for (size_t i = 0; i < SPILL; ++i) {
      *to++ = offset + static_cast<uint32_t>(_tzcnt_u64(blanks));
      blanks &= blanks - 1;
    }
  }
}

/// The ends of the pieces in `length` characters, a multiple of STEP.
VSA_AVX2_INLINE void findEnds(const char* at, size_t length, PieceEnds& ends) {
  ends.count = 0;
  for (size_t offset = 0; offset < length; offset += STEP) {
    detail::prefetch(at + offset, AHEAD);
    const auto* const text = reinterpret_cast<const __m256i*>(at + offset);
    const uint64_t blanks = equalBits(_mm256_loadu_si256(text), _mm256_loadu_si256(text + 1), ' ');
    noteEnds(blanks, static_cast<uint32_t>(offset), ends);
  }
}

VSA_AVX2_INLINE __m256i bothHalves(const void* low, const void* high) {
  return _mm256_inserti128_si256(
      _mm256_castsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(low))),
      _mm_loadu_si128(static_cast<const __m128i*>(high)), 1);
}

// Each piece has its sixteen bits of a word. With up to 15 characters the last one stays free and
// keeps sums from running over into the next piece.
constexpr uint64_t EACH_FIRST = 0x0001000100010001;
constexpr uint64_t EACH_LAST = 0x8000800080008000;

/// Four pieces: the values of their digits, zero elsewhere, and a bit for each character that is a
/// digit, a point, or a sign in front.
struct Group {
  __m256i low;
  __m256i high;
  uint64_t digitBits;
  uint64_t pointBits;
  uint64_t signBits;
};

VSA_AVX2_INLINE Group loadGroup(const char* const (&pieces)[GROUP]) {
  const __m256i low = bothHalves(pieces[0], pieces[1]);
  const __m256i high = bothHalves(pieces[2], pieces[3]);
  const __m256i zero = _mm256_set1_epi8('0'), nine = _mm256_set1_epi8(9);
  const __m256i lowValues = _mm256_sub_epi8(low, zero), highValues = _mm256_sub_epi8(high, zero);
  const __m256i lowIs = _mm256_cmpeq_epi8(_mm256_min_epu8(lowValues, nine), lowValues);
  const __m256i highIs = _mm256_cmpeq_epi8(_mm256_min_epu8(highValues, nine), highValues);
  return {_mm256_and_si256(lowValues, lowIs), _mm256_and_si256(highValues, highIs),
          uint64_t{bitsOf(highIs)} << 32 | bitsOf(lowIs), equalBits(low, high, '.'),
          equalBits(low, high, '-') & EACH_FIRST};
}

/// How four numbers lie in the bits of their characters.
struct GroupShape {
  uint64_t pointFromEnd[GROUP];  // the point's place counted from the end, 1 for the last; 0: none
  bool isUsual;                  // each is a sign, digits, at most one point, at least one digit
};

/// All four in one word, and one answer for all.
VSA_WRAPS_AROUND VSA_AVX2_INLINE GroupShape shapeOfGroup(const Group& group,
                                                         const uint64_t (&lengths)[GROUP]) {
  uint64_t ends = 0;
  for (unsigned i = 0; i < GROUP; ++i) ends |= uint64_t{1} << (lengths[i] + uint64_t{16} * i);
  const uint64_t inside = ends - EACH_FIRST;
  const uint64_t digits = group.digitBits & inside;
  const uint64_t points = group.pointBits & inside;
  const uint64_t other = inside & ~(digits | points | group.signBits);
  const uint64_t furtherPoints = points & ((points | EACH_LAST) - EACH_FIRST);
  const uint64_t withoutDigit = EACH_LAST & ~(digits + (EACH_LAST - EACH_FIRST));
  GroupShape shape;
  shape.isUsual = (other | furtherPoints | withoutDigit) == 0;
  const uint64_t places = points | ends;
  for (unsigned i = 0; i < GROUP; ++i) {
    shape.pointFromEnd[i] = lengths[i] - _tzcnt_u64(places >> (16 * i));
  }
  return shape;
}

/// The digits of each half at its end, without the points.
VSA_AVX2_INLINE __m256i aligned(__m256i digits, uint64_t firstLength, uint64_t secondLength) {
  return _mm256_shuffle_epi8(digits,
                             bothHalves(RIGHT_ALIGN + firstLength, RIGHT_ALIGN + secondLength));
}

VSA_AVX2_INLINE __m256i withoutPoints(__m256i digits, uint64_t firstFromEnd,
                                      uint64_t secondFromEnd) {
  return _mm256_shuffle_epi8(
      digits, bothHalves(WITHOUT_POINT.bytes[firstFromEnd], WITHOUT_POINT.bytes[secondFromEnd]));
}

/// Sixteen digits in each half to two numbers of eight digits each: those of the first and third
/// piece, then those of the second and fourth.
VSA_AVX2_INLINE __m256i foldGroup(__m256i low, __m256i high) {
  const __m256i tens = _mm256_set1_epi16(0x010A);
  const __m256i hundreds = _mm256_set1_epi32(0x00010064);
  const __m256i lowFours = _mm256_madd_epi16(_mm256_maddubs_epi16(low, tens), hundreds);
  const __m256i highFours = _mm256_madd_epi16(_mm256_maddubs_epi16(high, tens), hundreds);
  return _mm256_madd_epi16(_mm256_packus_epi32(lowFours, highFours), _mm256_set1_epi32(0x00012710));
}

/// One for each negative number, zero for the others.
VSA_AVX2_INLINE __m128i signsOf(const Group& group) {
  return _mm_cvtepu16_epi32(_mm_cvtsi64_si128(static_cast<long long>(group.signBits)));
}

/// False when a value lies half-way between two floats.
VSA_AVX2_INLINE bool storeGroup(const Group& group, const uint64_t (&lengths)[GROUP],
                                const GroupShape& shape, float* out) {
  const uint64_t(&points)[GROUP] = shape.pointFromEnd;
  const __m256i eights =
      foldGroup(withoutPoints(aligned(group.low, lengths[0], lengths[1]), points[0], points[1]),
                withoutPoints(aligned(group.high, lengths[2], lengths[3]), points[2], points[3]));
  // Up to 15 digits over up to 10^14: exact before the division, and far from the ends of a float's
  // range.
  const __m256d weights = _mm256_setr_pd(1e8, 1, 1e8, 1);
  const __m256d odd = _mm256_cvtepi32_pd(_mm256_castsi256_si128(eights));
  const __m256d even = _mm256_cvtepi32_pd(_mm256_extracti128_si256(eights, 1));
  const __m256d digits = _mm256_hadd_pd(_mm256_mul_pd(odd, weights), _mm256_mul_pd(even, weights));
  const __m256d values =
      _mm256_div_pd(digits, _mm256_setr_pd(POINT_DIVISORS[points[0]], POINT_DIVISORS[points[1]],
                                           POINT_DIVISORS[points[2]], POINT_DIVISORS[points[3]]));
  const __m256i cutOff =
      _mm256_and_si256(_mm256_castpd_si256(values), _mm256_set1_epi64x(0x1FFFFFFF));
  const __m256i isHalfWay = _mm256_cmpeq_epi64(cutOff, _mm256_set1_epi64x(0x10000000));
  if (_mm256_testz_si256(isHalfWay, isHalfWay) == 0) return false;
  const __m128i floats = _mm_castps_si128(_mm256_cvtpd_ps(values));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out),
                   _mm_or_si128(floats, _mm_slli_epi32(signsOf(group), 31)));
  return true;
}

/// False when a value is out of range, or negative where the type has no sign.
template <class Integer>
VSA_AVX2_INLINE bool storeGroup(const Group& group, const uint64_t (&lengths)[GROUP],
                                const GroupShape&, Integer* out) {
  const __m256i eights = foldGroup(aligned(group.low, lengths[0], lengths[1]),
                                   aligned(group.high, lengths[2], lengths[3]));
  const __m256i values = _mm256_add_epi64(_mm256_mul_epu32(eights, _mm256_set1_epi64x(100000000)),
                                          _mm256_srli_epi64(eights, 32));
  // The smallest number, whose magnitude no other one has, counts as out of range here.
  constexpr auto MAX = static_cast<long long>(std::numeric_limits<Integer>::max());
  if (_mm256_testz_si256(values, _mm256_set1_epi64x(~MAX)) == 0) return false;
  if (std::is_unsigned_v<Integer> && group.signBits != 0) return false;
  const __m128i magnitudes = _mm256_castsi256_si128(
      _mm256_permutevar8x32_epi32(values, _mm256_setr_epi32(0, 4, 2, 6, 0, 4, 2, 6)));
  const __m128i flips = _mm_sub_epi32(_mm_setzero_si128(), signsOf(group));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out),
                   _mm_sub_epi32(_mm_xor_si128(magnitudes, flips), flips));
  return true;
}

/// Converts four pieces, of which the first one starts at `start`. False when one is unusual.
template <class Number>
VSA_AVX2_INLINE bool readGroup(const char* start, const char* chunk, const uint32_t* ends,
                               Number* out) {
  const char* const pieces[GROUP] = {start, chunk + ends[0] + 1, chunk + ends[1] + 1,
                                     chunk + ends[2] + 1};
  // cppcheck-suppress constStatement ; it is an initialiser
  const uint64_t lengths[GROUP] = {static_cast<uint64_t>(chunk + ends[0] - start),
                                   uint64_t{ends[1]} - ends[0] - 1, uint64_t{ends[2]} - ends[1] - 1,
                                   uint64_t{ends[3]} - ends[2] - 1};
  if ((lengths[0] | lengths[1] | lengths[2] | lengths[3]) >= BLOCK) return false;
  Group group = loadGroup(pieces);
  if constexpr (std::is_integral_v<Number>) group.pointBits = 0;
  const GroupShape shape = shapeOfGroup(group, lengths);
  return shape.isUsual && storeGroup(group, lengths, shape, out);
}

/// Converts pieces of a chunk, from number `begin` on, which starts at `start`, while the groups
/// are usual. No call stands in this loop, so that its constants stay in registers.
template <class Number>
VSA_AVX2_INLINE NumberRun readGroups(const char* chunk, const PieceEnds& ends, size_t begin,
                                     size_t end, const char* start, Number* out) {
  size_t i = begin;
  for (; i < end; i += GROUP) {
    detail::prefetchForWriting(out + i, OUTPUT_AHEAD);
    if (!readGroup(start, chunk, ends.at + i, out + i)) break;
    start = chunk + ends.at[i + GROUP - 1] + 1;
  }
  return {start, i};
}

/// Converts the first `count` pieces of a chunk, a multiple of GROUP, up to the first one that the
/// SSE4.1 form refuses too.
template <class Number>
VSA_AVX2_INLINE NumberRun readChunk(const char* chunk, const PieceEnds& ends, size_t count,
                                    const char* limit, Number* out) {
  NumberRun run{chunk, 0};
  for (;;) {
    run = readGroups(chunk, ends, run.count, count, run.next, out);
    if (run.count == count) return run;
    const NumberRun group = readPiecesSse41(run.next, limit, out + run.count, GROUP);
    run = {group.next, run.count + group.count};
    if (group.count < GROUP) return run;
  }
}

template <class Number>
VSA_AVX2 NumberRun readChunks(const char* at, const char* limit, Number* out, size_t room) {
  NumberRun run{at, 0};
  PieceEnds ends;
  while (limit - run.next >= static_cast<std::ptrdiff_t>(STEP)) {
    const auto left = static_cast<size_t>(limit - run.next);
    findEnds(run.next, std::min(CHUNK, left / STEP * STEP), ends);
    const size_t count = std::min(ends.count, room - run.count) / GROUP * GROUP;
    const NumberRun chunk = readChunk(run.next, ends, count, limit, out + run.count);
    run = {chunk.next, run.count + chunk.count};
    if (chunk.count < count || count == 0) break;
  }
  // The compiler sees to this only where it optimises well.
  _mm256_zeroupper();
  return run;
}

}  // namespace

template <class Number>
NumberRun readPiecesAvx2(const char* at, const char* limit, Number* out, size_t room) {
  const NumberRun run = readChunks(at, limit, out, room);
  const NumberRun rest = readPiecesSse41(run.next, limit, out + run.count, room - run.count);
  return {rest.next, run.count + rest.count};
}

template NumberRun readPiecesAvx2(const char*, const char*, float*, size_t);
template NumberRun readPiecesAvx2(const char*, const char*, int*, size_t);
template NumberRun readPiecesAvx2(const char*, const char*, unsigned int*, size_t);

}  // namespace zn::numbers

#endif  // VSA_HAS_AVX2_FORM
