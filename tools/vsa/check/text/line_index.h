// LineIndex: computes lines and columns from offsets.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include <vsa/reading/text_position.h>

namespace vsa_tools {

class LineIndex {
 public:
  explicit LineIndex(std::string_view text) {
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string_view::npos;) {
      starts_.push_back(++at);
    }
  }

  vsa::TextPosition positionOf(std::uint64_t offset) const {
    const auto next = std::upper_bound(starts_.begin(), starts_.end(), offset);
    const auto line = static_cast<std::uint64_t>(next - starts_.begin());
    return {offset, line, offset - next[-1] + 1};
  }

  vsa::TextRange rangeOf(std::uint64_t begin, std::uint64_t end) const {
    return {positionOf(begin), positionOf(end)};
  }

 private:
  std::vector<std::uint64_t> starts_{0};
};

}  // namespace vsa_tools
