// Suggestions for misspelt names: the nearest known name by edit distance.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vsa_tools {

/// The name with its ASCII letters in lower case.
std::string loweredName(std::string_view name);

/// The number of characters to insert, remove, replace, or swap with their neighbour to change `a`
/// into `b`; `limit` + 1 if it is more than `limit`. The case of ASCII letters is ignored.
std::size_t editDistance(std::string_view a, std::string_view b, std::size_t limit);

/// A name that was probably meant.
struct Suggestion {
  std::string name;
  /// Whether the name may be applied without asking the user: it differs in one character, which is
  /// not a digit, and no other name is as near.
  bool isSure = false;
};

/// Compares names one by one with a written name and keeps the nearest one. A name is near if the
/// number of differing characters is at most a third of its length, with a limit of at least one
/// and at most three. Of two names that are equally near, the first one is kept.
class NearestName {
 public:
  explicit NearestName(std::string_view written);
  void consider(std::string_view name);
  /// The nearest name that differs from the written one; nothing if none is near.
  std::optional<Suggestion> found() const;

 private:
  std::string_view written_;
  // The distance of `nearest_`. Before a name is accepted, the greatest accepted distance plus 1.
  std::size_t distance_;
  std::string nearest_;
  bool isUnique_ = false;
};

}  // namespace vsa_tools
