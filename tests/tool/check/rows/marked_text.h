// MarkedText: a text whose expected range is marked.
#pragma once

#include <string>
#include <string_view>

namespace vsa_tests {

/// A text without its marks « and », and the range between the marks. Without marks, the range is
/// not set.
struct MarkedText {
  explicit MarkedText(std::string_view marked) : text(marked) {
    constexpr std::string_view OPEN = "«", CLOSE = "»";
    begin = text.find(OPEN);
    if (begin == std::string::npos) return;
    text.erase(begin, OPEN.size());
    end = text.find(CLOSE, begin);
    text.erase(end, CLOSE.size());
  }

  std::string text;
  std::size_t begin = 0, end = 0;
};

}  // namespace vsa_tests
