// The SSE4.1 kernel of number lists. One 16-byte load contains a plain field and the blank after
// it. Comparisons find its end and its point. Shuffles move its last digit to the last byte and
// remove the point. Three multiply-adds combine the sixteen digits into one integer. None of this
// depends on the length of the number, so mixed lengths mispredict no branch. Longer doubles take
// two loads. All other fields are rare and are converted by the portable kernel.
#include "foundation/numbers/number_list_kernels.h"

#if VSA_HAS_SSE41_KERNEL

#include <immintrin.h>

#include <bit>
#include <cstdint>
#include <type_traits>

#include "foundation/base/sanitizers.h"
#include "foundation/numbers/number_decimal.h"
#include "foundation/numbers/number_field.h"
#include "foundation/numbers/number_list_tables.h"

#define VSA_SSE41 __attribute__((target("sse4.1")))
#define VSA_SSE41_OUT_OF_LINE __attribute__((target("sse4.1"), noinline))
#define VSA_SSE41_INLINE __attribute__((target("sse4.1"), always_inline)) inline

namespace zn::numbers {
namespace {

/// Sixteen characters: the values of the digits, zero for other characters, and a bit for each
/// digit, point and blank.
struct Block {
  __m128i digits;
  unsigned digitBits;
  unsigned pointBits;
  unsigned blankBits;
};

VSA_SSE41_INLINE unsigned bitsOf(__m128i mask) {
  return static_cast<unsigned>(_mm_movemask_epi8(mask));
}

VSA_SSE41_INLINE Block loadBlock(const char* at) {
  const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
  const __m128i values = _mm_sub_epi8(text, _mm_set1_epi8('0'));
  const __m128i isDigit = _mm_cmpeq_epi8(_mm_min_epu8(values, _mm_set1_epi8(9)), values);
  return {_mm_and_si128(values, isDigit), bitsOf(isDigit),
          bitsOf(_mm_cmpeq_epi8(text, _mm_set1_epi8('.'))),
          bitsOf(_mm_cmpeq_epi8(text, _mm_set1_epi8(' ')))};
}

/// The first `length` digits, moved to the end, with zeros before them.
VSA_SSE41_INLINE __m128i rightAligned(__m128i digits, unsigned length) {
  const auto* const shuffle = reinterpret_cast<const __m128i*>(RIGHT_ALIGN + length);
  return _mm_shuffle_epi8(digits, _mm_loadu_si128(shuffle));
}

VSA_SSE41_INLINE __m128i withoutPoint(__m128i digits, unsigned fromEnd) {
  const auto* const shuffle = reinterpret_cast<const __m128i*>(WITHOUT_POINT.bytes[fromEnd]);
  return _mm_shuffle_epi8(digits, _mm_load_si128(shuffle));
}

/// Sixteen digits as one integer.
VSA_SSE41_INLINE uint64_t foldBlock(__m128i digits) {
  const __m128i tens = _mm_set1_epi16(0x010A);           // weights 10, 1, ...
  const __m128i hundreds = _mm_set1_epi32(0x00010064);   // weights 100, 1, ...
  const __m128i thousands = _mm_set1_epi32(0x00012710);  // weights 10000, 1, ...
  const __m128i pairs = _mm_maddubs_epi16(digits, tens);
  const __m128i fours = _mm_madd_epi16(pairs, hundreds);
  const __m128i eights = _mm_madd_epi16(_mm_packus_epi32(fours, fours), thousands);
  const auto both = static_cast<uint64_t>(_mm_cvtsi128_si64(eights));
  return (both & 0xFFFFFFFF) * 100000000 + (both >> 32);
}

inline unsigned lowestBit(uint32_t bits) {
  return static_cast<unsigned>(std::countr_zero(bits));
}

/// The parts of a number.
struct Shape {
  unsigned length;  // the number of characters, including the sign
  // The position of the point, counted from the end: 1 for the last character, 0 for no point.
  unsigned pointFromEnd;
  // Whether the field consists of an optional sign and digits, with at most one point and at least
  // one digit.
  bool isPlain;

  int exponent() const { return pointFromEnd == 0 ? 0 : 1 - static_cast<int>(pointFromEnd); }
};

/// The shape of the first `length` characters, at most 31.
VSA_WRAPS_AROUND inline Shape shapeOf(uint32_t digitBits, uint32_t pointBits, unsigned length,
                                      bool hasSign) {
  const uint32_t inside = (uint32_t{1} << length) - 1;
  const uint32_t points = pointBits & inside;
  const unsigned place = lowestBit(points | (uint32_t{1} << length));
  const bool isPlain = ((digitBits | points | uint32_t{hasSign}) & inside) == inside &&
                       (points & (points - 1)) == 0 && (digitBits & inside) != 0;
  return {length, length - place, isPlain};
}

/// A field of up to 15 characters.
template <class Real>
VSA_SSE41_INLINE const char* readShortReal(const char* at, const Block& block, Real& out) {
  const bool negative = *at == '-';
  const Shape shape =
      shapeOf(block.digitBits, block.pointBits, lowestBit(block.blankBits), negative);
  if (!shape.isPlain) return nullptr;
  const uint64_t digits =
      foldBlock(withoutPoint(rightAligned(block.digits, shape.length), shape.pointFromEnd));
  const double value =
      static_cast<double>(static_cast<int64_t>(digits)) / POINT_DIVISORS[shape.pointFromEnd];
  if constexpr (std::is_same_v<Real, float>) {
    // A number of up to 15 digits, divided by up to 10^14, is always in the range of a float.
    if (isHalfWayBetweenFloats(value)) return nullptr;
  }
  out = withSign(static_cast<Real>(value), negative);
  return at + shape.length;
}

/// Converts a real with an exponent, such as `-1.5e-05`, and up to 15 characters before that.
template <class Real>
VSA_SSE41 const char* readScaledReal(const char* at, const Block& block, Real& out) {
  const unsigned other = ~(block.digitBits | block.pointBits | 1u) | (1u << BLOCK);
  const unsigned length = lowestBit(other);
  if (length == BLOCK || (at[length] | 0x20) != 'e') return nullptr;
  const bool negative = *at == '-';
  const Shape shape = shapeOf(block.digitBits, block.pointBits, length, negative);
  if (!shape.isPlain) return nullptr;
  const uint64_t digits =
      foldBlock(withoutPoint(rightAligned(block.digits, length), shape.pointFromEnd));
  int64_t exponent = shape.exponent();
  const char* const end = readExponent(at + length, exponent);
  Real value;
  if (end == nullptr || *end != ' ' || !realFromDecimal(digits, exponent, value)) return nullptr;
  out = withSign(value, negative);
  return end;
}

/// Converts a field of 16 to 31 characters with up to 19 significant digits. The last sixteen
/// characters and those before them are combined separately.
template <class Real>
VSA_SSE41 const char* readLongReal(const char* at, const Block& block, Real& out) {
  const Block next = loadBlock(at + BLOCK);
  if (next.blankBits == 0) return nullptr;
  const bool negative = *at == '-';
  const Shape shape =
      shapeOf(block.digitBits | next.digitBits << BLOCK, block.pointBits | next.pointBits << BLOCK,
              BLOCK + lowestBit(next.blankBits), negative);
  if (!shape.isPlain) return nullptr;
  const __m128i head = rightAligned(block.digits, shape.length - BLOCK);
  const __m128i tail = loadBlock(at + shape.length - BLOCK).digits;
  const bool pointInTail = shape.pointFromEnd <= BLOCK;
  const unsigned inTail = pointInTail ? shape.pointFromEnd : 0;
  const unsigned inHead = pointInTail ? 0 : shape.pointFromEnd - BLOCK;
  const uint64_t high = foldBlock(withoutPoint(head, inHead));
  const uint64_t low = foldBlock(withoutPoint(tail, inTail));
  const bool fifteen = inTail != 0;  // a point among 16 characters leaves 15 digits
  if (high >= (fifteen ? 10000u : 1000u)) return nullptr;
  const uint64_t digits = high * (fifteen ? 1000000000000000u : 10000000000000000u) + low;
  // Values above 2^53 are as frequent as others, so one method converts both, without a branch.
  double value;
  if (digits == 0 || !doubleByProduct(digits, shape.exponent(), value)) return nullptr;
  if constexpr (std::is_same_v<Real, float>) {
    if (!floatFromDouble(value, out)) return nullptr;
    out = withSign(out, negative);
  } else {
    out = withSign(value, negative);
  }
  return at + shape.length;
}

/// A field of up to 15 characters.
template <class Integer>
VSA_SSE41_INLINE const char* readShortInteger(const char* at, const Block& block, Integer& out) {
  const bool negative = *at == '-';
  const unsigned length = lowestBit(block.blankBits);
  const unsigned inside = (1u << length) - 1;
  const unsigned sign = negative ? 1 : 0;
  if (((block.digitBits | sign) & inside) != inside || (block.digitBits & inside) == 0) {
    return nullptr;
  }
  Integer value;
  if (!signedInteger(foldBlock(rightAligned(block.digits, length)), negative, value))
    return nullptr;
  out = value;
  return at + length;
}

/// Converts all other fields. It is out of line to keep the loop small.
template <class Number>
VSA_SSE41_OUT_OF_LINE const char* readOtherField(const char* at, Number& out) {
  if constexpr (std::is_floating_point_v<Number>) {
    const Block block = loadBlock(at);
    const char* const end =
        block.blankBits == 0 ? readLongReal(at, block, out) : readScaledReal(at, block, out);
    if (end != nullptr) return end;
  }
  return readField(at, out);
}

template <class Number>
VSA_SSE41_INLINE const char* readShortField(const char* at, Number& out) {
  const Block block = loadBlock(at);
  if (block.blankBits == 0) return nullptr;
  if constexpr (std::is_floating_point_v<Number>) {
    return readShortReal(at, block, out);
  } else {
    return readShortInteger(at, block, out);
  }
}

template <class Number>
VSA_SSE41 NumberRun readFields(const char* at, const char* limit, Number* out, size_t capacity) {
  NumberRun run{at, 0};
  while (run.next <= limit && run.count < capacity) {
    const char* fieldEnd = readShortField(run.next, out[run.count]);
    if (fieldEnd == nullptr) fieldEnd = readOtherField(run.next, out[run.count]);
    if (fieldEnd == nullptr) break;
    run = {fieldEnd + 1, run.count + 1};
  }
  return run;
}

}  // namespace

// A separate function, because the declaration in the header has no attribute for the instruction
// set.
template <class Number>
NumberRun readFieldsSse41(const char* at, const char* limit, Number* out, size_t capacity) {
  return readFields(at, limit, out, capacity);
}

template NumberRun readFieldsSse41(const char*, const char*, float*, size_t);
template NumberRun readFieldsSse41(const char*, const char*, double*, size_t);
template NumberRun readFieldsSse41(const char*, const char*, signed char*, size_t);
template NumberRun readFieldsSse41(const char*, const char*, unsigned char*, size_t);
template NumberRun readFieldsSse41(const char*, const char*, short*, size_t);
template NumberRun readFieldsSse41(const char*, const char*, unsigned short*, size_t);
template NumberRun readFieldsSse41(const char*, const char*, int*, size_t);
template NumberRun readFieldsSse41(const char*, const char*, unsigned int*, size_t);
template NumberRun readFieldsSse41(const char*, const char*, long long*, size_t);
template NumberRun readFieldsSse41(const char*, const char*, unsigned long long*, size_t);

}  // namespace zn::numbers

#endif  // VSA_HAS_SSE41_KERNEL
