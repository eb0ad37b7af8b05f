// Functions about digits that do not depend on the locale.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace vsa_tools {

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace vsa_tools
