#include "vsa/apply/values/value_convert.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace zn::korvo_sdk::impl {

namespace {

// Each group contains the types that have the same conversions.
enum Group { BOOL, INTEGER, REAL, TWO, THREE, FOUR, MAT3, MAT4, OTHER, GROUP_COUNT };

// The group of each AttrType, in the order of its enumerators.
constexpr Group GROUPS[ATTR_TYPE_COUNT] = {
    OTHER, BOOL,  INTEGER, INTEGER, REAL,   // Null, Bool, Int, UInt, Real
    TWO,   THREE, FOUR,                     // Vec2, Vec3, Vec4
    TWO,   THREE, FOUR,    FOUR,            // Pos2, Pos3, Quat, Rgba
    MAT3,  MAT4,                            // Mat3, Mat4
    OTHER, OTHER, OTHER,   OTHER,   OTHER,  // String, Node, Buffer, Array, Object
};

// A host's input may return a number that is not an AttrType.
Group groupOf(AttrType type) noexcept {
  const auto i = static_cast<std::uint32_t>(type);
  return i < ATTR_TYPE_COUNT ? GROUPS[i] : OTHER;
}

constexpr Conversion S = Conversion::Silent;
constexpr Conversion N = Conversion::Narrowing;
constexpr Conversion R = Conversion::Refused;

// The conversions between different types. A row is the group of the value, and a column is the
// group of the input.
// The table is not symmetric: a Bool converts to a Real, but a Real does not convert to a Bool.
constexpr Conversion MATRIX[GROUP_COUNT][GROUP_COUNT] = {
    // BOOL INTEGER REAL TWO THREE FOUR MAT3 MAT4 OTHER
    {S, S, S, R, R, R, R, R, R},  // BOOL
    {N, S, S, R, R, R, R, R, R},  // INTEGER
    {R, N, S, S, S, S, R, R, R},  // REAL
    {R, R, R, S, S, S, R, R, R},  // TWO
    {R, R, R, N, S, S, R, R, R},  // THREE
    {R, R, R, N, N, S, R, R, R},  // FOUR
    {R, R, R, R, R, R, S, S, R},  // MAT3
    {R, R, R, R, R, R, N, S, R},  // MAT4
    {R, R, R, R, R, R, R, R, R},  // OTHER
};

// Rounds to the nearest integer, with halves rounded away from zero. Clamps to the range of
// Integer. Returns 0 for NaN.
template <class Integer>
Integer rounded(double value) noexcept {
  using Limits = std::numeric_limits<Integer>;
  // The bounds `beyond` and Limits::min() are zero or a power of two, apart from the sign. A double
  // therefore represents both exactly.
  const double beyond = std::ldexp(1.0, Limits::digits);
  if (std::isnan(value)) return 0;
  const double whole = std::round(value);
  if (whole >= beyond) return Limits::max();
  if (whole <= static_cast<double>(Limits::min())) return Limits::min();
  return static_cast<Integer>(whole);
}

std::int64_t toInteger(const AttrData& value, AttrType to) noexcept {
  if (value.type == AttrType::Bool) return value.payload.boolean ? 1 : 0;
  if (value.type != AttrType::Real) return value.payload.integer;
  if (to == AttrType::Int) return rounded<std::int64_t>(value.payload.real);
  return static_cast<std::int64_t>(rounded<std::uint64_t>(value.payload.real));
}

double toReal(const AttrData& value) noexcept {
  if (value.type == AttrType::Bool) return value.payload.boolean ? 1 : 0;
  if (value.type == AttrType::Int) return static_cast<double>(value.payload.integer);
  return static_cast<double>(static_cast<std::uint64_t>(value.payload.integer));
}

// Converts a value to a tuple. A Real is copied to every component. A tuple keeps its components.
// The components that a wider tuple adds are zero, because the payload after the value is zero.
void toTuple(AttrData& value, AttrType to) noexcept {
  if (value.type != AttrType::Real) return;
  const double number = value.payload.real;
  for (unsigned i = 0; i < componentCount(to); ++i) value.payload.components[i] = number;
}

// Copies the 3 by 3 matrix to the upper left block of a 4 by 4 identity matrix.
void widenMatrix(AttrData& value) noexcept {
  const math::MatT<3, double> from = value.payload.mat3;
  math::MatT<4, double> to{};
  for (unsigned i = 0; i < 9; ++i) to.components[i / 3 * 4 + i % 3] = from.components[i];
  to.components[15] = 1;
  value.payload.mat4 = to;
}

// Copies the upper left 3 by 3 block.
void narrowMatrix(AttrData& value) noexcept {
  const math::MatT<4, double> from = value.payload.mat4;
  math::MatT<3, double> to{};
  for (unsigned i = 0; i < 9; ++i) to.components[i] = from.components[i / 3 * 4 + i % 3];
  value.payload.mat3 = to;
}

}  // namespace

Conversion conversionBetween(AttrType from, AttrType to) noexcept {
  return from == to ? Conversion::Silent : MATRIX[groupOf(from)][groupOf(to)];
}

void convert(AttrData& value, AttrType to) noexcept {
  if (value.type == to) return;
  switch (groupOf(to)) {
    case BOOL:
      value.payload.boolean = value.payload.integer != 0;
      break;
    case INTEGER:
      value.payload.integer = toInteger(value, to);
      break;
    case REAL:
      value.payload.real = toReal(value);
      break;
    case TWO:
    case THREE:
    case FOUR:
      toTuple(value, to);
      break;
    case MAT3:
      narrowMatrix(value);
      break;
    case MAT4:
      widenMatrix(value);
      break;
    default:
      break;
  }
  value.type = to;
}

}  // namespace zn::korvo_sdk::impl
