// StringVector: an ordered list of texts, the result of String::split.
#pragma once

#include <cstddef>

#include "foundation/string.h"
#include "foundation/vector.h"

namespace zn {

class VSA_API StringVector {
 public:
  std::size_t size() const noexcept { return static_cast<std::size_t>(pieces_.size); }
  /// A copy of the i-th piece (it shares the text); the empty text past the end.
  String operator[](std::size_t i) const { return i < size() ? pieces_[i] : String(); }
  void append(String piece) { pieces_.push_back(std::move(piece)); }

 private:
  ds::Vector<String> pieces_;
};

}  // namespace zn
