#include "tools/vsa/check/text/text_places.h"

#include <algorithm>

namespace vsa_tools {

vsa::TextPosition TextPlaces::positionOf(std::uint64_t offset) {
  if (lineStarts_.empty()) {
    lineStarts_.push_back(0);
    for (std::size_t feed = text_.find('\n'); feed != std::string_view::npos;
         feed = text_.find('\n', feed + 1)) {
      lineStarts_.push_back(feed + 1);
    }
  }
  const auto next = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
  const auto line = static_cast<std::uint64_t>(next - lineStarts_.begin());
  return {offset, line, offset - *(next - 1) + 1};
}

}  // namespace vsa_tools
