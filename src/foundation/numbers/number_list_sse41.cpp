// The SSE4.1 kernel of number lists.
//
// One 16-byte load contains a field of up to 15 characters and the blank after it. Comparisons find
// the end of the field and its point. Shuffles move the last digit to the last byte and remove the
// point. Three multiply-adds combine the sixteen digits to one integer. These instructions do not
// depend on the length of the number, so fields of different lengths cause no branch
// mispredictions.
//
// A real of 16 to 31 characters without an exponent takes more loads and two such conversions. A
// real of up to 15 characters with an exponent is converted in the same way up to its exponent. The
// portable kernel tries all other fields, which are rare.
#include "foundation/numbers/number_list_kernels.h"

#if defined(__x86_64__)

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

/// Sixteen characters. `digits` contains the values of the digits, and zero for all other
/// characters. The masks contain a bit for each digit, point and blank.
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

/// Moves the first `length` digits to the end and inserts zeros before them.
VSA_SSE41_INLINE __m128i rightAligned(__m128i digits, unsigned length) {
  const auto* const shuffle = reinterpret_cast<const __m128i*>(RIGHT_ALIGN + length);
  return _mm_shuffle_epi8(digits, _mm_loadu_si128(shuffle));
}

VSA_SSE41_INLINE __m128i withoutPoint(__m128i digits, unsigned fromEnd) {
  const auto* const shuffle = reinterpret_cast<const __m128i*>(WITHOUT_POINT.bytes[fromEnd]);
  return _mm_shuffle_epi8(digits, _mm_load_si128(shuffle));
}

/// Combines sixteen digits to one integer.
VSA_SSE41_INLINE uint64_t foldBlock(__m128i digits) {
  const __m128i tens = _mm_set1_epi16(0x010A);           // The weights are 10, 1, ...
  const __m128i hundreds = _mm_set1_epi32(0x00010064);   // The weights are 100, 1, ...
  const __m128i thousands = _mm_set1_epi32(0x00012710);  // The weights are 10000, 1, ...
  const __m128i pairs = _mm_maddubs_epi16(digits, tens);
  const __m128i fours = _mm_madd_epi16(pairs, hundreds);
  const __m128i eights = _mm_madd_epi16(_mm_packus_epi32(fours, fours), thousands);
  const auto both = static_cast<uint64_t>(_mm_cvtsi128_si64(eights));
  return (both & 0xFFFFFFFF) * 100000000 + (both >> 32);
}

inline unsigned lowestBit(uint32_t bits) {
  return static_cast<unsigned>(std::countr_zero(bits));
}

/// The form of a field.
struct Shape {
  // The number of characters, including the sign.
  unsigned length;
  // The position of the point, counted from the end of the field. 1 is the last character. 0 means
  // that there is no point.
  unsigned pointFromEnd;
  // Whether the field is an optional sign and digits, with at most one point and at least one
  // digit.
  bool isPlain;

  int exponent() const { return pointFromEnd == 0 ? 0 : 1 - static_cast<int>(pointFromEnd); }
};

/// Returns the form of a field of `length` characters. `length` must be at most 31.
VSA_WRAPS_AROUND inline Shape shapeOf(uint32_t digitBits, uint32_t pointBits, unsigned length,
                                      bool hasSign) {
  const uint32_t inside = (uint32_t{1} << length) - 1;
  const uint32_t points = pointBits & inside;
  const unsigned place = lowestBit(points | (uint32_t{1} << length));
  const bool isPlain = ((digitBits | points | uint32_t{hasSign}) & inside) == inside &&
                       (points & (points - 1)) == 0 && (digitBits & inside) != 0;
  return {length, length - place, isPlain};
}

/// Converts a real of up to 15 characters without an exponent.
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
    // A number of up to 15 digits is divided by a power of ten up to 10^14. The quotient is always
    // in the range of a float. It determines the float unless it is half-way between two floats.
    if (isHalfWayBetweenFloats(value)) return nullptr;
  }
  out = withSign(static_cast<Real>(value), negative);
  return at + shape.length;
}

/// Converts a real with an exponent, such as `-1.5e-05`. At most 15 characters may be before the
/// exponent. Returns null for any other field.
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

/// Converts a real of 16 to 31 characters with up to 19 significant digits. Combines the last
/// sixteen characters and the characters before them separately. Returns null for any other field,
/// for a zero, and if the rounding is not determined.
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
  // A point among 16 characters leaves 15 digits.
  const bool fifteen = inTail != 0;
  if (high >= (fifteen ? 10000u : 1000u)) return nullptr;
  const uint64_t digits = high * (fifteen ? 1000000000000000u : 10000000000000000u) + low;
  // Calls doubleByProduct for every number. Values above and below 2^53 are both frequent, so a
  // branch that selects a faster method for the smaller values would be unpredictable.
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

/// Converts an integer of up to 15 characters.
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

/// Converts a field that readShortField does not convert. Returns null if no function here converts
/// it. The function is out of line to keep the loop small.
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

// Calls the kernel. This is a separate function, because its declaration in the header has no
// attribute for the instruction set.
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

#endif  // defined(__x86_64__)
