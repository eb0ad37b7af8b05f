// Suggestions for misspelt names: finds the nearest known name by edit distance.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vsa_tools {

/// Returns the name with its ASCII letters in lower case.
std::string loweredName(std::string_view name);

/// Returns the optimal string alignment distance from `a` to `b`: the least number of steps that
/// insert, remove or replace one byte or swap two neighbours, if no byte is changed by two steps.
/// Returns `limit` + 1 for any distance greater than `limit`, and if a name has more than 200
/// bytes. The case of ASCII letters is ignored.
std::size_t editDistance(std::string_view a, std::string_view b, std::size_t limit);

/// A known name that is suggested instead of a misspelt one.
struct Suggestion {
  std::string name;
  /// Whether the name may be applied without asking the user. NearestName requires that the names
  /// differ only in the case of letters, or that their distance is 1. In the second case, their
  /// digits must be the same, the written name must have at least four characters, and no other
  /// known name may be as near.
  bool isSure = false;
};

/// Compares known names with a written name and keeps the nearest one. A name is near if its
/// distance is at most a third of the length of the written name. This limit is at least 1 and at
/// most 3. Of two equally near names, the first one is kept.
class NearestName {
 public:
  explicit NearestName(std::string_view written);
  void consider(std::string_view name);
  /// Returns the nearest name that differs from the written one, or nothing if no name is near. For
  /// a written name of one letter, only the case may differ.
  std::optional<Suggestion> found() const;

 private:
  std::string_view written_;
  // The distance of `nearest_`. Before the first near name, the greatest allowed distance plus 1.
  std::size_t distance_;
  std::string nearest_;
  bool isUnique_ = false;
};

}  // namespace vsa_tools
