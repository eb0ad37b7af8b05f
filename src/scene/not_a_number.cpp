#include "scene/not_a_number.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "foundation/base/load_word.h"

namespace zn::korvo_sdk {

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

// Checks runs of RUN numbers, and returns at the end of the first run in which isOtherNan is true
// for a number. The loop within a run has no branch, so that the compiler vectorizes it.
template <class Real>
bool haveOtherNan(std::span<const std::byte> bytes) {
  constexpr std::size_t RUN = 4096;
  const std::size_t count = bytes.size() / sizeof(Real);
  for (std::size_t start = 0; start < count; start += RUN) {
    const std::size_t end = std::min(count, start + RUN);
    BitsOf<Real> found = 0;
    for (std::size_t i = start; i < end; ++i) {
      const auto bits = zn::detail::loadWord<BitsOf<Real>>(bytes.data() + i * sizeof(Real));
      found |= isOtherNan<Real>(bits) ? 1 : 0;
    }
    if (found != 0) return true;
  }
  return false;
}

}  // namespace

bool isOtherNan(double number) noexcept {
  return isOtherNan<double>(std::bit_cast<std::uint64_t>(number));
}

bool haveOtherNan(std::span<const double> numbers) noexcept {
  return haveOtherNan<double>(std::as_bytes(numbers));
}

bool haveOtherNan(DataType elements, std::span<const std::byte> bytes) noexcept {
  const DataType component = componentType(elements);
  if (component == DataType::Float) return haveOtherNan<float>(bytes);
  if (component == DataType::Double) return haveOtherNan<double>(bytes);
  return false;
}

}  // namespace zn::korvo_sdk
