// StringVector: an ordered list of texts, the result of String::split.
#pragma once

#include <cstddef>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>

namespace zn {

/// A plain value: a copy has a list of its own, and shares the texts.
class VSA_API StringVector {
 public:
  /// Pieces in the list.
  std::size_t size() const noexcept { return static_cast<std::size_t>(pieces_.size); }
  /// A copy of the i-th piece (it shares the text); the empty text past the end.
  String operator[](std::size_t i) const { return i < size() ? pieces_[i] : String(); }
  /// Adds a piece at the end. Throws std::bad_alloc.
  void append(String piece) { pieces_.push_back(std::move(piece)); }

 private:
  ds::Vector<String> pieces_;
};

}  // namespace zn
