// TextPlaces: returns the lines and columns of offsets in a text in memory, in any order.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <vsa/reading/text_position.h>

namespace vsa_tools {

class TextPlaces {
 public:
  /// The text must not change. Its lines are counted when a position is first requested.
  explicit TextPlaces(std::string_view text) : text_(text) {}

  vsa::TextPosition positionOf(std::uint64_t offset);
  vsa::TextRange rangeOf(std::uint64_t begin, std::uint64_t end) {
    return {positionOf(begin), positionOf(end)};
  }
  /// Returns the range of `part`, which must be a view of a part of the text.
  vsa::TextRange rangeOf(std::string_view part) {
    const auto begin = static_cast<std::uint64_t>(part.data() - text_.data());
    return rangeOf(begin, begin + part.size());
  }

 private:
  std::string_view text_;
  std::vector<std::uint64_t> lineStarts_;
};

}  // namespace vsa_tools
