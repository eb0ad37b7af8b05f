// StringVector: an ordered list of texts, the result of String::split.
#pragma once

#include <cstddef>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>

namespace zn {

/// A plain value: a copy has its own list and shares the texts.
class VSA_API StringVector {
 public:
  /// How many texts there are.
  std::size_t size() const noexcept { return static_cast<std::size_t>(texts_.size); }
  /// The i-th text (a copy of the handle); the empty text past the end.
  String operator[](std::size_t i) const { return i < size() ? texts_[i] : String(); }
  /// Adds a text at the end. Throws std::bad_alloc.
  void append(String text) { texts_.push_back(std::move(text)); }

 private:
  ds::Vector<String> texts_;
};

}  // namespace zn
