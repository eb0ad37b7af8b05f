// Surveys of reals in their shortest form. A block of reals is written as one list. It is read as a
// list, and each of its numbers is read as a scalar.
#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "foundation/numbers/number_list.h"
#include "foundation/numbers/number_text.h"
#include "tests/exhaustive/mismatch.h"
#include "tests/exhaustive/survey.h"

namespace vsa_tests {

namespace {

constexpr std::size_t BLOCK = 1024;
/// Enough bytes for every shortest form: sign, 17 digits, point and exponent.
constexpr std::size_t MAX_TEXT = 32;

template <class Real>
using Bits = std::conditional_t<sizeof(Real) == 4, std::uint32_t, std::uint64_t>;

template <class Real>
Bits<Real> bitsOf(Real value) {
  return std::bit_cast<Bits<Real>>(value);
}

/// Returns the bits that must be read from the text of `value`. The text of a NaN contains no bits
/// except the sign. It is read as the quiet NaN with that sign.
template <class Real>
Bits<Real> expectedBits(Real value) {
  if (!std::isnan(value)) return bitsOf(value);
  constexpr Real NAN_OF_TEXT = std::numeric_limits<Real>::quiet_NaN();
  return bitsOf(std::copysign(NAN_OF_TEXT, value));
}

template <class Real>
class Block {
 public:
  bool isFull() const { return values_.size() == BLOCK; }

  void add(Real value) {
    if (!values_.empty()) *at_++ = ' ';
    starts_.push_back(at_);
    at_ = std::to_chars(at_, text_.data() + text_.size(), value).ptr;
    values_.push_back(value);
  }

  /// Reads the block as a list and as scalars, then clears it.
  void check(Survey& survey) {
    *at_ = '}';
    const zn::NumberRun run = zn::readNumberRun(text_.data(), at_, run_.data(), BLOCK);
    starts_.push_back(at_ + 1);
    for (std::size_t i = 0; i < values_.size(); ++i) {
      const char* const end = starts_[i + 1] - 1;
      const Bits<Real> expected = expectedBits(values_[i]);
      Real scalar;
      const bool asScalar = zn::realFromText(starts_[i], end, scalar) && bitsOf(scalar) == expected;
      const bool inList = i < run.count && bitsOf(run_[i]) == expected;
      if (!asScalar || !inList) {
        mismatch(survey, {starts_[i], static_cast<std::size_t>(end - starts_[i])},
                 asScalar ? "in a list" : "as a scalar");
      }
    }
    survey.texts += values_.size();
    values_.clear();
    starts_.clear();
    at_ = text_.data();
  }

 private:
  std::vector<char> text_ = std::vector<char>(BLOCK * (MAX_TEXT + 1) + 1);
  std::vector<Real> values_;
  std::vector<const char*> starts_;
  std::vector<Real> run_ = std::vector<Real>(BLOCK);
  char* at_ = text_.data();
};

}  // namespace

Survey surveyFloats(std::uint64_t first, std::uint64_t end, std::uint64_t step) {
  Survey survey;
  Block<float> block;
  for (std::uint64_t bits = first; bits < end; bits += step) {
    block.add(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
    if (block.isFull()) block.check(survey);
  }
  block.check(survey);
  return survey;
}

Survey surveyDoubles(std::uint64_t count, std::uint64_t seed) {
  Survey survey;
  Block<double> block;
  std::mt19937_64 random(seed);
  for (std::uint64_t i = 0; i < count; ++i) {
    block.add(std::bit_cast<double>(random()));
    if (block.isFull()) block.check(survey);
  }
  block.check(survey);
  return survey;
}

}  // namespace vsa_tests
