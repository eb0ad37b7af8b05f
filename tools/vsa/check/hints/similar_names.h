// Names that were probably meant: the nearest one by edit distance.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vsa_tools {

/// The name with its ASCII letters in lower case.
std::string loweredName(std::string_view name);

/// How many characters have to be inserted, removed, replaced, or swapped with their neighbour to
/// make `b` of `a`, without regard to the case of ASCII letters; `limit` + 1 if there are more than
/// `limit`.
std::size_t editDistance(std::string_view a, std::string_view b, std::size_t limit);

/// A name that was probably meant.
struct Suggestion {
  std::string name;
  /// Whether it may be written without asking: one character differs, which is no digit, and no
  /// other name is as near.
  bool isSure = false;
};

/// Takes names one by one and keeps the one that is nearest to a written one. A name is near if a
/// third of its characters differ at most, at least one and at most three. The first of two that
/// are equally near is kept.
class NearestName {
 public:
  explicit NearestName(std::string_view written);
  void consider(std::string_view name);
  /// The nearest one that is not the written one; nothing if none is near.
  std::optional<Suggestion> found() const;

 private:
  std::string_view written_;
  std::size_t distance_;  // the greatest that is accepted, plus 1
  std::string nearest_;
  bool isUnique_ = false;
};

}  // namespace vsa_tools
