#include "tools/vsa/check/rules/walk/path_steps.h"

#include <charconv>

#include <vsa/foundation/char_class.h>

namespace vsa_tools {

namespace char_class = zn::char_class;

void PathSteps::skipWhite() {
  while (!rest_.empty() && char_class::is(rest_.front(), char_class::WHITE)) rest_.remove_prefix(1);
}

bool PathSteps::next(std::string_view& step) {
  if (rest_.starts_with('.')) rest_.remove_prefix(1);
  skipWhite();
  if (rest_.empty()) return false;
  std::size_t size = 1;
  if (isIndex(rest_)) {
    size = rest_.find(']') + 1;
  } else {
    while (size < rest_.size() && char_class::is(rest_[size], char_class::NAME)) ++size;
  }
  step = rest_.substr(0, size);
  rest_.remove_prefix(size);
  skipWhite();
  return true;
}

std::optional<std::uint64_t> numberIn(std::string_view index) {
  const std::size_t digits = index.find_first_of("0123456789");
  if (digits == std::string_view::npos) return std::nullopt;
  std::uint64_t number = 0;
  std::from_chars(index.data() + digits, index.data() + index.size(), number);
  return number;
}

std::string_view lastName(std::string_view path) {
  std::string_view name;
  PathSteps steps(path);
  for (std::string_view step; steps.next(step);) {
    if (!isIndex(step)) name = step;
  }
  return name;
}

}  // namespace vsa_tools
