#include "write/not_a_number.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <type_traits>

#include "foundation/base/load_word.h"

namespace vsa::impl {

namespace {

template <class Real>
using BitsOf = std::conditional_t<sizeof(Real) == 4, std::uint32_t, std::uint64_t>;

template <class Real>
bool isOtherNan(BitsOf<Real> bits) {
  constexpr auto INFINITE = std::bit_cast<BitsOf<Real>>(std::numeric_limits<Real>::infinity());
  constexpr auto QUIET = std::bit_cast<BitsOf<Real>>(std::numeric_limits<Real>::quiet_NaN());
  const BitsOf<Real> magnitude = bits & (~BitsOf<Real>{0} >> 1);
  return magnitude > INFINITE && magnitude != QUIET;
}

// Without a branch in the loop, so that the compiler makes vector instructions of it.
template <class Real>
bool haveOtherNan(const unsigned char* bytes, std::uint64_t count) {
  constexpr std::uint64_t RUN = 4096;
  for (std::uint64_t start = 0; start < count; start += RUN) {
    const std::uint64_t end = std::min(count, start + RUN);
    BitsOf<Real> found = 0;
    for (std::uint64_t i = start; i < end; ++i) {
      const auto bits = zn::detail::loadWord<BitsOf<Real>>(bytes + i * sizeof(Real));
      found |= isOtherNan<Real>(bits) ? 1 : 0;
    }
    if (found != 0) return true;
  }
  return false;
}

}  // namespace

bool isPlainNan(double value) {
  return value != value && !isOtherNan<double>(std::bit_cast<std::uint64_t>(value));
}

bool haveOtherNan(const double* numbers, std::uint64_t count) {
  return haveOtherNan<double>(reinterpret_cast<const unsigned char*>(numbers), count);
}

bool haveOtherNan(const zn::korvo_sdk::BufferValue& buffer) {
  using zn::korvo_sdk::DataType;
  const DataType component = zn::korvo_sdk::componentType(buffer.type);
  const std::uint64_t count = buffer.count * zn::korvo_sdk::componentCount(buffer.type);
  if (component == DataType::Float) return haveOtherNan<float>(buffer.memory, count);
  if (component == DataType::Double) return haveOtherNan<double>(buffer.memory, count);
  return false;
}

bool areZero(const double* numbers, std::uint64_t count) {
  return std::all_of(numbers, numbers + count,
                     [](double number) { return std::bit_cast<std::uint64_t>(number) == 0; });
}

}  // namespace vsa::impl
