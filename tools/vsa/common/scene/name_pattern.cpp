#include "tools/vsa/common/scene/name_pattern.h"

#include <algorithm>
#include <cstddef>

namespace vsa_tools {

// Matches from left to right. After a mismatch, the last "*" is matched with one more character. It
// is not necessary to try more characters for an earlier "*": the last "*" would only begin later.
bool matchesPattern(std::string_view pattern, std::string_view text) {
  std::size_t inPattern = 0, inText = 0;
  std::size_t afterStar = std::string_view::npos, starText = 0;
  while (inText < text.size()) {
    if (inPattern < pattern.size() && pattern[inPattern] == '*') {
      afterStar = ++inPattern;
      starText = inText;
    } else if (inPattern < pattern.size() &&
               (pattern[inPattern] == '?' || pattern[inPattern] == text[inText])) {
      ++inPattern;
      ++inText;
    } else if (afterStar != std::string_view::npos) {
      inPattern = afterStar;
      inText = ++starText;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

bool matchesAny(const std::vector<std::string>& patterns, std::string_view text) {
  return std::any_of(patterns.begin(), patterns.end(),
                     [&](const std::string& pattern) { return matchesPattern(pattern, text); });
}

}  // namespace vsa_tools
