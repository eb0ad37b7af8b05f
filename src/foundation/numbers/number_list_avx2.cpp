// The AVX2 kernel of number lists, for floats and 32-bit integers.
//
// The kernel processes a list in chunks. First it finds the blanks of a chunk, 64 characters per
// step. Then it converts the fields four at a time, two in each of two 256-bit registers. The end
// of a field is known before the field is read, so the conversion of a field need not wait for the
// previous field.
//
// The conversion is the same as in the SSE4.1 kernel. The AVX2 kernel leaves two things to the
// SSE4.1 kernel. One is each group of four fields that it cannot convert, for example because a
// field has an exponent or more than 15 characters. The other is the rest of the list, as soon as
// fewer than four fields end in the next chunk or fit into the output, or fewer than STEP
// characters are left before `limit`.
#include "foundation/numbers/number_list_kernels.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "foundation/base/sanitizers.h"
#include "foundation/numbers/number_decimal.h"
#include "foundation/numbers/number_list_tables.h"

#define VSA_AVX2 __attribute__((target("avx2,bmi,bmi2,popcnt")))
#define VSA_AVX2_INLINE __attribute__((target("avx2,bmi,bmi2,popcnt"), always_inline)) inline

namespace zn::numbers {
namespace {

constexpr size_t CHUNK = 1024;  // The number of characters in a chunk.
constexpr size_t STEP = 64;     // The number of characters in a mask of blanks.
// The number of ends that storeEnds stores at a time. Some of them may be unused.
constexpr size_t SPILL = 8;
constexpr size_t GROUP = 4;  // The number of fields that are converted together.

/// The ends of the fields of a chunk, as offsets from the start of the chunk.
struct FieldEnds {
  uint32_t at[CHUNK + SPILL];
  size_t count;
};

VSA_AVX2_INLINE uint32_t bitsOf(__m256i mask) {
  return static_cast<uint32_t>(_mm256_movemask_epi8(mask));
}

/// Returns a mask with a bit for each byte that equals `c`. The low half contains the bits of
/// `low`.
VSA_AVX2_INLINE uint64_t equalBits(__m256i low, __m256i high, char c) {
  const __m256i wanted = _mm256_set1_epi8(c);
  return uint64_t{bitsOf(_mm256_cmpeq_epi8(high, wanted))} << 32 |
         bitsOf(_mm256_cmpeq_epi8(low, wanted));
}

/// Stores the positions of the bits in the mask, eight at a time. The number of bits varies from
/// mask to mask, so the processor would often mispredict the end of a loop over single bits.
VSA_WRAPS_AROUND VSA_AVX2_INLINE void storeEnds(uint64_t blanks, uint32_t offset, FieldEnds& ends) {
  const auto count = static_cast<size_t>(_mm_popcnt_u64(blanks));
  uint32_t* to = ends.at + ends.count;
  ends.count += count;
  for (size_t stored = 0; stored < count; stored += SPILL) {
    for (size_t i = 0; i < SPILL; ++i) {
      *to++ = offset + static_cast<uint32_t>(_tzcnt_u64(blanks));
      blanks &= blanks - 1;
    }
  }
}

/// Finds the ends of the fields in `length` characters. `length` must be a multiple of STEP.
VSA_AVX2_INLINE void findEnds(const char* at, size_t length, FieldEnds& ends) {
  ends.count = 0;
  for (size_t offset = 0; offset < length; offset += STEP) {
    const auto* const text = reinterpret_cast<const __m256i*>(at + offset);
    const uint64_t blanks = equalBits(_mm256_loadu_si256(text), _mm256_loadu_si256(text + 1), ' ');
    storeEnds(blanks, static_cast<uint32_t>(offset), ends);
  }
}

VSA_AVX2_INLINE __m256i bothHalves(const void* low, const void* high) {
  return _mm256_inserti128_si256(
      _mm256_castsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(low))),
      _mm_loadu_si128(static_cast<const __m128i*>(high)), 1);
}

// Masks for uint64_t words with one bit for each character of four fields. Field i has the bits
// 16 * i to 16 * i + 15, and its first character has the lowest bit. A field has at most 15
// characters, so the highest of its 16 bits is never one of its characters. Sums of two such words
// therefore never carry into the next field.
constexpr uint64_t EACH_FIRST = 0x0001000100010001;
constexpr uint64_t EACH_LAST = 0x8000800080008000;

/// Four fields. `low` and `high` contain the values of the digits, and zero for all other
/// characters. The masks contain a bit for each digit, each point and each leading sign.
struct Group {
  __m256i low;
  __m256i high;
  uint64_t digitBits;
  uint64_t pointBits;
  uint64_t signBits;
};

VSA_AVX2_INLINE Group loadGroup(const char* const (&fields)[GROUP]) {
  const __m256i low = bothHalves(fields[0], fields[1]);
  const __m256i high = bothHalves(fields[2], fields[3]);
  const __m256i zero = _mm256_set1_epi8('0'), nine = _mm256_set1_epi8(9);
  const __m256i lowValues = _mm256_sub_epi8(low, zero), highValues = _mm256_sub_epi8(high, zero);
  const __m256i lowIs = _mm256_cmpeq_epi8(_mm256_min_epu8(lowValues, nine), lowValues);
  const __m256i highIs = _mm256_cmpeq_epi8(_mm256_min_epu8(highValues, nine), highValues);
  return {_mm256_and_si256(lowValues, lowIs), _mm256_and_si256(highValues, highIs),
          uint64_t{bitsOf(highIs)} << 32 | bitsOf(lowIs), equalBits(low, high, '.'),
          equalBits(low, high, '-') & EACH_FIRST};
}

/// The forms of four fields.
struct GroupShape {
  // The position of each point, counted from the end of the field. 1 is the last character. 0 means
  // that there is no point.
  uint64_t pointFromEnd[GROUP];
  // Whether every field is an optional sign and digits, with at most one point and at least one
  // digit.
  bool isPlain;
};

/// Computes the forms of four fields in one word.
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
  shape.isPlain = (other | furtherPoints | withoutDigit) == 0;
  const uint64_t places = points | ends;
  for (unsigned i = 0; i < GROUP; ++i) {
    shape.pointFromEnd[i] = lengths[i] - _tzcnt_u64(places >> (16 * i));
  }
  return shape;
}

/// Moves the characters of the field in each half to the end of the half.
VSA_AVX2_INLINE __m256i aligned(__m256i digits, uint64_t firstLength, uint64_t secondLength) {
  return _mm256_shuffle_epi8(digits,
                             bothHalves(RIGHT_ALIGN + firstLength, RIGHT_ALIGN + secondLength));
}

VSA_AVX2_INLINE __m256i withoutPoints(__m256i digits, uint64_t firstFromEnd,
                                      uint64_t secondFromEnd) {
  return _mm256_shuffle_epi8(
      digits, bothHalves(WITHOUT_POINT.bytes[firstFromEnd], WITHOUT_POINT.bytes[secondFromEnd]));
}

/// Combines the sixteen digits of each half to two numbers of eight digits. The result contains the
/// numbers of the first and third field, then those of the second and fourth field.
VSA_AVX2_INLINE __m256i foldGroup(__m256i low, __m256i high) {
  const __m256i tens = _mm256_set1_epi16(0x010A);
  const __m256i hundreds = _mm256_set1_epi32(0x00010064);
  const __m256i lowFours = _mm256_madd_epi16(_mm256_maddubs_epi16(low, tens), hundreds);
  const __m256i highFours = _mm256_madd_epi16(_mm256_maddubs_epi16(high, tens), hundreds);
  return _mm256_madd_epi16(_mm256_packus_epi32(lowFours, highFours), _mm256_set1_epi32(0x00012710));
}

/// Returns 1 for each negative field and 0 for all other fields.
VSA_AVX2_INLINE __m128i signsOf(const Group& group) {
  return _mm_cvtepu16_epi32(_mm_cvtsi64_si128(static_cast<long long>(group.signBits)));
}

/// Stores four floats. Returns false if a value is half-way between two floats.
VSA_AVX2_INLINE bool storeGroup(const Group& group, const uint64_t (&lengths)[GROUP],
                                const GroupShape& shape, float* out) {
  const uint64_t(&points)[GROUP] = shape.pointFromEnd;
  const __m256i eights =
      foldGroup(withoutPoints(aligned(group.low, lengths[0], lengths[1]), points[0], points[1]),
                withoutPoints(aligned(group.high, lengths[2], lengths[3]), points[2], points[3]));
  // A number of up to 15 digits is divided by a power of ten up to 10^14. A double represents both
  // exactly. The quotient is always in the range of a float.
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

/// Stores four integers. Returns false if a value is out of range, or if a value is negative and
/// the type is unsigned.
template <class Integer>
VSA_AVX2_INLINE bool storeGroup(const Group& group, const uint64_t (&lengths)[GROUP],
                                const GroupShape&, Integer* out) {
  const __m256i eights = foldGroup(aligned(group.low, lengths[0], lengths[1]),
                                   aligned(group.high, lengths[2], lengths[3]));
  const __m256i values = _mm256_add_epi64(_mm256_mul_epu32(eights, _mm256_set1_epi64x(100000000)),
                                          _mm256_srli_epi64(eights, 32));
  // The smallest integer of a type is treated as out of range, because its magnitude does not fit.
  // The SSE4.1 kernel then converts it.
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

/// Converts four fields. `start` is the first character of the first field. Returns false if one of
/// the fields is longer than 15 characters, is not of the form GroupShape::isPlain, or cannot be
/// stored by storeGroup.
template <class Number>
VSA_AVX2_INLINE bool readGroup(const char* start, const char* chunk, const uint32_t* ends,
                               Number* out) {
  const char* const fields[GROUP] = {start, chunk + ends[0] + 1, chunk + ends[1] + 1,
                                     chunk + ends[2] + 1};
  // cppcheck-suppress constStatement ; it is an initialiser
  const uint64_t lengths[GROUP] = {static_cast<uint64_t>(chunk + ends[0] - start),
                                   uint64_t{ends[1]} - ends[0] - 1, uint64_t{ends[2]} - ends[1] - 1,
                                   uint64_t{ends[3]} - ends[2] - 1};
  if ((lengths[0] | lengths[1] | lengths[2] | lengths[3]) >= BLOCK) return false;
  Group group = loadGroup(fields);
  if constexpr (std::is_integral_v<Number>) group.pointBits = 0;
  const GroupShape shape = shapeOfGroup(group, lengths);
  return shape.isPlain && storeGroup(group, lengths, shape, out);
}

/// Converts the fields of a chunk in groups. Stops at the first group that readGroup does not
/// convert. `begin` is the index of the first field, and `start` is its first character. The loop
/// calls no function, so that its constants stay in registers.
template <class Number>
VSA_AVX2_INLINE NumberRun readGroups(const char* chunk, const FieldEnds& ends, size_t begin,
                                     size_t end, const char* start, Number* out) {
  size_t i = begin;
  for (; i < end; i += GROUP) {
    if (!readGroup(start, chunk, ends.at + i, out + i)) break;
    start = chunk + ends.at[i + GROUP - 1] + 1;
  }
  return {start, i};
}

/// Converts the first `count` fields of a chunk. Stops at the first field that neither the AVX2 nor
/// the SSE4.1 kernel converts. `count` must be a multiple of GROUP.
template <class Number>
VSA_AVX2_INLINE NumberRun readChunk(const char* chunk, const FieldEnds& ends, size_t count,
                                    const char* limit, Number* out) {
  NumberRun run{chunk, 0};
  for (;;) {
    run = readGroups(chunk, ends, run.count, count, run.next, out);
    if (run.count == count) return run;
    const NumberRun group = readFieldsSse41(run.next, limit, out + run.count, GROUP);
    run = {group.next, run.count + group.count};
    if (group.count < GROUP) return run;
  }
}

template <class Number>
VSA_AVX2 NumberRun readChunks(const char* at, const char* limit, Number* out, size_t capacity) {
  NumberRun run{at, 0};
  FieldEnds ends;
  while (limit - run.next >= static_cast<std::ptrdiff_t>(STEP)) {
    const auto left = static_cast<size_t>(limit - run.next);
    findEnds(run.next, std::min(CHUNK, left / STEP * STEP), ends);
    const size_t count = std::min(ends.count, capacity - run.count) / GROUP * GROUP;
    const NumberRun chunk = readChunk(run.next, ends, count, limit, out + run.count);
    run = {chunk.next, run.count + chunk.count};
    if (chunk.count < count || count == 0) break;
  }
  // Without this instruction, later SSE instructions would wait for the upper halves of the
  // registers. The compiler inserts it only with optimisation.
  _mm256_zeroupper();
  return run;
}

}  // namespace

template <class Number>
NumberRun readFieldsAvx2(const char* at, const char* limit, Number* out, size_t capacity) {
  const NumberRun run = readChunks(at, limit, out, capacity);
  const NumberRun rest = readFieldsSse41(run.next, limit, out + run.count, capacity - run.count);
  return {rest.next, run.count + rest.count};
}

template NumberRun readFieldsAvx2(const char*, const char*, float*, size_t);
template NumberRun readFieldsAvx2(const char*, const char*, int*, size_t);
template NumberRun readFieldsAvx2(const char*, const char*, unsigned int*, size_t);

}  // namespace zn::numbers

#endif  // defined(__x86_64__)
