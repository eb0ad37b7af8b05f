#include "tools/scene_text/real_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace vsa_tools {

namespace {

size_t word(const char* text, char* to) {
  const size_t length = std::strlen(text);
  std::copy_n(text, length, to);
  return length;
}

template <class Real>
size_t shortest(Real value, char* to) {
  if (std::isnan(value)) return word("nan", to);
  if (std::isinf(value)) return word(value < 0 ? "-inf" : "inf", to);
  if (value == 0) return word(std::signbit(value) ? "-0.0" : "0", to);
  return static_cast<size_t>(std::to_chars(to, to + NUMBER_TEXT_CAPACITY, value).ptr - to);
}

}  // namespace

size_t realText(double value, char* to) {
  return shortest(value, to);
}

size_t realText(float value, char* to) {
  return shortest(value, to);
}

}  // namespace vsa_tools
