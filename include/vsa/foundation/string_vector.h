// StringVector: an ordered list of texts, the result of String::split.
#pragma once

#include <cstddef>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>

namespace zn {

/// A list of texts with value semantics. A copy has its own list and shares the characters.
class VSA_API StringVector {
 public:
  /// The number of texts.
  std::size_t size() const noexcept { return static_cast<std::size_t>(texts_.size); }
  /// The i-th text; the empty text if `i` is not less than the size.
  String operator[](std::size_t i) const { return i < size() ? texts_[i] : String(); }
  /// Appends a text. Throws std::bad_alloc.
  void append(String text) { texts_.push_back(std::move(text)); }

 private:
  ds::Vector<String> texts_;
};

}  // namespace zn
